#include "Scrivo/detail/PolygonOutline.h"

#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/Quadrangle.h"
#include "Scrivo/detail/Sampling.h"
#include "Scrivo/detail/Triangle.h"

#include <limits>

namespace Scrivo::detail {

namespace {

/// The corners of a closed outline in drawing order; the last one is where the pen
/// started and stopped.
std::vector<Point2D> closedCorners(Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) <= LIMIT) {
        return {};
    }
    auto corners = findCorners(stroke, std::numeric_limits<std::size_t>::max());
    const Point2D& first = stroke.front();
    const Point2D& last = stroke.back();
    corners.push_back({(last.x + first.x) * 0.5, (last.y + first.y) * 0.5, 0.0});
    return corners;
}

void regularise(std::vector<Point2D>& corners) {
    if (corners.size() == 3) {
        regulariseTriangle(corners);
        levelLowestEdge(corners);
    } else if (corners.size() == 4) {
        regulariseQuadrangle(corners);
        levelLowestEdge(corners);
    }
}

}  // namespace

std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) < LIMIT) {
        return 0;
    }
    auto corners = closedCorners(stroke);
    const double length = arcLength(stroke, 0, static_cast<std::int64_t>(stroke.size()));
    const double average = length / static_cast<double>(corners.size() + 2);
    // A first segment longer than an average edge indicates a stroke of a few
    // distant points, whose corners are unreliable.
    const double firstSegment = singleDistance(stroke[0], stroke[1]);
    if (corners.size() < 3 || firstSegment > average) {
        out.insert(out.end(), stroke.begin(), stroke.end());
        return sizeOf(out);
    }
    if (average > firstSegment) {
        regularise(corners);
    }
    appendOutline(out, corners);
    return sizeOf(out);
}

}  // namespace Scrivo::detail
