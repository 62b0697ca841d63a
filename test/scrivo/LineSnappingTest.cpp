#include "Lines.h"
#include "Random.h"

namespace Scrivo::test {

namespace {

Stroke redrawn(const Stroke& stroke, const Stroke& anchors = {}) {
    Stroke out;
    reDrawLine(out, stroke, anchors);
    return out;
}

TEST(LineRedraw, Straightens) {
    // All are fitted without a rounding error.
    const double length = std::sqrt(10025.0);
    const Case<Stroke> cases[] = {
        {"no point", {}, {}},
        {"one point", {{5, 5}}, {}},
        {"slope 0.05, length kept", {{0, 0}, {100, 5}}, line({0, 0}, {length, 0})},
        {"slope -0.05", {{0, 50}, {100, 45}}, line({100, 45}, {100 - length, 45})},
        {"slope 0.125", {{0, 0}, {8, 1}}, line({0, 0}, {8, 1})},
        {"slope 11.5", {{0, 0}, {2, 23}}, line({0, 0}, {2, 23})},
        {"above 11.5, length lost", {{0, 0}, {2, above(23)}}, line({0, 0}, {0, 23})},
        {"below -11.5", {{2, 0}, {0, above(23)}}, line({2, 0}, {2, 23})},
        {"upright", {{9, 70}, {9, 10}}, line({9, 10}, {9, 70})},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(appends([&](Stroke& out) { return reDrawLine(out, c.stroke, {}); }, c.expected))
            << c.name;
    }
}

TEST(LineRedraw, SlopeOfATenthStays) {
    const Stroke tenth{{0, 0}, {20, 2}};
    const Stroke fit = fitted(tenth);
    ASSERT_EQ(fit.back().y - fit.front().y, 0.1 * (fit.back().x - fit.front().x)) << "exact";
    EXPECT_NEAR(redrawn(tenth).back().y, 2, 1e-12);
    EXPECT_EQ(redrawn({{0, 0}, {20, 1.9999999999}}).back().y, redrawn({{0, 0}, {20, 1.9}})[0].y);
}

TEST(LineRedraw, OneAnchor) {
    // A line of slope 3/4; (0.8, 0.6) runs along it, (-0.6, 0.8) off it.
    const Point2D first{0, 0};
    const Point2D last{400, 300};
    const auto place = [](double along, double off) {
        return Point2D{0.8 * along - 0.6 * off, 0.6 * along + 0.8 * off, 0.0};
    };
    const Stroke parallel = line(place(0, 5), place(500, 5));
    const Case<Stroke> cases[] = {
        {"beside the start: moved", {place(0, 5)}, parallel},
        {"ahead of the start: the start snaps, then moves",
         {place(8, 5)},
         line(place(8, 5), place(500, 5))},
        {"behind the start by 8", {place(-8, 5)}, line(place(-8, 5), place(500, 5))},
        {"behind the start by 11: none", {place(-11, 5)}, line(first, last)},
        {"beside the end: drawn from it", {place(500, -5)}, line(place(500, -5), place(0, -5))},
        {"beyond the end by 11: none", {place(511, 5)}, line(first, last)},
        {"in the middle: the parallel", {place(250, 5)}, parallel},
        {"within 20 of the start: it takes its place",
         {place(15, 5)},
         line(place(15, 5), place(500, 5))},
        {"beyond 20", {place(21, 5)}, parallel},
        {"within 20 of the end", {place(485, 5)}, line(place(0, 5), place(485, 5))},
        {"9.99 off", {place(250, 9.99)}, line(place(0, 9.99), place(500, 9.99))},
        {"10.01 off: none", {place(250, 10.01)}, line(first, last)},
        {"NaN: none", {{QUIET_NAN, QUIET_NAN}}, line(first, last)},
    };
    const Stroke drawn{first, last};
    for (const auto& c : cases) {
        EXPECT_TRUE(
            appends([&](Stroke& out) { return reDrawLine(out, drawn, c.stroke); }, c.expected))
            << c.name;
    }
    EXPECT_TRUE(isNear(redrawn({{0, 0}, {100, 5}}, {{50, 2.5}}), line({0, 0}, {100, 5})))
        << "an anchored line is not levelled";
}

TEST(LineRedraw, ReachOfAnAnchorIsStrict) {
    const Stroke level{{0, 0}, {200, 0}};
    EXPECT_EQ(redrawn(level, {{100, 10}}).front().y, 0.0);
    EXPECT_EQ(redrawn(level, {{100, floatBelow(10)}}).front().y, floatBelow(10));
    for (const double x : {-10.0, 210.0}) {
        EXPECT_EQ(redrawn(level, {{x, 5}}).front().y, 0.0) << x;
    }
    // Ends within 20 units of the anchor's foot go there.
    EXPECT_EQ(redrawn(level, {{20, 5}}).front().x, 0.0);
    EXPECT_EQ(redrawn(level, {{floatBelow(20), 5}}).front().x, floatBelow(20));
    EXPECT_EQ(redrawn(level, {{180, 5}}).back().x, 200.0);
    EXPECT_EQ(redrawn(level, {{floatAbove(180), 5}}).back().x, floatAbove(180));
}

TEST(LineRedraw, UprightLineLeansForAnyAnchor) {
    const Stroke upright{{100, 100}, {100, 300}};
    for (const Point2D& far : {Point2D{500, 500}, Point2D{QUIET_NAN, QUIET_NAN}}) {
        EXPECT_TRUE(isNear(redrawn(upright, {far, far}), line({101, 100}, {101, 300}), 0.0));
    }
}

TEST(LineRedraw, UprightBranchPrintsALine) {
    // Both anchors snap the start, which makes the line upright again, and
    // neither direction between them is upright. (109, 95) is nearer.
    testing::internal::CaptureStdout();
    const Stroke out = redrawn({{100, 100}, {100, 300}}, {{109, 95}, {90.5, 103.9}});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "hori line \n");
    EXPECT_TRUE(isNear(out, line({109, 95}, {109, 300})));
    // Each anchor carries the start 9 units on, past the end; the nearest one
    // is 21 units from the start and 15 from the end, which goes to its height.
    testing::internal::CaptureStdout();
    EXPECT_TRUE(
        isNear(redrawn({{100, 95}, {100, 115}}, {{101, 100}, {92, 109}, {109.5, 112}, {90.1, 121}}),
               line({101, 121}, {101, 100})));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "hori line \n");
}

