#pragma once

#include "Beautifier/ink/Vec.h"

#include <span>

namespace Scrivo::beautifier {

struct CircleFit {
    Vec centre;
    double radius = 0.0;
    double rms = 0.0;  ///< root mean square distance of the points
};

/// Circle through the points, by Gauss-Newton steps on their distances. `start` is
/// a point near its centre.
CircleFit fitCircleTo(std::span<const Vec> points, Vec start);

}  // namespace Scrivo::beautifier
