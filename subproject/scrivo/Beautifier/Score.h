#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/Features.h"
#include "Beautifier/Outline.h"

#include <optional>

/// From features to a verdict. All learnt numbers stand in Model.inc.
namespace Scrivo::beautifier {

/// The likeliest figure.
struct Verdict {
    FigureFamily family = FigureFamily::LINE;
    double logit = 0.0;      ///< log odds that it is right
    double threshold = 0.0;  ///< that `logit` has to exceed at middling sensitivity

    double probability() const;
};

/// Whether a stroke is a dot, told from its size and straightness alone: a tap
/// or a scribble too small to hold a letter, or the short slip of a finger.
std::optional<Verdict> judgeDot(const Frame& frame);

/// The best of the other figures.
Verdict judge(const Evidence& evidence);

/// How far `sensitivity` (0 to 1) lowers all thresholds.
double thresholdShift(double sensitivity);

}  // namespace Scrivo::beautifier
