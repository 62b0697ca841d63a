#include "Matchers.h"
#include "Scrivo/ScrivoUtil.h"

namespace Scrivo::test {

namespace {

TEST(DrawingArea, ExtentNeedsTenPoints) {
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

TEST(DrawingArea, FiguresMoveBackInside) {
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

TEST(DrawingArea, ShiftIsAFloat) {
    Stroke stroke{{900.1, 0}};
    boundCheck(stroke, 800, 600);
    EXPECT_EQ(stroke[0].x, 900.1 - 100.09999847412109375);
}

TEST(DrawingArea, FractionsDivideByTheArea) {
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
