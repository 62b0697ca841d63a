#pragma once

#include "Beautifier/Figure.h"

namespace Scrivo::beautifier {

/// A family that a stroke may be of.
struct Verdict {
    FigureFamily family = FigureFamily::LINE;
    double logit = 0.0;      ///< log odds that the stroke is of this family
    double threshold = 0.0;  ///< that `logit` must exceed at a sensitivity of 0.5

    [[nodiscard]] double probability() const;
};

}  // namespace Scrivo::beautifier
