#include "Scrivo/detail/EllipseShape.h"

#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/Sampling.h"

#include <cmath>
#include <numbers>

namespace Scrivo::detail {

namespace {

constexpr double PI = std::numbers::pi;

/// Radii whose ratio lies strictly between these become a circle.
constexpr double MIN_CIRCLE_RATIO = 0.8;
constexpr double MAX_CIRCLE_RATIO = 1.25;
/// Radians below which a rotation becomes 0.
constexpr double LEVEL_ANGLE = 0.26;

}  // namespace

bool isComplete(const EllipseShape& e) {
    return !std::isnan(e.centre.x) && !std::isnan(e.centre.y) && !std::isnan(e.radii.x) &&
           !std::isnan(e.radii.y) && !std::isnan(e.angle);
}

EllipseShape rounded(EllipseShape e) {
    const double ratio = e.radii.x / e.radii.y;
    if (ratio > MIN_CIRCLE_RATIO && ratio < MAX_CIRCLE_RATIO) {
        e.radii.x = e.radii.y = (e.radii.x + e.radii.y) / 2;
    }
    return e;
}

EllipseShape levelled(EllipseShape e) {
    if (std::abs(e.angle) < LEVEL_ANGLE) {
        e.angle = 0.0;
    }
    return e;
}

void appendEllipse(std::vector<Point2D>& out, const EllipseShape& e) {
    for (int i = 0; i <= ELLIPSE_SEGMENTS; ++i) {
        // The last point has the parameter of the first, which closes the outline.
        const double t = (i % ELLIPSE_SEGMENTS) / static_cast<double>(ELLIPSE_SEGMENTS);
        const double phi = (t + t) * PI;
        const Point2D p{e.centre.x + e.radii.x * std::cos(phi),
                        e.centre.y + e.radii.y * std::sin(phi), 0.0};
        out.push_back(rotatedCounterClockwise(p, e.centre, e.angle));
    }
}

}  // namespace Scrivo::detail
