#pragma once

#include "Beautifier/Figure.h"

namespace Scrivo::beautifier {

/// The likeliest family of a stroke.
struct Verdict {
    FigureFamily family = FigureFamily::LINE;
    double logit = 0.0;      ///< log odds that the stroke is of this family
    double threshold = 0.0;  ///< that `logit` has to exceed at middling sensitivity

    [[nodiscard]] double probability() const;
};

}  // namespace Scrivo::beautifier
