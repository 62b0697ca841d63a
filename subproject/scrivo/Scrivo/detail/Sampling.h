#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <vector>

/// The points of outlines, of force 0. An edge has NUM_POINT + 1 of them.
namespace Scrivo::detail {

/// Segments of an ellipse's outline.
inline constexpr int ELLIPSE_SEGMENTS = 84;

/// The count that a redraw returns.
std::int64_t sizeOf(const std::vector<Point2D>& stroke);

/// Appends NUM_POINT + 1 points, the i-th of them `at(i)`.
template <typename PointAt>
void appendSamples(std::vector<Point2D>& out, PointAt at) {
    for (std::int32_t i = 0; static_cast<double>(i) < NUM_POINT + 1.0; ++i) {
        const Point2D p = at(static_cast<double>(i));
        out.push_back({p.x, p.y, 0.0});
    }
}

/// Appends the points of an edge, both ends included.
void appendEdge(std::vector<Point2D>& out, const Point2D& from, const Point2D& to);

/// Appends the 64 points of a dot: three rings, drawing-area units, and the centre.
void appendDot(std::vector<Point2D>& out, const Point2D& centre);

/// Appends the edges of a closed figure, from its first corner on.
void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners);

}  // namespace Scrivo::detail
