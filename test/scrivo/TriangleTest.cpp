#include "Matchers.h"
#include "Random.h"
#include "Scrivo/Polygon.h"

#include <algorithm>

namespace Scrivo::test {

namespace {

Stroke regularTriangleOf(Stroke corners) {
    EXPECT_EQ(regularTrigon(corners), 0);
    return corners;
}

/// Points that were only moved in the list keep the force 1, others have 0.
Point2D kept(double x, double y) {
    return {x, y, 1.0};
}

void expectRegular(const std::vector<Case<Stroke>>& cases, double tolerance) {
    for (const auto& c : cases) {
        EXPECT_TRUE(isNear(regularTriangleOf(withForce(c.stroke, 1)), c.expected, tolerance))
            << c.name;
    }
}

TEST(Triangle, BecomesEquilateral) {
    // Sides 100, 102, 99.
    const double height = 100 * std::sqrt(3.0) / 2;
    const Point2D o = kept(0, 0);
    const Point2D level = kept(100, 0);
    const Point2D leaning = kept(60, 80);
    const Point2D upright = kept(0, 100);
    const Point2D left = 0.5 * leaning + height * Point2D{-0.8, 0.6};
    const Point2D right = 0.5 * leaning + height * Point2D{0.8, -0.6};
    expectRegular({{"level base, apex below", {o, level, {47, 87}}, {o, level, {50, height}}},
                   {"level base, apex above", {o, level, {47, -87}}, {o, level, {50, -height}}},
                   {"leaning base", {o, leaning, {-40, 91}}, {o, leaning, left}},
                   {"other side", {o, leaning, {100, -11}}, {o, leaning, right}},
                   {"upright base", {o, upright, {85, 51}}, {o, upright, {height, 50}}}},
                  1e-10);
}

TEST(Triangle, BecomesIsosceles) {
    // Apex A, legs of 50 to B and of 52 to C, base 62.6; C goes to 50 from A.
    const Point2D a = kept(0, 0);
    const Point2D b = kept(30, 40);
    const Point2D c = kept(48, -20);
    const Point2D shorterC = 50.0 / 52 * c;
    const Point2D longerB = 52.0 / 50 * b;
    // The three corners run clockwise in the order A, B, C (y upwards).
    expectRegular(
        {{"apex in the middle", {b, a, c}, {b, a, shorterC}},
         {"apex in the middle, backwards", {c, a, b}, {c, a, longerB}},
         {"apex last, clockwise", {b, c, a}, {b, a, shorterC}},
         {"apex last, counter-clockwise", {c, b, a}, {b, a, shorterC}},
         {"apex first, clockwise", {a, b, c}, {c, a, longerB}},
         {"apex first, counter-clockwise", {a, c, b}, {c, a, longerB}},
         {"mirrored", mirrored({b, c, a}), mirrored({c, a, longerB})},
         // 48 and 50.04 wide apart: 2 units from upright is not upright yet.
         {"leg 2 wide", {b, a, {2, 50}}, {b, a, {100 / std::sqrt(2504), 2500 / std::sqrt(2504)}}},
         {"leg narrower", {b, a, {below(2), 50}}, {b, a, {0, 50}}},
         {"upright leg, upwards", {b, a, {-1, -51}}, {b, a, {0, -50}}}},
        1e-5);
}

TEST(Triangle, BecomesRightAngledAndIsosceles) {
    const Point2D apex = kept(0, 0);
    const Point2D leg = kept(30, 40);
    const Point2D level = kept(50, 2);
    const Point2D leaning = kept(50, above(2));
    expectRegular({{"leaning", {leg, apex, {-42, 30}}, {leg, apex, {-40, 30}}},
                   {"other side", {leg, apex, {42, -30}}, {leg, apex, {40, -30}}},
                   {"2 high is level", {level, apex, {1, 50}}, {level, apex, {0, length(level)}}},
                   {"higher is not", {leaning, apex, {1, -50}}, {leaning, apex, {2, -50}}}},
                  1e-5);
}

TEST(Triangle, BecomesRightAngled) {
    // About 98.8 degrees at B, between legs of 50 and 170.
    const Point2D a = kept(30, 40);
    const Point2D b = kept(0, 0);
    const Point2D c = kept(-150, 80);
    const Point2D movedC{-136, 102};
    const Point2D movedA{50 * 8.0 / 17, 50 * 15.0 / 17};
    const Point2D level = kept(100, 0);
    const Point2D offLevel = kept(100, 1);
    const double leg = std::hypot(3, 50);
    const double lean = leg / length(offLevel);
    expectRegular(
        {{"in the middle", {a, b, c}, {a, b, movedC}},
         {"in the middle, backwards", {c, b, a}, {c, b, movedA}},
         {"last, counter-clockwise", {a, c, b}, {c, b, movedA}},
         {"last, clockwise", {c, a, b}, {c, b, movedA}},
         {"first, clockwise", {b, c, a}, {c, b, movedA}},
         {"first, counter-clockwise", {b, a, c}, {c, b, movedA}},
         {"level leg", {level, b, {3, 50}}, {level, b, {0, leg}}},
         {"a hair off level", {offLevel, b, {3, 50}}, {offLevel, b, {-lean, 100 * lean}}}},
        1e-5);
}

TEST(Triangle, StaysWhenNothingIsNearlyTrue) {
    const Stroke unchanged[] = {
        {{0, 0}, {200, 0}, {60, 60}},   // obtuse, scalene
        {{105, 0}, {0, 0}, {-60, 80}},  // legs 105 and 100: 1.05 is too much
        {{95, 0}, {0, 0}, {-60, 80}},   // 0.95 is too little
        {{0, 0}, {10, 10}, {50, 50}},   // in a line
        {{3, 3}, {3, 3}, {3, 3}},       // 0 / 0
        {{0, 0}, {100, 0}, {QUIET_NAN, QUIET_NAN}},
    };
    for (const Stroke& corners : unchanged) {
        EXPECT_TRUE(hasBitsOf(regularTriangleOf(withForce(corners, 1)), withForce(corners, 1)));
    }
    EXPECT_TRUE(
        isNear(regularTriangleOf({{104.99, 0}, {0, 0}, {-60, 80}})[2], {-62.994, 83.992}, 1e-5));
    EXPECT_TRUE(
        isNear(regularTriangleOf({{95.01, 0}, {0, 0}, {-60, 80}})[2], {-57.006, 76.008}, 1e-5));
}

/// Lengths of the sides, the longest last, and the smallest cosine of an angle.
struct Measures {
    std::vector<double> sides;
    double smallestCosine = 1.0;
    bool hasUprightSide = false;

