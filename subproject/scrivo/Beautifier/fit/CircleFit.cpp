#include "Beautifier/fit/CircleFit.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

constexpr int CIRCLE_STEPS = 3;

// For points all around the centre the determinant is 1 / 4.
constexpr double MIN_DETERMINANT = 1e-3;

/// Means over the points, relative to a centre.
struct Means {
    double distance = 0.0;
    Vec direction;
    Vec pull;                             ///< distance times direction
    double xx = 0.0, xy = 0.0, yy = 0.0;  ///< products of the directions
};

Means meansOf(std::span<const Vec> points, Vec centre) {
    Means m;
    const double share = 1.0 / static_cast<double>(points.size());
    for (const Vec& p : points) {
        const Vec d = p - centre;
        const double distance = std::max(norm(d), 1e-9);
        const Vec u = (1.0 / distance) * d;
        m.distance += share * distance;
        m.direction = m.direction + share * u;
        m.pull = m.pull + share * d;
        m.xx += share * u.x * u.x;
        m.xy += share * u.x * u.y;
        m.yy += share * u.y * u.y;
    }
    return m;
}

/// Moves the centre; the best radius follows from it.
void improve(CircleFit& fit, const Means& m) {
    const Vec right = m.pull - m.distance * m.direction;
    const double xx = m.xx - m.direction.x * m.direction.x;
    const double xy = m.xy - m.direction.x * m.direction.y;
    const double yy = m.yy - m.direction.y * m.direction.y;
    const double scale = 1.0 / std::max(xx * yy - xy * xy, MIN_DETERMINANT);
    const Vec step = scale * Vec{yy * right.x - xy * right.y, xx * right.y - xy * right.x};
    fit.centre = fit.centre + step;
    fit.radius = m.distance - dot(m.direction, step);
}

}  // namespace

CircleFit fitCircleTo(std::span<const Vec> points, Vec start) {
    CircleFit fit{start};
    for (int i = 0; i < CIRCLE_STEPS; ++i) {
        improve(fit, meansOf(points, fit.centre));
    }
    double squares = 0.0;
    for (const Vec& p : points) {
        const double off = norm(p - fit.centre) - fit.radius;
        squares += off * off;
    }
    fit.rms = std::sqrt(squares / static_cast<double>(points.size()));
    return fit;
}

}  // namespace Scrivo::beautifier