TEST(LineRedraw, TiedAnchors) {
    const Stroke level{{0, 0}, {100, 0}};
    // First place: the later one. The pair is upright and is ignored.
    EXPECT_EQ(redrawn(level, {{50, 6}, {50, -6}}).front().y, -6);
    EXPECT_EQ(redrawn(level, {{50, -6}, {50, 6}}).front().y, 6);
    // Second place: the later one, and of equally good pairs that of the nearer anchors.
    const auto height = [](const Stroke& out, double x) {
        const Point2D along = out.back() - out.front();
        return out.front().y + (x - out.front().x) * along.y / along.x;
    };
    EXPECT_NEAR(height(redrawn(level, {{20, 0}, {80, 2}, {80, -2}}), 80), -2, 1e-9);
    EXPECT_NEAR(height(redrawn(level, {{20, 0}, {80, -2}, {80, 2}}), 80), 2, 1e-9);
    // Third place: the earlier one, (80, 3). With (20, -3) the best pair would be (50, -2), (20,
    // -3).
    const Stroke out = redrawn(level, {{50, 1}, {50, -2}, {80, 3}, {20, -3}});
    EXPECT_NEAR(height(out, 50), 1, 1e-9);
    EXPECT_NEAR(height(out, 80), 3, 1e-9);
}

