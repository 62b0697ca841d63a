#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

/// Plane vectors.
namespace Scrivo::beautifier {

/// More than any distance.
inline constexpr double INF = std::numeric_limits<double>::infinity();

struct Vec {
    double x = 0.0;
    double y = 0.0;
};

inline Vec operator+(Vec a, Vec b) {
    return {a.x + b.x, a.y + b.y};
}
inline Vec operator-(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y};
}
inline Vec operator*(double s, Vec a) {
    return {s * a.x, s * a.y};
}
inline double dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y;
}
inline double cross(Vec a, Vec b) {
    return a.x * b.y - a.y * b.x;
}
inline double norm(Vec a) {
    return std::sqrt(dot(a, a));
}

/// Angle from `a` to `b` in (-pi, pi], 0 when one of them is the zero vector.
inline double turn(Vec a, Vec b) {
    return std::atan2(cross(a, b), dot(a, b));
}

/// Where the line through `a` along `u` meets the line through `b` along `v`; not
/// finite when they are parallel.
inline Vec intersection(Vec a, Vec u, Vec b, Vec v) {
    return a + (cross(b - a, v) / cross(u, v)) * u;
}

/// Distance of `p` from the straight piece between `a` and `b`.
inline double distanceToPiece(Vec p, Vec a, Vec b) {
    const Vec along = b - a;
    const double squared = dot(along, along);
    const double t = squared > 0.0 ? std::clamp(dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return norm(p - a - t * along);
}

}  // namespace Scrivo::beautifier
