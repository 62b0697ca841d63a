#include "Scrivo/detail/Triangle.h"

#include "Scrivo/detail/Edges.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace Scrivo::detail {

namespace {

/// Width or height, in drawing-area units, of an edge that counts as upright or
/// level when a corner is placed beside it.
constexpr double FLAT = 2.0;

/// Lengths of a triangle's sides, named by the corners that they join.
struct Sides {
    double s01;
    double s12;
    double s02;
};

Sides sidesOf(const std::vector<Point2D>& c) {
    return {singleDistance(c[0], c[1]), singleDistance(c[1], c[2]), singleDistance(c[2], c[0])};
}

/// sqrt(a^2 + b^2) / c: 1 when a and b meet at a right angle opposite to c.
double pythagorasRatio(double a, double b, double c) {
    return std::sqrt(a * a + b * b) / c;
}

void reorder(std::vector<Point2D>& c, std::size_t i, std::size_t j, std::size_t k) {
    const std::array<Point2D, 3> old{c[0], c[1], c[2]};
    c[0] = old[i];
    c[1] = old[j];
    c[2] = old[k];
}

/// Whether the corners run counter-clockwise, the y axis pointing up.
bool isCounterClockwise(const std::vector<Point2D>& c) {
    return direction(c[0], c[1], c[2]) > 0;
}

void makeEquilateral(std::vector<Point2D>& c, double side) {
    constexpr double HALF_SQRT_3 = 0.8660254037844386;
    constexpr double SQRT_3 = 1.7320508075688772;
    const Point2D middle{(c[0].x + c[1].x) * 0.5, (c[0].y + c[1].y) * 0.5, 0.0};
    Mirrored apex;
    if (c[0].y != c[1].y) {
        apex = alongSlope(middle, perpendicularSlope(c[0], c[1]), side * HALF_SQRT_3);
    } else {
        apex = alongVertical(middle, side * SQRT_3 * 0.5);
    }
    // The second position is taken only when it is strictly nearer.
    c[2] = singleDistance(apex.p, c[2]) > singleDistance(apex.q, c[2]) ? apex.q : apex.p;
}

/// Moves the corner between two nearly equal sides to the middle of the list.
void centreIsoscelesApex(std::vector<Point2D>& c, const Sides& s) {
    if (isNearlyOne(s.s12 / s.s02)) {
        isCounterClockwise(c) ? reorder(c, 1, 2, 0) : reorder(c, 0, 2, 1);
    } else if (isNearlyOne(s.s01 / s.s02)) {
        isCounterClockwise(c) ? reorder(c, 1, 0, 2) : reorder(c, 2, 0, 1);
    }
}

/// Moves the corner of a nearly right angle to the middle of the list.
void centreRightAngle(std::vector<Point2D>& c, const Sides& s) {
    if (isNearlyOne(pythagorasRatio(s.s12, s.s02, s.s01))) {
        isCounterClockwise(c) ? reorder(c, 1, 2, 0) : reorder(c, 0, 2, 1);
    } else if (isNearlyOne(pythagorasRatio(s.s02, s.s01, s.s12))) {
        isCounterClockwise(c) ? reorder(c, 2, 0, 1) : reorder(c, 1, 0, 2);
    }
}

/// Corner 2 stays on its line through corner 1, as far away as corner 0.
void makeIsosceles(std::vector<Point2D>& c, double leg) {
    const bool isUpright = std::abs(c[2].x - c[1].x) < FLAT;
    const Mirrored places = isUpright
                                ? alongVertical(c[1], leg)
                                : alongSlope(c[1], (c[2].y - c[1].y) / (c[2].x - c[1].x), leg);
    c[2] = nearer(places, c[2]);
}

/// Corner 2 goes to `length` from corner 1, at a right angle to corner 0. The
/// side to corner 0 counts as level up to a height of `flat`.
void makeRightAngled(std::vector<Point2D>& c, double length, double flat) {
    const bool isLevel = std::abs(c[0].y - c[1].y) <= flat;
    const Mirrored places = isLevel ? alongVertical(c[1], length)
                                    : alongSlope(c[1], perpendicularSlope(c[0], c[1]), length);
    c[2] = nearer(places, c[2]);
}

}  // namespace

void regulariseTriangle(std::vector<Point2D>& corners) {
    Sides s = sidesOf(corners);
    if (isNearlyOne(s.s12 / s.s02) && isNearlyOne(s.s01 / s.s02) && isNearlyOne(s.s01 / s.s12)) {
        makeEquilateral(corners, s.s01);
        return;
    }
    centreIsoscelesApex(corners, s);
    s = sidesOf(corners);
    if (isNearlyOne(s.s01 / s.s12)) {
        if (isNearlyOne(pythagorasRatio(s.s12, s.s01, s.s02))) {
            makeRightAngled(corners, s.s01, FLAT);
        } else {
            makeIsosceles(corners, s.s01);
        }
        return;
    }
    centreRightAngle(corners, s);
    s = sidesOf(corners);
    if (isNearlyOne(pythagorasRatio(s.s12, s.s01, s.s02))) {
        makeRightAngled(corners, s.s12, 0.0);
    }
}

}  // namespace Scrivo::detail
