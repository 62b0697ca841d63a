#include "Scrivo/ScrivoUtil.h"
#include "Support.h"

namespace Scrivo::test {

namespace {

TEST(Geometry, DistanceIsASingleRoot) {
    EXPECT_EQ(distance({0, 0, 1}, {3, 4, 9}), 5.0);
    EXPECT_EQ(distance({0, 0}, {1, 1}), 1.41421353816986083984375);
    // The sum of squares is rounded before the root: 1 + 2^-24 becomes 1.
    EXPECT_EQ(distance({0, 0}, {1, 0x1p-12}), 1.0);
    EXPECT_EQ(distance({-1e30, 0}, {1e30, 0}), INF);
    EXPECT_EQ(distance({0, 0}, {1e-30, 0}), 0.0);
    EXPECT_TRUE(std::isnan(distance({0, 0}, {QUIET_NAN, 0})));
}

TEST(Geometry, CosineOfVectors) {
    EXPECT_EQ(cosine({1, 0}, {0, 1}), 0.0);
    EXPECT_EQ(cosine({1, 0}, {-2, 0}), -1.0);
    EXPECT_EQ(cosine({3, 4}, {4, 3}), 0.96);
    EXPECT_EQ(cosine({1, 1}, {1, 0}), 1.0 / std::sqrt(2.0));  // in double
    EXPECT_TRUE(std::isnan(cosine({0, 0}, {1, 0})));
}

TEST(Geometry, ProjectionDirectionAndRotation) {
    EXPECT_TRUE(hasBitsOf({projection({0, 0, 1}, {4, 0, 1}, {2, 5, 1})}, {{2, 0, 0}}));
    EXPECT_TRUE(isNear(projection({0, 0}, {4, 3}, {-3, 4}), {0, 0}));
    EXPECT_TRUE(isNear(projection({1, 1}, {1, 1}, {2, 5}), {QUIET_NAN, QUIET_NAN}));
    EXPECT_EQ(direction({0, 0}, {1, 0}, {0, 1}), 1.0);
    EXPECT_EQ(direction({1, 1}, {2, 1}, {1, -1}), -2.0);
    EXPECT_EQ(direction({0, 0}, {1, 1}, {5, 5}), 0.0);
    EXPECT_TRUE(isNear(rotationLine({0, 0}, {1, 0, 1}, PI / 2), {0, -1}, 1e-15));
    EXPECT_TRUE(isNear(rotationLine({10, 20}, {10, 25}, std::atan(0.75)), {13, 24}, 1e-14));
}

TEST(Geometry, ArcLengthCountsSegmentsBeforeTheLastIndex) {
    const Stroke stroke{{0, 0}, {3, 4}, {3, 5}, {3, 7}};
    EXPECT_EQ(arc_length(stroke, 1, 2), 0.0);
    EXPECT_EQ(arc_length(stroke, 1, 3), 1.0);
    EXPECT_EQ(arc_length(stroke, 0, 4), 8.0);
    EXPECT_EQ(arc_length(stroke, 3, 1), 0.0);
}

TEST(Geometry, ArcLengthIsSummedInFloat) {
    // 2^24 + 1 is no float: both units are lost. In double they would add up.
    EXPECT_EQ(arc_length({{0, 0}, {0x1p24, 0}, {0x1p24 + 1, 0}, {0x1p24 + 2, 0}}, 0, 4), 0x1p24);
}

TEST(Geometry, SimpleLine) {
    EXPECT_FALSE(isSimpleLine({}));
    EXPECT_FALSE(isSimpleLine({{1, 1}}));
    EXPECT_TRUE(isSimpleLine({{0, 0}, {1, 1}, {2, 2}}));
    EXPECT_FALSE(isSimpleLine(closedChain({{0, 0}, {9, 0}, {9, 9}, {0, 9}}, 5)));
    EXPECT_FALSE(isSimpleLine({{0, 0}, {19.5, 0}, {19, 0}})) << "19 / 20 is not above 0.95";
    EXPECT_TRUE(isSimpleLine({{0, 0}, {19.5, 0}, {floatAbove(19), 0}}));
    // Summed in double the path is 17207402.125 long and the ratio below 0.95; in
    // float it is 17207402 long and the ratio above.
    EXPECT_FALSE(isSimpleLine({{0, 0}, {0, 16777216}, {0, 16777217}, {0, 16347031.875}}));
}

TEST(Geometry, ScaleOfGraph) {
    const Stroke box = chain({{10, 20}, {50, 30}}, 9);  // 10 points
    EXPECT_TRUE(hasBitsOf({scaleOfGraph(withForce(box, 1))}, {{40, 10}}));
    const Stroke nine(box.begin(), box.end() - 1);
    EXPECT_TRUE(hasBitsOf({scaleOfGraph(nine)}, {{UNKNOWN_EXTENT, UNKNOWN_EXTENT}}));
    // The maxima start at 0.
    EXPECT_TRUE(hasBitsOf({scaleOfGraph(chain({{-50, -9}, {-10, -5}}, 9))}, {{50, 9}}));
    Stroke holes = box;
    holes[3].x = holes[9].y = QUIET_NAN;
    EXPECT_TRUE(isNear(scaleOfGraph(holes), {40, 80.0 / 9}));
    EXPECT_EQ(scaleOfGraph(Stroke(10, {QUIET_NAN, QUIET_NAN})).x, UNKNOWN_EXTENT);
}

TEST(Geometry, BoundCheckMovesAFigureBackIntoTheArea) {
    const Case<Point2D> cases[] = {
        {"nothing", {}, {0, 0}},
        {"inside, touching all edges", {{0, 0}, {800, 600}}, {0, 0}},
        {"right", {{700, 10}, {900, 20}}, {-100, 0}},
        {"left", {{-20, 10}, {100, 20}}, {20, 0}},
        {"bottom and left", {{-8, 500}, {100, 601}}, {8, -1}},
        {"top", {{10, -3}, {100, 20}}, {0, 3}},
        {"both sides, nor vertically", {{-20, 500}, {900, 700}}, {0, 0}},
        {"above and below, nor horizontally", {{-20, -1}, {90, 601}}, {0, 0}},
        {"wider than the area", {{1, 10}, {901, 20}}, {-101, 0}},
        {"NaN stays", {{QUIET_NAN, 10}, {900, QUIET_NAN}}, {-100, 0}},
    };
    for (const auto& c : cases) {
        Stroke moved = withForce(c.stroke, 0.5);
        boundCheck(moved, 800, 600);
        const Stroke expected = mapped(c.stroke, [&](const Point2D& p) { return p + c.expected; });
        EXPECT_TRUE(isNear(moved, withForce(expected, 0.5), 0.0)) << c.name;
    }
}

TEST(Geometry, BoundCheckShiftsByAFloat) {
    Stroke stroke{{900.1, 0}};
    boundCheck(stroke, 800, 600);
    EXPECT_EQ(stroke[0].x, 900.1 - 100.09999847412109375);
}

TEST(Geometry, RecoverDividesByTheArea) {
    Stroke stroke{{400, 300, 0.7}, {0, 5}};
    recover(stroke, 800, 600);
    EXPECT_TRUE(hasBitsOf(stroke, {{0.5, 0.5, 0.7}, {0, 5.0 / 600}}));
    recover(stroke, 0, 0);
    EXPECT_TRUE(isNear(stroke, {{INF, INF, 0.7}, {QUIET_NAN, INF}}));
    Stroke narrow{{1, 1}};
    recover(narrow, 0.1F, 1);
    EXPECT_EQ(narrow[0].x, 1 / 0.100000001490116119384765625);
}

}  // namespace

}  // namespace Scrivo::test
