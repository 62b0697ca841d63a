#include "Matchers.h"
#include "Scrivo/Polygon.h"

namespace Scrivo::test {

namespace {

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