    explicit Measures(const Stroke& c) {
        for (std::size_t i = 0; i < 3; ++i) {
            const Point2D u = c[(i + 1) % 3] - c[i];
            const Point2D v = c[(i + 2) % 3] - c[i];
            sides.push_back(length(u));
            hasUprightSide |= u.x == 0;
            smallestCosine = std::min(smallestCosine, std::abs(dot(u, v)) / length(u) / length(v));
        }
        std::sort(sides.begin(), sides.end());
    }
};

TEST(Triangle, RegularMeansExactlyRegular) {
    // Lengths pass through `distance`, which is single precision; right angles do not.
    const double lengths = 1e-7;
    const double angles = 1e-12;
    Random random;
    for (int i = 0; i < 1000; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const double size = random.in(50, 500);
        const double turn = random.in(-PI, PI);
        const Point2D at = random.jitter(300);
        const auto drawn = [&](double ratio, double opening) {
            const Point2D jitter = random.jitter(0.008 * size);
            Stroke corners{at, at + polar(size, turn),
                           at + polar(ratio * size, turn + opening) + jitter};
            std::rotate(corners.begin(), corners.begin() + random.below(3), corners.end());
            if (random.below(2) == 0) {
                std::swap(corners[1], corners[2]);
            }
            return Measures(regularTriangleOf(corners));
        };
        const auto equilateral = drawn(1, PI / 3);
        EXPECT_NEAR(equilateral.sides[2] / equilateral.sides[0], 1, lengths);
        const auto isosceles = drawn(1, 0.6);  // the base is the shortest side
        EXPECT_NEAR(isosceles.sides[2] / isosceles.sides[1], 1, lengths);
        const auto right = drawn(1.4, PI / 2);
        EXPECT_LT(right.smallestCosine, angles);
        const auto both = drawn(1, PI / 2);
        // Next to a leg up to 2 units high the other one is placed upright.
        EXPECT_LT(both.smallestCosine, both.hasUprightSide ? 2.0 / both.sides[0] : angles);
        EXPECT_NEAR(both.sides[1] / both.sides[0], 1, lengths);
    }
}

}  // namespace

}  // namespace Scrivo::test
