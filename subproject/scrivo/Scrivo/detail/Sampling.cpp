#include "Scrivo/detail/Sampling.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace Scrivo::detail {

namespace {

/// Segments of a dot's ring, and the rings' radii in drawing-area units.
constexpr int RING_SEGMENTS = 20;
constexpr double RING_RADII[] = {2.5, 1.5, 0.5};

void appendRing(std::vector<Point2D>& out, const Point2D& centre, double radius) {
    for (int i = 0; i <= RING_SEGMENTS; ++i) {
        const double a = (i % RING_SEGMENTS) * std::numbers::pi * 2 / RING_SEGMENTS;
        out.push_back({centre.x + radius * std::cos(a), centre.y + radius * std::sin(a), 0.0});
    }
}

}  // namespace

std::int64_t sizeOf(const std::vector<Point2D>& stroke) {
    return static_cast<std::int64_t>(stroke.size());
}

void appendEdge(std::vector<Point2D>& out, const Point2D& from, const Point2D& to) {
    const double stepX = (to.x - from.x) / NUM_POINT;
    const double stepY = (to.y - from.y) / NUM_POINT;
    appendSamples(out, [&](double i) { return Point2D{i * stepX + from.x, i * stepY + from.y}; });
}

void appendDot(std::vector<Point2D>& out, const Point2D& centre) {
    for (const double radius : RING_RADII) {
        appendRing(out, centre, radius);
    }
    out.push_back(centre);
}

void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        appendEdge(out, corners[i], corners[(i + 1) % corners.size()]);
    }
}

}  // namespace Scrivo::detail