TEST(LineRedraw, UnparallelPairLeavesTheNearerAnchor) {
    // |cosine| 0.8 is too small; the parallel through the nearer anchor is drawn.
    EXPECT_TRUE(isNear(redrawn({{0, 0}, {100, 0}}, {{50, 8}, {42, 2}}), line({0, 2}, {100, 2})));
    // 0.8824 (15 along, 8 across) is enough.
    const Stroke out = redrawn({{0, 0}, {100, 0}}, {{42.5, 0}, {57.5, 8}});
    EXPECT_NEAR(cross({15, 8}, out.back() - out.front()), 0, 1e-6);
}

TEST(LineRedraw, CrowdedPairKeepsTheDirection) {
    // Three anchors carry the start from 0 to 27 on a line of 30 units. Measured
    // from (0, 9) it would lie beyond the end, which lands on (16, 0).
    const Stroke anchors{{0, 9}, {16, 0}, {9, -9.9}, {18, -9.9}, {27, -9.9}};
    EXPECT_TRUE(isNear(redrawn({{0, 0}, {30, 0}}, anchors), line({0, 9}, {16, 0})));
}

TEST(LineRedraw, PairOfAnchorsLeadsTheLine) {
    Random random;
    for (int i = 0; i < 2000; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Point2D start = random.jitter(500);
        const Stroke drawn =
            chain({start, start + polar(random.in(150, 500), random.in(-PI, PI))}, 30);
        const Stroke fit = fitted(drawn);
        const Point2D travel = fit.back() - fit.front();
        const double size = length(travel);
        const auto place = [&](double t, double d) {
            return fit.front() + (t / size) * travel + (d / size) * Point2D{-travel.y, travel.x};
        };
        // At least 40 apart and less than 18 across: parallel enough.
        const double reach = random.in(-8, size - 35);
        const Point2D a = place(reach, random.in(-8.9, 8.9));
        const Point2D b = place(random.in(reach + 40, size + 8), random.in(-8.9, 8.9));
        const Stroke out = random.below(2) == 0 ? redrawn(drawn, {a, b}) : redrawn(drawn, {b, a});
        ASSERT_EQ(out.size(), 21U);
        EXPECT_GT(dot(out.back() - out.front(), travel), 0) << "direction";
        // An upright fit leans by a unit.
        const double tolerance = travel.x == 0 ? 1.0 : 1e-3;
        const auto check = [&](const Point2D& end, const Point2D& fitEnd, const Point2D& anchor) {
            EXPECT_NEAR(cross(b - a, end - a) / length(b - a), 0, 1e-9) << "on the pair's line";
            const double left = length(end - anchor);
            EXPECT_TRUE(left < 1e-9 || left > 19.9) << "lands on its anchor when near: " << left;
            const double drawnTo = length(fitEnd - anchor);
            EXPECT_TRUE(drawnTo < 20.1 + tolerance || std::abs(left - drawnTo) < tolerance)
                << "else it keeps its distance: " << left << ", " << drawnTo;
        };
        check(out.front(), fit.front(), a);
        check(out.back(), fit.back(), b);
    }
}

TEST(LineRedraw, AnyAnchorsLeaveALine) {
    Random random;
    for (int i = 0; i < 2000; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Stroke drawn{{0, 0}, {random.in(1, 60), random.in(-5, 5)}};
        Stroke anchors;
        for (int k = random.below(6); k > 0; --k) {
            anchors.push_back({random.in(-15, 75), random.in(-12, 12)});
        }
        const Stroke out = redrawn(drawn, anchors);
        ASSERT_EQ(out.size(), 21U);
        EXPECT_TRUE(isNear(out, line(out.front(), out.back())));
        for (const Point2D& anchor : anchors) {
            EXPECT_LT(length(out.front() - anchor), 200) << "stays near";
        }
    }
}

}  // namespace

}  // namespace Scrivo::test
