#pragma once

#include "Scrivo/Scrivo.h"

#include <cmath>
#include <cstdint>
#include <span>

/// The geometry behind ScrivoUtil.h, on strokes that are only looked at.
namespace Scrivo::detail {

using Stroke = std::span<const Point2D>;

/// Square root in single precision. A sum too large for a float becomes
/// infinite.
inline double singleRoot(double sumOfSquares) {
    return std::sqrt(static_cast<float>(sumOfSquares));
}

inline double distance(const Point2D& a, const Point2D& b) {
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return singleRoot(dy * dy + dx * dx);
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

inline Point2D rotationLine(const Point2D& centre, const Point2D& p, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double dx = p.x - centre.x;
    const double dy = p.y - centre.y;
    return {centre.x + c * dx + s * dy, centre.y + c * dy - s * dx, 0.0};
}

double arcLength(Stroke stroke, std::int64_t i, std::int64_t j);
bool isSimpleLine(Stroke stroke);
Point2D scaleOfGraph(Stroke stroke);

}  // namespace Scrivo::detail
