#pragma once

#include "Scrivo/Types.h"

#include <cmath>
#include <cstdint>
#include <span>

/// Plane geometry on strokes that are only read. The short functions are inline
/// because every scan calls them for every point.
///
/// Two kinds of length differ in their rounding, and results depend on which one
/// is used. A *single* length is the single-precision root of a sum of squares
/// that was formed in double and rounded to float once; thresholds compare
/// these. A *double* length is rounded to double throughout; template matching
/// uses these.
namespace Scrivo::detail {

using Stroke = std::span<const Point2D>;

/// Start value of a running maximum: the smallest 32-bit signed integer.
inline constexpr double LOWEST = -2147483648.0;

/// A sum of squares too large for a float gives infinity.
inline double singleDistance(const Point2D& a, const Point2D& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return std::sqrt(static_cast<float>(dy * dy + dx * dx));
}

inline double doubleDistance(const Point2D& a, const Point2D& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

/// b - a, as a vector.
inline Point2D difference(const Point2D& a, const Point2D& b) {
    return {b.x - a.x, b.y - a.y, 0.0};
}

inline double cosine(const Point2D& u, const Point2D& v) {
    return (u.x * v.x + u.y * v.y) / std::sqrt((u.x * u.x + u.y * u.y) * (v.x * v.x + v.y * v.y));
}

inline Point2D projection(const Point2D& a, const Point2D& b, const Point2D& p) {
    const Point2D d = difference(a, b);
    const double t = ((p.x - a.x) * d.x + (p.y - a.y) * d.y) / (d.x * d.x + d.y * d.y);
    return {a.x + t * d.x, a.y + t * d.y, 0.0};
}

inline double direction(const Point2D& a, const Point2D& b, const Point2D& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// `p` turned about `centre` by `angle` radians, the y axis pointing up.
/// @{
Point2D rotatedClockwise(const Point2D& p, const Point2D& centre, double angle);
Point2D rotatedCounterClockwise(const Point2D& p, const Point2D& centre, double angle);
/// @}

/// Length of the polyline: single distances, summed in double.
double singleLength(Stroke stroke);
/// Length of the polyline, all in double.
double doubleLength(Stroke stroke);
/// Length from point `i` to point `j` - 1: single distances, summed in float.
double arcLength(Stroke stroke, std::int64_t i, std::int64_t j);

/// Whether chord / `singleLength` is above 0.95; false below 2 points.
bool isSimpleLine(Stroke stroke);

}  // namespace Scrivo::detail
