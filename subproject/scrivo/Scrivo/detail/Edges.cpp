#include "Scrivo/detail/Edges.h"

#include <cmath>

namespace Scrivo::detail {

namespace {

constexpr double VERTICAL_SLOPE = 2147483647.0;

constexpr double MIN_EQUAL_RATIO = 0.95;
constexpr double MAX_EQUAL_RATIO = 1.05;

}  // namespace

double slope(const Point2D& a, const Point2D& b) {
    return a.x == b.x ? VERTICAL_SLOPE : (a.y - b.y) / (a.x - b.x);
}

double perpendicularSlope(const Point2D& a, const Point2D& b) {
    return (a.x - b.x) / (b.y - a.y);
}

bool isNearlyOne(double ratio) {
    return MIN_EQUAL_RATIO < ratio && ratio < MAX_EQUAL_RATIO;
}

Point2D nearer(const Mirrored& m, const Point2D& old) {
    return singleDistance(m.p, old) < singleDistance(m.q, old) ? m.p : m.q;
}

Mirrored alongSlope(const Point2D& origin, double m, double length) {
    const double h = length / std::sqrt(m * m + 1);
    return {{origin.x + h, origin.y + m * h, 0.0}, {origin.x - h, origin.y - m * h, 0.0}};
}

Mirrored alongVertical(const Point2D& origin, double length) {
    return {{origin.x, origin.y + length, 0.0}, {origin.x, origin.y - length, 0.0}};
}

}  // namespace Scrivo::detail
