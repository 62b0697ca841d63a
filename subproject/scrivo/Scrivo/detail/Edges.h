#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cmath>

/// Slopes of edges, and the places that a corner may be moved to.
namespace Scrivo::detail {

/// Start value of a running maximum: the smallest 32-bit signed integer.
inline constexpr double LOWEST = -2147483648.0;

/// Finite stand-in for the slope of a vertical edge: of two verticals neither
/// is steeper, and its arc tangent is never asked for.
inline constexpr double VERTICAL_SLOPE = 2147483647.0;

/// Slope of the line through `a` and `b`.
inline double slope(const Point2D& a, const Point2D& b) {
    return a.x == b.x ? VERTICAL_SLOPE : (a.y - b.y) / (a.x - b.x);
}

/// Slope of the perpendicular to the line through `a` and `b`.
inline double perpendicularSlope(const Point2D& a, const Point2D& b) {
    return (a.x - b.x) / (b.y - a.y);
}

/// Whether a ratio counts as 1: strictly between 0.95 and 1.05.
inline bool isNearlyOne(double ratio) {
    return 0.95 < ratio && ratio < 1.05;
}

/// The two mirror positions that a corner may go to.
struct Mirrored {
    Point2D p;
    Point2D q;
};

/// The nearer one to `old`; `q` on a tie.
inline Point2D nearer(const Mirrored& m, const Point2D& old) {
    return distance(m.p, old) < distance(m.q, old) ? m.p : m.q;
}

/// The points at `length` from `origin` on a line of slope `m` through it.
inline Mirrored alongSlope(const Point2D& origin, double m, double length) {
    const double h = length / std::sqrt(m * m + 1);
    return {{origin.x + h, origin.y + m * h, 0.0}, {origin.x - h, origin.y - m * h, 0.0}};
}

inline Mirrored aboveAndBelow(const Point2D& origin, double length) {
    return {{origin.x, origin.y + length, 0.0}, {origin.x, origin.y - length, 0.0}};
}

}  // namespace Scrivo::detail
