#include "Scrivo/Polygon.h"

#include "Scrivo/detail/Angle.h"
#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/LineSnapping.h"
#include "Scrivo/detail/PolygonOutline.h"
#include "Scrivo/detail/Quadrangle.h"
#include "Scrivo/detail/Sampling.h"
#include "Scrivo/detail/StraightLine.h"
#include "Scrivo/detail/Triangle.h"

namespace Scrivo {

std::int64_t fitLine(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::fitLine(out, stroke);
}

std::int64_t drawLine(std::vector<Point2D>& out, Point2D from, Point2D to) {
    detail::appendEdge(out, from, to);
    return detail::sizeOf(out);
}

double threshold(double /*unused*/, double length) {
    return detail::maxRelativeBand(length);
}

Point2D distance2(std::vector<Point2D> stroke, Point2D a, Point2D b) {
    const auto isPlace = [](const Point2D& p) { return p.x < UNKNOWN_EXTENT; };
    Point2D nearest{UNKNOWN_EXTENT, UNKNOWN_EXTENT, 0.0};
    if (!isPlace(a)) {
        return nearest;
    }
    for (const Point2D& p : stroke) {
        const double toA = detail::singleDistance(p, a);
        nearest.x = toA < nearest.x ? toA : nearest.x;
    }
    if (isPlace(b) && !stroke.empty()) {
        const double toB = detail::singleDistance(stroke[2], b);
        nearest.y = toB < nearest.y ? toB : nearest.y;
    }
    return nearest;
}

bool isStrictLine(std::vector<Point2D> stroke) {
    return detail::isStrictLine(stroke);
}

std::int64_t reDrawLine(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                        std::vector<Point2D> anchors) {
    return detail::reDrawLine(out, stroke, anchors);
}

bool isAngle(std::vector<Point2D> stroke, Point2D corner) {
    return detail::isAngle(stroke, corner);
}

std::int32_t findAngle(std::vector<Point2D> stroke, std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(detail::farthestFromChord(stroke, from, to));
}

std::int64_t reDrawAngle(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawAngle(out, stroke);
}

std::int64_t regularTrigon(std::vector<Point2D>& corners) {
    detail::regulariseTriangle(corners);
    return 0;
}

void horiVertalTrigon(std::vector<Point2D>& corners) {
    detail::levelLowestEdge(corners);
}

void regularQuadrangle(std::vector<Point2D>& corners) {
    detail::regulariseQuadrangle(corners);
}

std::int64_t reDrawPolygon(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawPolygon(out, stroke);
}

}  // namespace Scrivo
