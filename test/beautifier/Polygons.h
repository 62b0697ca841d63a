#pragma once

#include "Answers.h"

/// Quadrangles of every kind, and what their corners have in common.
namespace Scrivo::test {

/// A quadrangle and its kind.
struct Drawn {
    std::string name;
    curves::Path corners;
    QuadrangleKind kind;
};

inline const std::vector<Drawn>& quadrangles() {
    static const std::vector<Drawn> ALL{
        {"square", {{300, 200}, {500, 200}, {500, 400}, {300, 400}}, QuadrangleKind::SQUARE},
        {"standing", {{400, 180}, {520, 300}, {400, 420}, {280, 300}}, QuadrangleKind::SQUARE},
        {"rectangle", {{300, 200}, {500, 200}, {500, 310}, {300, 310}}, QuadrangleKind::RECTANGLE},
        {"rhombus", {{300, 300}, {400, 230}, {500, 300}, {400, 370}}, QuadrangleKind::RHOMBUS},
        {"parallelogram",
         {{320, 250}, {560, 250}, {500, 340}, {260, 340}},
         QuadrangleKind::PARALLELOGRAM},
        {"trapezoid", {{350, 240}, {450, 240}, {510, 360}, {290, 360}}, QuadrangleKind::TRAPEZOID},
        {"kite", {{400, 190}, {490, 250}, {400, 430}, {310, 250}}, QuadrangleKind::KITE},
    };
    return ALL;
}

inline curves::Path turnedBy(const curves::Path& path, double angle) {
    curves::Path out;
    for (const Point2D& p : path) {
        const Point2D d = p - Point2D{400, 300};
        out.push_back({400 + std::cos(angle) * d.x - std::sin(angle) * d.y,
                       300 + std::sin(angle) * d.x + std::cos(angle) * d.y, 0.0});
    }
    return out;
}

inline curves::Path drawn(curves::Path corners, double tremor) {
    corners.push_back(corners.front());
    return curves::sample(curves::shaky(curves::polyline(corners), tremor), 160);
}

inline QuadrangleFigure quadrangleOf(const curves::Path& stroke,
                                     const BeautifierOptions& options = {}) {
    return std::get<QuadrangleFigure>(beautify(stroke, options).figure);
}

/// Sides from corner to corner, then the diagonals.
inline std::vector<double> lengthsOf(const std::array<Point2D, 4>& c) {
    return {length(c[1] - c[0]), length(c[2] - c[1]), length(c[3] - c[2]),
            length(c[0] - c[3]), length(c[2] - c[0]), length(c[3] - c[1])};
}

/// Pairs of corners at exactly the same height or exactly above each other.
template <std::size_t N>
int exactPairs(const std::array<Point2D, N>& corners) {
    int pairs = 0;
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            pairs += corners[i].x == corners[k].x || corners[i].y == corners[k].y ? 1 : 0;
        }
    }
    return pairs;
}

/// Whether the corners are those of `expected`, from any of them on.
inline testing::AssertionResult hasCorners(const std::array<Point2D, 4>& corners,
                                           const curves::Path& expected, double tolerance) {
    for (std::size_t start = 0; start < corners.size(); ++start) {
        curves::Path turned(corners.begin(), corners.end());
        std::rotate(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(start),
                    turned.end());
        if (isNear(turned, expected, tolerance)) {
            return testing::AssertionSuccess();
        }
    }
    return isNear(curves::Path(corners.begin(), corners.end()), expected, tolerance);
}

}  // namespace Scrivo::test
