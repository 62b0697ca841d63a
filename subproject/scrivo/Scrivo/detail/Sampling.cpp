#include "Scrivo/detail/Sampling.h"

#include <cstddef>

namespace Scrivo::detail {

std::int64_t sizeOf(const std::vector<Point2D>& stroke) {
    return static_cast<std::int64_t>(stroke.size());
}

void appendEdge(std::vector<Point2D>& out, const Point2D& from, const Point2D& to) {
    const double stepX = (to.x - from.x) / NUM_POINT;
    const double stepY = (to.y - from.y) / NUM_POINT;
    appendSamples(out, [&](double i) { return Point2D{i * stepX + from.x, i * stepY + from.y}; });
}

void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        appendEdge(out, corners[i], corners[(i + 1) % corners.size()]);
    }
}

}  // namespace Scrivo::detail
