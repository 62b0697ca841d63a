#include "Recogniser.h"
#include "Scrivo/Polygon.h"
#include "Scrivo/detail/CornerScan.h"

namespace Scrivo::test {

namespace {

using detail::findCorners;

constexpr std::size_t ALL = 1000;

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
    // The ratio stops falling when the corner is fifth from the end of the span: that
    // takes five points beyond it, and five more to end the scan.
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
    // A corner right after the restart is found too: 20 points between two.
    EXPECT_EQ(findCorners(chain({{0, 0}, {0, 100}, {100, 100}, {100, 0}}, 20), ALL).size(), 2U);
}

TEST(CornerScan, SpanSumIsFloat) {
    // All on one line. While a step of 2^25 is in the span, the float length has a
    // resolution of 4 and ties round to even: with the step of 2 it stays at
    // 2^25 + 32 instead of 2^25 + 30. When the long step has left, the
    // span is 34 units wide and 36 long, which bends too much. In double, or
    // rounded after the addition and after the subtraction, nothing is found.
    Stroke stroke{{0, 0}};
    for (int i = 0; i < 24; ++i) {
        const double step = i == 9 ? 33554432.0 : i == 14 ? 2.0 : 4.0;
        stroke.push_back({stroke.back().x + step, 0.0});
    }
    EXPECT_TRUE(hasBitsOf(findCorners(stroke, ALL), {stroke[11]}));
    // At the start of the stroke 2^25 absorbs the units after it, and the length of
    // the span stays too small for any corner to be found.
    Stroke hidden = chain({{-10, 0}, {0, 0}, {0, 20}}, 20);
    EXPECT_EQ(findCorners(hidden, ALL).size(), 1U);
    hidden.front().x = -33554432.0;
    EXPECT_TRUE(findCorners(hidden, ALL).empty());
}

TEST(CornerScan, RecognisersCornersAreThoseOfTheLiteralScan) {
    const auto corners = TemplatesGraphicsRecognizerUtil::getAnglesFromPath;
    EXPECT_EQ(corners({}), (std::vector<int>{0, -1}));
    EXPECT_EQ(corners(Path(9)), (std::vector<int>{0, 8}));
    EXPECT_EQ(corners(Path(10)), (std::vector<int>{0}));
    EXPECT_EQ(corners(Path(11)), (std::vector<int>{0, 10}));
    EXPECT_EQ(corners(chain(SQUARE, 20)), (std::vector<int>{0, 20, 40, 60, 80}));
    // One step back of 0.5 between steps of 39/16: chord / path is 19/20, as a
    // float a little below the threshold.
    Path steps(1);
    for (int i = 1; i < 40; ++i) {
        steps.push_back({steps.back().x + (i == 17 ? -0.5 : 2.4375), 0.0, 0.0});
    }
    EXPECT_EQ(corners(steps), (std::vector<int>{0, 16, 39}));

    ink::Hand hand(30);
    std::vector<std::size_t> lengths(40, 0);
    for (int k = 0; k < rounds(20000); ++k) {
        Path stroke = anyStroke(hand);
        stroke.resize(static_cast<std::size_t>(hand.below(static_cast<int>(stroke.size()) + 1)));
        if (k % 3 == 0) {
            stroke = mapped(stroke, [](const Point2D& p) {
                return Point2D{std::round(p.x / 16.0), std::round(p.y / 16.0)};
            });
        }
        if (k % 50 == 0 && !stroke.empty()) {
            stroke[stroke.size() / 2].x = QUIET_NAN;
        }
        const auto expected = literal::getAnglesFromPath(stroke);
        ASSERT_EQ(corners(stroke), expected);
        ++lengths[expected.size()];
    }
    EXPECT_GT(*std::min_element(lengths.begin() + 2, lengths.begin() + 8), 0U);
}

}  // namespace

}  // namespace Scrivo::test
