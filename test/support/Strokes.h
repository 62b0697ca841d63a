#pragma once

#include "Scrivo/Types.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <vector>

/// Strokes to draw, and exact measures in double.
namespace Scrivo::test {

using Stroke = std::vector<Point2D>;

inline constexpr double INF = std::numeric_limits<double>::infinity();
inline constexpr double QUIET_NAN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double PI = std::numbers::pi;

/// The neighbours of a double.
inline double above(double v) {
    return std::nextafter(v, INF);
}
inline double below(double v) {
    return std::nextafter(v, -INF);
}
/// The neighbours of a float, the resolution of `distance`.
inline double floatAbove(float v) {
    return std::nextafter(v, std::numeric_limits<float>::infinity());
}
inline double floatBelow(float v) {
    return std::nextafter(v, -std::numeric_limits<float>::infinity());
}

inline Point2D operator+(const Point2D& a, const Point2D& b) {
    return {a.x + b.x, a.y + b.y, 0.0};
}
inline Point2D operator-(const Point2D& a, const Point2D& b) {
    return {a.x - b.x, a.y - b.y, 0.0};
}
inline Point2D operator*(double s, const Point2D& p) {
    return {s * p.x, s * p.y, 0.0};
}
inline double dot(const Point2D& u, const Point2D& v) {
    return u.x * v.x + u.y * v.y;
}
inline double cross(const Point2D& u, const Point2D& v) {
    return u.x * v.y - u.y * v.x;
}
/// In double, unlike the library's `distance`.
inline double length(const Point2D& v) {
    return std::hypot(v.x, v.y);
}
inline Point2D polar(double radius, double angle) {
    return {radius * std::cos(angle), radius * std::sin(angle), 0.0};
}

/// A named stroke and its expected result.
template <typename Expected>
struct Case {
    const char* name;
    Stroke stroke;
    Expected expected;
};

/// `steps` even steps from each corner to the next; inner corners occur once.
inline Stroke chain(const Stroke& corners, int steps) {
    Stroke stroke{corners.front()};
    for (std::size_t i = 1; i < corners.size(); ++i) {
        for (int k = 1; k < steps; ++k) {
            const double t = static_cast<double>(k) / steps;
            stroke.push_back(corners[i - 1] + t * (corners[i] - corners[i - 1]));
        }
        stroke.push_back(corners[i]);
    }
    return stroke;
}

/// A chain that returns to its first corner.
inline Stroke closedChain(Stroke corners, int steps) {
    corners.push_back(corners.front());
    return chain(corners, steps);
}

/// `before` steps of 10 units to the corner (0, 0), `after` steps away from it,
/// the path turning by `turn` radians. All distances are exact for a right angle.
inline Stroke bend(int before, int after, double turn = PI / 2) {
    Stroke stroke;
    for (int i = -before; i <= 0; ++i) {
        stroke.push_back({10.0 * i, 0.0});
    }
    const Point2D step =
        turn == PI / 2 ? Point2D{0.0, 10.0} : Point2D{10 * std::cos(turn), 10 * std::sin(turn)};
    for (int i = 1; i <= after; ++i) {
        stroke.push_back(static_cast<double>(i) * step);
    }
    return stroke;
}

/// A clean outline: 21 points an edge, inner corners twice.
inline Stroke outline(const Stroke& corners) {
    Stroke result;
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const Stroke edge = chain({corners[i - 1], corners[i]}, 20);
        result.insert(result.end(), edge.begin(), edge.end());
    }
    return result;
}

inline Stroke ellipse(Point2D centre, double rx, double ry, double turn, int steps) {
    Stroke stroke;
    for (int i = 0; i <= steps; ++i) {
        const double t = 2 * PI * (i % steps) / steps;
        stroke.push_back(centre + polar(rx * std::cos(t), turn) +
                         polar(ry * std::sin(t), turn + PI / 2));
    }
    return stroke;
}

template <typename Map>
Stroke mapped(Stroke stroke, Map map) {
    std::transform(stroke.begin(), stroke.end(), stroke.begin(), map);
    return stroke;
}

inline Stroke withForce(const Stroke& stroke, double force) {
    return mapped(stroke, [=](const Point2D& p) { return Point2D{p.x, p.y, force}; });
}

inline Stroke mirrored(const Stroke& stroke) {
    return mapped(stroke, [](const Point2D& p) { return Point2D{p.x, -p.y, p.force}; });
}

/// In fractions of an area of `width` by `height`.
inline Stroke fractions(const Stroke& stroke, double width, double height) {
    return mapped(stroke, [=](const Point2D& p) {
        return Point2D{p.x / width, p.y / height, p.force};
    });
}

}  // namespace Scrivo::test
