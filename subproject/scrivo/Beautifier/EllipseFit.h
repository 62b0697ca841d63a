#pragma once

#include "Beautifier/Outline.h"

#include <span>

namespace Scrivo::beautifier {

struct EllipseFit {
    Vec centre;
    double a = 0.0;      ///< longer radius
    double b = 0.0;      ///< shorter radius
    double angle = 0.0;  ///< of the longer radius, radians
    double rms = 0.0;    ///< root mean square distance of the points
    double worst = 0.0;  ///< largest distance
    bool found = false;
};

/// Ellipse of the closed curve through `loop`: area moments (an ellipse of radii
/// a and b has the second moments a^2 / 4 and b^2 / 4), then Gauss-Newton steps
/// on the distances to first order (Sampson: Fitting conic sections to very
/// scattered data, 1982). Not found when the curve encloses no area.
EllipseFit fitEllipseTo(const Coarse& loop);

/// The ellipse next to `fit` by Gauss-Newton steps on other points.
EllipseFit refined(EllipseFit fit, std::span<const Vec> points);

/// The circle that fits the points best, by Gauss-Newton steps from `fit`.
EllipseFit fitCircle(const EllipseFit& fit, std::span<const Vec> points);

/// The circle, where `fit` is as round as what people draw for circles; `fit`
/// otherwise.
EllipseFit chooseRound(const EllipseFit& fit, std::span<const Vec> points);

}  // namespace Scrivo::beautifier
