#include "Scrivo/Polygon.h"

#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Edges.h"
#include "Scrivo/detail/Polygon.h"
#include "Scrivo/detail/Sampling.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Scrivo {

namespace {

using detail::Stroke;

bool isStraightLeg(double chord, double path) {
    return !(chord / path < RATIO_LINE);
}

bool hasStraightLegs(Stroke stroke, const Point2D& corner) {
    const double first = detail::distance(stroke.front(), corner);
    const double second = detail::distance(stroke.back(), corner);
    if (second > 2 * first || first > 2 * second) {
        return false;
    }
    double path = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        path += detail::distance(stroke[i], stroke[i - 1]);
        if (stroke[i].x == corner.x && stroke[i].y == corner.y) {
            // A pen that rests on the corner leaves it several times; the
            // second leg counts from the last of them.
            if (!isStraightLeg(first, path)) {
                return false;
            }
            path = 0.0;
        }
    }
    // No path behind the corner gives NaN, which is no reason to reject.
    return stroke.size() < 2 || isStraightLeg(second, path);
}

/// Slope by which a figure with a nearly level leg has to be turned. 0 when a
/// leg is level already or none is nearly so; the first leg goes first.
double legToLevel(const Point2D& first, const Point2D& corner, const Point2D& last) {
    const double k1 = detail::slope(first, corner);
    const double k2 = detail::slope(last, corner);
    if (k1 == 0.0 || k2 == 0.0) {
        return 0.0;
    }
    if (std::abs(k1) < ROTATION_THRESHOLD) {
        return k1;
    }
    return std::abs(k2) < ROTATION_THRESHOLD ? k2 : 0.0;
}

/// The corners of a closed outline in drawing order; the last one stands for
/// the place where the pen started and stopped.
std::vector<Point2D> closedCorners(Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) <= LIMIT) {
        return {};
    }
    auto corners = detail::findCorners(stroke, std::numeric_limits<std::size_t>::max());
    const Point2D& first = stroke.front();
    const Point2D& last = stroke.back();
    corners.push_back({(last.x + first.x) * 0.5, (last.y + first.y) * 0.5, 0.0});
    return corners;
}

void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        drawLine(out, corners[i], corners[(i + 1) % corners.size()]);
    }
}

}  // namespace

namespace detail {

void levelLegs(Point2D& first, const Point2D& corner, Point2D& last) {
    const double k = legToLevel(first, corner, last);
    if (k != 0.0) {
        const double angle = std::atan(k);
        first = rotationLine(corner, first, angle);
        last = rotationLine(corner, last, angle);
    }
}

std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke) {
    const auto corners = findCorners(stroke, 1);
    if (corners.size() != 1 || !hasStraightLegs(stroke, corners.front())) {
        return 0;
    }
    const Point2D& corner = corners.front();
    Point2D first = stroke.front();
    Point2D last = stroke.back();
    levelLegs(first, corner, last);
    drawLine(out, first, corner);
    drawLine(out, corner, last);
    return sizeOf(out);
}

std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) < LIMIT) {
        return 0;
    }
    auto corners = closedCorners(stroke);
    const double length = arcLength(stroke, 0, static_cast<std::int64_t>(stroke.size()));
    const double average = length / static_cast<double>(corners.size() + 2);
    // A first segment longer than an average edge tells a stroke of a few far
    // points, whose corners are not to be trusted.
    const double firstSegment = distance(stroke[0], stroke[1]);
    if (corners.size() < 3 || firstSegment > average) {
        out.insert(out.end(), stroke.begin(), stroke.end());
        return sizeOf(out);
    }
    if (average > firstSegment && corners.size() == 3) {
        regulariseTriangle(corners);
        levelLowestEdge(corners);
    } else if (average > firstSegment && corners.size() == 4) {
        regulariseQuadrangle(corners);
        levelLowestEdge(corners);
    }
    appendOutline(out, corners);
    return sizeOf(out);
}

}  // namespace detail

std::int64_t fitLine(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::fitLine(out, stroke);
}

std::int64_t drawLine(std::vector<Point2D>& out, Point2D from, Point2D to) {
    const double stepX = (to.x - from.x) / NUM_POINT;
    const double stepY = (to.y - from.y) / NUM_POINT;
    detail::appendSamples(out, [&](double t) {
        return Point2D{t * stepX + from.x, t * stepY + from.y};
    });
    return detail::sizeOf(out);
}

double threshold(double /*unused*/, double length) {
    return (length / -1000.0) * 0.08 + 0.1;
}

Point2D distance2(std::vector<Point2D> stroke, Point2D a, Point2D b) {
    const auto isPlace = [](const Point2D& p) { return p.x < UNKNOWN_EXTENT; };
    Point2D nearest{UNKNOWN_EXTENT, UNKNOWN_EXTENT, 0.0};
    if (!isPlace(a)) {
        return nearest;
    }
    for (const Point2D& p : stroke) {
        const double toA = detail::distance(p, a);
        nearest.x = toA < nearest.x ? toA : nearest.x;
    }
    if (isPlace(b) && !stroke.empty()) {
        const double toB = detail::distance(stroke[2], b);
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
    return hasStraightLegs(stroke, corner);
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
