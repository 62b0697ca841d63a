#pragma once

#include "Beautifier/ink/Resampling.h"

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

/// Position of a point relative to an ellipse.
struct EllipsePoint {
    double distance = 0.0;  ///< to first order, positive outside
    Vec outwards;           ///< normal to the ellipse, of any length
};

/// Measures points relative to an ellipse.
class EllipseView {
public:
    explicit EllipseView(const EllipseFit& fit);
    [[nodiscard]] EllipsePoint at(Vec p) const;

private:
    const EllipseFit& m_fit;
    double m_cos;
    double m_sin;
};

/// Circumference (Ramanujan: Modular equations and approximations to pi, 1914).
double circumference(const EllipseFit& fit);

/// Ellipse of the closed curve through `loop`: area moments (an ellipse of radii
/// a and b has the second moments a^2 / 4 and b^2 / 4), then Gauss-Newton steps
/// on the distances to first order (Sampson: Fitting conic sections to very
/// scattered data, 1982). Not found when the curve encloses no area.
EllipseFit fitEllipseTo(const Coarse& loop);

/// `fit` refined by Gauss-Newton steps on other points.
EllipseFit refined(EllipseFit fit, std::span<const Vec> points);

}  // namespace Scrivo::beautifier
