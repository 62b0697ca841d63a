#include "Scrivo/Polygon.h"
#include "Scrivo/detail/CornerScan.h"
#include "Support.h"

namespace Scrivo::test {

namespace {

using detail::findCorners;

constexpr std::size_t ALL = 1000;

/// `before` steps of 10 units to the corner (0, 0), `after` steps away from it,
/// the path turning by `turn` radians. All distances are exact for a right angle.
Stroke bend(int before, int after, double turn = PI / 2) {
    Stroke stroke;
    for (int i = -before; i <= 0; ++i) {
        stroke.push_back({10.0 * i, 0.0});
    }
    const Point2D step =
        turn == PI / 2 ? Point2D{0.0, 10.0} : Point2D{10 * std::cos(turn), 10 * std::sin(turn)};
    for (int i = 1; i <= after; ++i) {
        stroke.push_back(static_cast<double>(i) * step);
    }
    return stroke;
}

TEST(CornerScan, FarthestFromTheChord) {
    const Stroke stroke{{0, 0}, {1, 1}, {2, 0}, {3, -1}, {4, 0}, {5, 3}};
    EXPECT_EQ(findAngle(stroke, 0, 4), 1) << "the earlier of equals";
    EXPECT_EQ(findAngle(stroke, 1, 4), 3);
    EXPECT_EQ(findAngle(stroke, 0, 1), -1);
    EXPECT_EQ(findAngle(stroke, 4, 5), -1);
    EXPECT_EQ(findAngle({{0, 0}, {1, 0}, {5, 5}, {0, 0}}, 0, 3), 1) << "a base of 0";
    EXPECT_EQ(findAngle(Stroke(9, {3, 3}), 0, 8), -1) << "0 / 0";
    EXPECT_EQ(findAngle({{QUIET_NAN, 0}, {1, 0}, {2, 0}}, 0, 2), -1);
    // In float the detours of (0, 0) and (0, 2^-12) are the same.
    EXPECT_EQ(findAngle({{-1, 0}, {0, 0}, {0, 0x1p-12}, {1, 0}}, 0, 3), 1);
}

TEST(CornerScan, NeedsHalfASpanOnEitherSide) {
    // The span stops opening when the corner is its fifth point from the end:
    // that takes five points beyond it, and five more that end the scan.
    const Case<bool> cases[] = {
        {"corner at point 5", bend(5, 20), true},
        {"corner at point 4", bend(4, 20), false},
        {"9 steps behind it", bend(20, 9), true},
        {"8 steps behind it", bend(20, 8), false},
        {"both, once the span has slid", bend(5, 10), true},
        {"before the span has slid", bend(5, 9), false},
        {"10 points", bend(5, 4), false},
        {"turn of 45 degrees", bend(20, 20, PI / 4), true},
        // Five steps before and four behind: chord / path = 8.70 / 9 = 0.966.
        {"turn of 30 degrees", bend(20, 20, PI / 6), false},
        {"straight", bend(20, 20, 0.0), false},
        {"empty", {}, false},
        {"resting pen", Stroke(50, {1, 1}), false},
        {"NaN", Stroke(50, {QUIET_NAN, 0}), false},
    };
    for (const auto& c : cases) {
        const Stroke expected = c.expected ? Stroke{{0, 0}} : Stroke{};
        EXPECT_TRUE(isNear(findCorners(c.stroke, ALL), expected, 0.0)) << c.name;
    }
}

TEST(CornerScan, FindsCornersInOrderAndStopsWhenToldTo) {
    const Stroke star{{0, 0}, {100, 180}, {200, 0}, {300, 180}, {400, 0}, {500, 180}};
    const Stroke drawn = withForce(chain(star, 25), 0.5);
    const Stroke inner = withForce({star.begin() + 1, star.end() - 1}, 0.5);
    EXPECT_TRUE(hasBitsOf(findCorners(drawn, ALL), inner)) << "with their forces";
    EXPECT_EQ(findCorners(drawn, 1).size(), 2U);
    // A corner right behind the restart is found too: 20 points between two.
    EXPECT_EQ(findCorners(chain({{0, 0}, {0, 100}, {100, 100}, {100, 0}}, 20), ALL).size(), 2U);
}

TEST(CornerScan, SpanSumIsFloat) {
    // All on one line. While a step of 2^25 is in the span its length counts in
    // units of 4, and half a unit goes to the even side: with the step of 2 it
    // stays at 2^25 + 32 instead of 2^25 + 30. When the long step has left, the
    // span is 34 units wide and 36 long, which bends too much. In double, or
    // rounded after the addition and after the subtraction, nothing is found.
    Stroke stroke{{0, 0}};
    for (int i = 0; i < 24; ++i) {
        const double step = i == 9 ? 33554432.0 : i == 14 ? 2.0 : 4.0;
        stroke.push_back({stroke.back().x + step, 0.0});
    }
    EXPECT_TRUE(hasBitsOf(findCorners(stroke, ALL), {stroke[11]}));
    // At the start of the stroke 2^25 swallows the units behind it, and the
    // span stays too short for any corner to bend it.
    Stroke hidden = chain({{-10, 0}, {0, 0}, {0, 20}}, 20);
    EXPECT_EQ(findCorners(hidden, ALL).size(), 1U);
    hidden.front().x = -33554432.0;
    EXPECT_TRUE(findCorners(hidden, ALL).empty());
}

TEST(Angle, HasTwoStraightLegsOfSimilarLength) {
    const Point2D corner{0, 0};
    // Legs of 193 units, one of which runs past the corner by 3.5 and back: a path of 200.
    const double past = floatAbove(196.5) - 193;
    const Case<bool> cases[] = {
        {"one point", {corner}, true},
        {"right angle", bend(10, 10), true},
        {"second leg twice as long", {{10, 0}, corner, {0, 20}}, true},
        {"second leg longer", {{10, 0}, corner, {0, floatAbove(20)}}, false},
        {"first leg twice as long", {{20, 0}, corner, {0, 10}}, true},
        {"first leg longer", {{floatAbove(20), 0}, corner, {0, 10}}, false},
        {"first leg 193 of 200", {{-193, 0}, {3.5, 0}, corner, {0, 193}}, true},
        {"first leg less straight", {{-193, 0}, {past, 0}, corner, {0, 193}}, false},
        {"second leg 193 of 200", {{0, 193}, corner, {3.5, 0}, {-193, 0}}, true},
        {"second leg less straight", {{0, 193}, corner, {past, 0}, {-193, 0}}, false},
        {"second visit restarts the leg", {{-10, 0}, {0, 0, 1}, {0, 1}, corner, {0, 10}}, true},
        {"pen rests on the corner", {{-10, 0}, corner, corner, {0, 10}}, true},
        {"corner not on the stroke", {{-10, 0}, {1, 0}, {0, 10}}, false},
        {"there and back", {corner, {10, 0}, corner}, false},
        {"all on the corner", Stroke(9, corner), true},
        {"NaN", {{QUIET_NAN, 0}, corner, {0, 5}}, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isAngle(c.stroke, corner), c.expected) << c.name;
    }
}

TEST(AngleRedraw, LevelsANearlyLevelLeg) {
    const Point2D corner{0, 0};
    const double none = 0.0;
    const Case<double> cases[] = {
        {"no leg is nearly level", {{-100, 173}, corner, {100, 173}}, none},
        {"first leg", {{100, 5}, corner, {40, 110}}, std::atan(0.05)},
        {"first leg, falling", {{-100, 5}, corner, {40, 110}}, -std::atan(0.05)},
        {"second leg", {{40, 110}, corner, {100, 5}}, std::atan(0.05)},
        {"both: the first", {{100, 9}, corner, {100, -5}}, std::atan(0.09)},
        {"a leg is level already", {{100, 5}, corner, {100, 0}}, none},
        {"slope 0.1", {{100, 10}, corner, {40, 110}}, none},
        {"below 0.1", {{100, below(10)}, corner, {40, 110}}, std::atan(0.1)},
        {"upright and nearly level", {{0, 100}, corner, {100, 5}}, std::atan(0.05)},
        {"nearly upright", {{5, 100}, corner, {60, 60}}, none},
    };
    for (const auto& c : cases) {
        const Stroke expected = mapped(c.stroke, [&](const Point2D& p) {
            return polar(length(p), std::atan2(p.y, p.x) - c.expected);
        });
        const Stroke drawn = withForce(chain(c.stroke, 25), 0.4);
        EXPECT_TRUE(
            appends([&](Stroke& out) { return reDrawAngle(out, drawn); }, outline(expected)))
            << c.name;
    }
}

TEST(AngleRedraw, DeclinesWhatIsNoAngle) {
    const Stroke right = bend(20, 20);
    const Case<Stroke> cases[] = {
        {"empty", {}, {}},
        {"9 points", {right.begin() + 16, right.begin() + 25}, {}},
        {"10 points", {right.begin() + 15, right.begin() + 25}, {}},
        {"straight", bend(20, 20, 0.0), {}},
        {"hook", bend(30, 4), {}},
        {"zigzag", chain({{0, 0}, {50, 90}, {100, 0}, {150, 90}}, 20), {}},
        {"open triangle", chain({{0, 0}, {100, 0}, {50, 90}, {5, 10}}, 20), {}},
        {"curved leg", chain({{0, 0}, {0, 100}, {30, 105}, {60, 95}, {80, 75}, {90, 50}}, 9), {}},
        {"NaN", Stroke(40, {QUIET_NAN, QUIET_NAN}), {}},
        {"unequal legs", bend(20, 41), {}},
        {"twice as long is an angle", bend(20, 40), outline({{-200, 0}, {0, 0}, {0, 400}})},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(appends([&](Stroke& out) { return reDrawAngle(out, c.stroke); }, c.expected))
            << c.name;
    }
}

}  // namespace

}  // namespace Scrivo::test
