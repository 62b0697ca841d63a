#include "Lines.h"

namespace Scrivo::test {

namespace {

TEST(LineFit, RunsAlongTheLongerExtent) {
    const Case<Stroke> cases[] = {
        {"empty", {}, {}},
        {"one point", {{1, 1}}, {}},
        {"level", {{0, 5, 1}, {30, 5, 1}, {10, 5, 1}}, line({0, 5}, {30, 5})},
        {"right to left", {{30, 5}, {0, 5}}, line({0, 5}, {30, 5})},
        {"upright", {{7, 50}, {7, -10}, {7, 3}}, line({7, -10}, {7, 50})},
        // A tie, both extents having the same extreme points: from the smaller y.
        {"height wins a tie", {{0, 45}, {100, 40}}, line({100, 40}, {0, 45})},
        // y = 0 (the middle weighs nothing), from x = 0 to x = 40 instead of from (20, -6).
        {"width wins when longer", {{0, 0}, {20, 6}, {20, -6}, {40, 0}}, line({0, 0}, {40, 0})},
        {"two points", {{0, 0}, {40, 30}}, line({0, 0}, {40, 30})},
        {"coincident", Stroke(3, {2, 2}), Stroke(21, {QUIET_NAN, QUIET_NAN})},
        // y = 0.8 x + 0.3; the ends are the feet of (0, 0) and (3, 3).
        {"scattered",
         {{0, 0}, {1, 2}, {2, 1}, {3, 3}},
         line({-0.24 / 1.64, 0.3 - 0.192 / 1.64}, {5.16 / 1.64, 0.3 + 4.128 / 1.64})},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(isNear(fitted(c.stroke), c.expected)) << c.name;
    }
}

TEST(LineFit, SteepChordsBecomeUpright) {
    const Case<bool> cases[] = {
        {"slope 20", {{0, 0}, {10, 200}}, false},
        {"above 20", {{0, 0}, {10, above(200)}}, true},
        {"below -20", {{0, 0}, {10, below(-200)}}, true},
        {"one unit to the right is measured as two", {{0, 0}, {1, 40}}, false},
        {"above 20 of two", {{0, 0}, {1, above(40)}}, true},
        {"a little more than a unit is not", {{0, 0}, {above(1), 21}}, true},
        {"one unit to the left is measured as none", {{0, 0}, {-1, 0.5}}, true},
        {"0 / 0 is not steep", {{0, 0}, {-1, 0}}, false},
    };
    for (const auto& c : cases) {
        const Stroke out = fitted(c.stroke);
        EXPECT_EQ(out.front().x == out.back().x, c.expected) << c.name;
    }
    // The mean of all points, not of the ends.
    EXPECT_TRUE(isNear(fitted({{0, 100}, {0, 60}, {3, 0}}), line({1, 0}, {1, 100})));
}

TEST(StrictLine, BandNarrowsWithLength) {
    EXPECT_EQ(threshold(99, 0), 0.1);
    EXPECT_NEAR(threshold(99, 1000), 0.02, 1e-15);
    EXPECT_NEAR(threshold(99, -1000), 0.18, 1e-15);
}

TEST(StrictLine, RatioAndBand) {
    /// A zigzag 80 units long whose band is 2 * `a` wide.
    const auto zigzag = [](double a) {
        return Stroke{{0, 0}, {10, a}, {30, -a}, {50, a}, {70, -a}, {80, 0}};
    };
    /// A straight stroke to `far` and back to `end`.
    const auto back = [](double far, double end) { return Stroke{{0, 0}, {far, 0}, {end, 0}}; };
    const Case<bool> cases[] = {
        {"one point", {{1, 1}}, false},
        {"coincident", Stroke(9, {1, 1}), false},
        {"straight", chain({{0, 0}, {70, 90}}, 30), true},
        {"closed", closedChain({{0, 0}, {90, 0}, {50, 1}}, 5), false},
        // Too long for any band, so that the ratio alone decides.
        {"ratio 0.98 goes to the band", back(1485, 1470), false},
        {"ratio above 0.98", back(1485, floatAbove(1470)), true},
        {"ratio 0.75 goes to the band", back(7, 6), true},
        {"ratio below 0.75", back(7, floatBelow(6)), false},
        {"1250 units have no band", back(1250, 1200), false},
        {"a little less has", back(floatBelow(1250), 1200), true},
        {"band 7.48 of 80", zigzag(3.74), true},
        {"band 7.50 of 80", zigzag(3.75), false},
        {"upright", {{0, 0}, {3.74, 10}, {-3.74, 30}, {3.74, 50}, {-3.74, 70}, {0, 80}}, true},
        // Its first point puts the band at 12 of 100, the last one at 9.
        {"first of two rightmost", {{0, 0}, {50, -3}, {100, 0}, {100, 9}}, false},
        {"first of two leftmost", {{0, 0}, {-50, -3}, {-100, 0}, {-100, 9}}, false},
        {"first of two lowest", {{0, 0}, {-3, 50}, {0, 100}, {9, 100}}, false},
        {"first of two highest", {{0, 0}, {-3, -50}, {0, -100}, {9, -100}}, false},
        {"NaN is in every band", {{0, 0}, {QUIET_NAN, 1}, {2, 2}}, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isStrictLine(c.stroke), c.expected) << c.name;
    }
}

}  // namespace

}  // namespace Scrivo::test
