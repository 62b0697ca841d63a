#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/Features.h"
#include "Beautifier/Outline.h"

#include <optional>
#include <span>

/// From features to a verdict. All learnt numbers stand in Model.inc.
namespace Scrivo::beautifier {

/// The likeliest figure.
struct Verdict {
    FigureFamily family = FigureFamily::LINE;
    double logit = 0.0;      ///< log odds that it is right
    double threshold = 0.0;  ///< that `logit` has to exceed at middling sensitivity

    double probability() const;
};

/// Whether a stroke is a dot, told from its size and the length of its path
/// without the tremor: a tap, a press that is held, a scribble too small to
/// hold a letter or, where `slips` count, the short slip of a finger.
std::optional<Verdict> judgeDot(std::span<const Point2D> stroke, double width, double height,
                                const Frame& frame, bool slips);

/// The best of the other figures.
Verdict judge(const Evidence& evidence);

/// How far `sensitivity` (0 to 1) lowers all thresholds.
double thresholdShift(double sensitivity);

}  // namespace Scrivo::beautifier
