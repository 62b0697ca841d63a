#include "Scrivo/detail/Angle.h"

#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/Sampling.h"

#include <cstddef>

namespace Scrivo::detail {

namespace {

/// NaN counts as straight.
bool isStraightLeg(double chord, double path) {
    return !(chord / path < RATIO_LINE);
}

}  // namespace

bool isAngle(Stroke stroke, const Point2D& corner) {
    const double first = singleDistance(stroke.front(), corner);
    const double second = singleDistance(stroke.back(), corner);
    if (second > 2 * first || first > 2 * second) {
        return false;
    }
    double path = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        path += singleDistance(stroke[i], stroke[i - 1]);
        if (stroke[i].x == corner.x && stroke[i].y == corner.y) {
            // A pen that rests at the corner leaves several points there; the
            // second leg starts at the last of them.
            if (!isStraightLeg(first, path)) {
                return false;
            }
            path = 0.0;
        }
    }
    // A second leg of length 0 gives NaN, which is accepted.
    return stroke.size() < 2 || isStraightLeg(second, path);
}

std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke) {
    const auto corners = findCorners(stroke, 1);
    if (corners.size() != 1 || !isAngle(stroke, corners.front())) {
        return 0;
    }
    const Point2D& corner = corners.front();
    Point2D first = stroke.front();
    Point2D last = stroke.back();
    levelLegs(first, corner, last);
    appendEdge(out, first, corner);
    appendEdge(out, corner, last);
    return sizeOf(out);
}

}  // namespace Scrivo::detail
