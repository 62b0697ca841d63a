#include "Scrivo/detail/Sampling.h"

#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <numbers>

namespace Scrivo::detail {

std::int64_t sizeOf(const std::vector<Point2D>& stroke) {
    return static_cast<std::int64_t>(stroke.size());
}

void appendEdge(std::vector<Point2D>& out, const Point2D& from, const Point2D& to) {
    const double stepX = (to.x - from.x) / NUM_POINT;
    const double stepY = (to.y - from.y) / NUM_POINT;
    appendSamples(out, [&](double i) { return Point2D{i * stepX + from.x, i * stepY + from.y}; });
}

void appendDot(std::vector<Point2D>& out, const Point2D& centre) {
    constexpr int SEGMENTS = 20;  // of a ring
    for (const double radius : {2.5, 1.5, 0.5}) {
        for (int i = 0; i <= SEGMENTS; ++i) {
            const double a = (i % SEGMENTS) * std::numbers::pi * 2 / SEGMENTS;
            out.push_back({centre.x + radius * std::cos(a), centre.y + radius * std::sin(a), 0.0});
        }
    }
    out.push_back(centre);
}

void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        appendEdge(out, corners[i], corners[(i + 1) % corners.size()]);
    }
}

}  // namespace Scrivo::detail
