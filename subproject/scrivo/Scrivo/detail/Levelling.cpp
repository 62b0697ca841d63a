#include "Scrivo/detail/Levelling.h"

#include "Scrivo/detail/Edges.h"
#include "Scrivo/detail/Geometry.h"

#include <cmath>
#include <cstddef>
#include <optional>

namespace Scrivo::detail {

namespace {

/// Slope by which an angle has to be turned; 0 when a leg is already level or none
/// is nearly so. Of two nearly level legs the first one counts.
double legToLevel(const Point2D& first, const Point2D& corner, const Point2D& last) {
    const double k1 = slope(first, corner);
    const double k2 = slope(last, corner);
    if (k1 == 0.0 || k2 == 0.0) {
        return 0.0;
    }
    if (std::abs(k1) < ROTATION_THRESHOLD) {
        return k1;
    }
    return std::abs(k2) < ROTATION_THRESHOLD ? k2 : 0.0;
}

/// The first of the corners with the largest y, if any y is a number.
std::optional<std::size_t> lowestCorner(const std::vector<Point2D>& corners) {
    std::optional<std::size_t> lowest;
    double maxY = LOWEST;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (corners[i].y > maxY) {
            maxY = corners[i].y;
            lowest = i;
        }
    }
    return lowest;
}

/// The slope of the flatter of two edges, when it is flat enough to be levelled.
std::optional<double> edgeToLevel(double next, double previous) {
    if (std::abs(previous) > std::abs(next) && std::abs(next) < ROTATION_THRESHOLD) {
        return next;
    }
    if (std::abs(next) > std::abs(previous) && std::abs(previous) < ROTATION_THRESHOLD) {
        return previous;
    }
    return std::nullopt;
}

}  // namespace

void levelLegs(Point2D& first, const Point2D& corner, Point2D& last) {
    const double k = legToLevel(first, corner, last);
    if (k != 0.0) {
        const double angle = std::atan(k);
        first = rotatedClockwise(first, corner, angle);
        last = rotatedClockwise(last, corner, angle);
    }
}

void levelLowestEdge(std::vector<Point2D>& corners) {
    const auto lowest = lowestCorner(corners);
    if (!lowest) {
        return;
    }
    const std::size_t m = corners.size();
    const Point2D pivot = corners[*lowest];
    const double next = slope(pivot, corners[(*lowest + 1) % m]);
    const double previous = slope(pivot, corners[(*lowest + m - 1) % m]);
    const auto k = edgeToLevel(next, previous);
    if (!k) {
        return;
    }
    const double angle = std::atan(*k);
    for (std::size_t j = 1; j < m; ++j) {
        Point2D& corner = corners[(*lowest + j) % m];
        corner = rotatedClockwise(corner, pivot, angle);
    }
}

}  // namespace Scrivo::detail
