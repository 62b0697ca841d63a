#pragma once

#include "Beautifier/figures/QuadrangleKinds.h"
#include "Beautifier/figures/TriangleKinds.h"

#include <cmath>
#include <vector>

/// Exact polygons of every kind in the frame's own units.
namespace Scrivo::test {

struct Shape {
    int name;
    std::vector<beautifier::Vec> corners;
};

inline std::vector<Shape> exactQuadrangles() {
    using namespace beautifier;
    return {{SQUARE, {{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}}},
            {STANDING_SQUARE, {{0, -0.5}, {0.5, 0}, {0, 0.5}, {-0.5, 0}}},
            {RECTANGLE, {{-0.5, -0.3}, {0.5, -0.3}, {0.5, 0.3}, {-0.5, 0.3}}},
            {RHOMBUS, {{0, -0.3}, {0.5, 0}, {0, 0.3}, {-0.5, 0}}},
            {PARALLELOGRAM, {{-0.5, -0.2}, {0.3, -0.2}, {0.5, 0.2}, {-0.3, 0.2}}},
            {KITE, {{0, -0.3}, {0.4, 0}, {0, 0.7}, {-0.4, 0}}},
            {ISOSCELES_TRAPEZOID, {{-0.5, -0.3}, {0.5, -0.3}, {0.2, 0.3}, {-0.2, 0.3}}},
            {TRAPEZOID, {{-0.5, -0.3}, {0.5, -0.3}, {0.1, 0.3}, {-0.45, 0.3}}}};
}

inline std::vector<Shape> exactTriangles() {
    using namespace beautifier;
    return {{EQUILATERAL, {{-0.5, 0}, {0.5, 0}, {0, std::sqrt(0.75)}}},
            {RIGHT_ISOSCELES, {{0, 0}, {0.8, 0}, {0, 0.8}}},
            {ISOSCELES, {{-0.3, 0}, {0.3, 0}, {0, 1}}},
            {RIGHT, {{0, 0}, {1, 0}, {0, 0.6}}}};
}

/// The ink of a polygon: 25 points an edge.
inline beautifier::PolygonInk inkOf(const std::vector<beautifier::Vec>& corners) {
    constexpr int POINTS = 25;
    std::vector<beautifier::Vec> points;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const beautifier::Vec along = corners[(i + 1) % corners.size()] - corners[i];
        for (int k = 0; k < POINTS; ++k) {
            points.push_back(corners[i] + (static_cast<double>(k) / POINTS) * along);
        }
    }
    return beautifier::inkAlong(points, corners);
}

}  // namespace Scrivo::test
