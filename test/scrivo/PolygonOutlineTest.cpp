#include "Matchers.h"
#include "Random.h"
#include "Scrivo/Polygon.h"

#include <algorithm>

namespace Scrivo::test {

namespace {

Stroke outlineOf(const Stroke& stroke) {
    Stroke out;
    reDrawPolygon(out, stroke);
    return out;
}

/// The corners of a clean outline; fails when it is not one.
Stroke cornersOf(const Stroke& clean) {
    Stroke corners;
    for (std::size_t i = 0; i < clean.size(); i += 21) {
        corners.push_back(clean[i]);
    }
    Stroke closed = corners;
    closed.push_back(corners.front());
    EXPECT_TRUE(isNear(clean, outline(closed)));
    return corners;
}

TEST(PolygonRedraw, DeclinesOrReturnsAsDrawn) {
    const Stroke triangle = closedChain({{0, 0}, {200, 20}, {80, 150}}, 25);
    Stroke leap = triangle;  // 549 units, 749 with the leap: more than a fifth of it
    leap.insert(leap.begin(), {-200, 0});
    const Stroke asDrawn[] = {
        {triangle.begin() + 20, triangle.begin() + 30},  // 10 points
        chain({{0, 0}, {200, 20}}, 50),                  // no corner
        chain({{0, 9}, {0, 0}, {200, 0}, {200, 9}}, 4),  // corners near the ends only
        chain({{0, 0}, {200, 20}, {80, 150}}, 25),       // one corner
        leap,                                            // first segment too long
    };
    for (const Stroke& clean : asDrawn) {
        const Stroke stroke = withForce(clean, 0.5);
        EXPECT_TRUE(appends([&](Stroke& out) { return reDrawPolygon(out, stroke); }, stroke, 0.0))
            << stroke.size();
    }
    const Stroke nine(triangle.begin(), triangle.begin() + 9);
    EXPECT_TRUE(appends([&](Stroke& out) { return reDrawPolygon(out, nine); }, {}));
}

TEST(PolygonRedraw, FiveCornersAndMoreStayWhereTheyAre) {
    for (const int count : {5, 6, 8}) {
        Stroke corners;
        for (int i = 0; i < count; ++i) {
            corners.push_back(Point2D{300, 300} + polar(200, 0.1 + 2 * PI * i / count));
        }
        // The corner where the pen started comes last.
        Stroke expected(corners.begin() + 1, corners.end());
        expected.push_back(corners[0]);
        EXPECT_TRUE(isNear(cornersOf(outlineOf(closedChain(corners, 20))), expected)) << count;
    }
    Stroke open = closedChain({{0, 0}, {150, -50}, {300, 0}, {250, 150}, {50, 150}}, 20);
    open.back() = {-8, 6, 1};
    EXPECT_TRUE(isNear(cornersOf(outlineOf(open)).back(), {-4, 3, 0})) << "midway between the ends";
}

TEST(PolygonRedraw, FirstSegmentOfAnAverageEdgeForbidsRegularising) {
    /// Steps of `unit`, but for the first one. All lengths are exact.
    const auto drawnWith = [](const Stroke& corners, double firstSegment, double unit) {
        Stroke stroke{corners[0], corners[0] + firstSegment / length(corners[1] - corners[0]) *
                                                   (corners[1] - corners[0])};
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Point2D& to = corners[(i + 1) % corners.size()];
            const double left = length(to - stroke.back());
            const Stroke edge =
                chain({stroke.back(), to}, static_cast<int>(std::lround(left / unit)));
            stroke.insert(stroke.end(), edge.begin() + 1, edge.end());
        }
        return cornersOf(outlineOf(stroke));
    };
    // 125, 150 and 125 units: regularising reorders the corners. 400 / (3 + 2) = 80.
    const Point2D apex{0, 0};
    const Point2D right{75, -100};
    const Point2D left{-75, -100};
    EXPECT_TRUE(isNear(drawnWith({apex, right, left}, 80, 5), {right, left, apex}));
    EXPECT_TRUE(isNear(drawnWith({apex, right, left}, 75, 5), {right, apex, left}));
    // 100 by 104 units: regularising makes a square of 102. 408 / (4 + 2) = 68.
    const Stroke upright{{0, 0}, {0, 104}, {100, 104}, {100, 0}};
    EXPECT_TRUE(isNear(drawnWith(upright, 68, 4), {upright[1], upright[2], upright[3], apex}));
    EXPECT_TRUE(isNear(drawnWith(upright, 64, 4)[1], {102, 104}));
}

TEST(PolygonRedraw, MeansWhatWasDrawn) {
    Random random;
    for (int i = 0; i < 300; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const double size = random.in(120, 300);
        const Point2D at{random.in(50, 400), random.in(50, 400)};
        const auto shaky = [&](const Stroke& corners) {
            const Stroke moved = mapped(corners, [&](const Point2D& p) {
                return at + size * p + random.jitter(0.006 * size);
            });
            return cornersOf(outlineOf(closedChain(moved, 25)));
        };
        const Stroke square = shaky({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
        ASSERT_EQ(square.size(), 4U);
        const double side = length(square[1] - square[0]);
        for (std::size_t k = 0; k < 4; ++k) {
            const Point2D u = square[(k + 1) % 4] - square[k];
            const Point2D v = square[(k + 3) % 4] - square[k];
            EXPECT_NEAR(length(u) / side, 1, 1e-12) << "four equal sides";
            EXPECT_LT(std::abs(dot(u, v)), 1e-12 * side * side) << "right angles";
            EXPECT_LT(std::min(std::abs(u.x), std::abs(u.y)), 1e-10) << "level";
        }
        Stroke house = shaky({{0, 1}, {0.5, 0.3}, {1, 1}});
        ASSERT_EQ(house.size(), 3U);
        std::sort(house.begin(), house.end(),
                  [](const Point2D& p, const Point2D& q) { return p.y < q.y; });
        EXPECT_NEAR(house[1].y, house[2].y, 1e-10) << "a level base";
        EXPECT_NEAR(length(house[0] - house[1]), length(house[0] - house[2]), 1e-4)
            << "two equal legs";
    }
}

}  // namespace

}  // namespace Scrivo::test
