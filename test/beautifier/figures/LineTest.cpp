#include "Answers.h"

#include <gtest/gtest.h>
#include <vector>

namespace Scrivo::test {

namespace {

using namespace curves;
using curves::ellipse;

LineFigure lineOf(const Path& path, const BeautifierOptions& options = {},
                  const std::vector<Path>& others = {}) {
    return std::get<LineFigure>(beautify(path, options, others).figure);
}

TEST(BeautifierLines, RunTheWayThePenRan) {
    for (const Point2D& to : Path{{500, 360}, {100, 240}, {290, 500}, {330, 100}, {303, 100}}) {
        for (const bool snaps : {true, false}) {
            const Path path = sample(polyline({{300, 300}, to}), 40);
            const auto line =
                lineOf(path, {}, snaps ? std::vector<Path>{{{302, 303}}} : std::vector<Path>{});
            EXPECT_TRUE(isNear(line.from, {300, 300}, 11.0));
            EXPECT_TRUE(isNear(line.to, to, 11.0));
        }
    }
}

TEST(BeautifierLines, DrawnThereAndBackAreAsLongAsTheirInk) {
    // The ends lie above each other: their chord is upright, the ink is not.
    const Curve thereAndBack = polyline({{100, 200}, {400, 200}, {100.03, 202}});
    const auto line = lineOf(sample(thereAndBack, 80));
    EXPECT_GT(length(line.to - line.from), 290.0);
}

TEST(BeautifierLines, AreNotMovedByStrokesOutOfReach) {
    const Path upright = sample(polyline({{300, 200}, {300, 400}}), 40);
    for (const Point2D& other : Path{{100, 100}, {312, 300}, {305, 520}}) {
        const auto line = lineOf(upright, {}, {{other}});
        EXPECT_NEAR(line.from.x, 300.0, 1e-9) << other.x << ", " << other.y;
        EXPECT_NEAR(line.to.x, 300.0, 1e-9) << other.x << ", " << other.y;
    }
    EXPECT_GT(lineOf(upright, {}, {{{305, 300}}}).from.x, 304.0);
}

TEST(BeautifierOptionsTest, SnapLinesToNearbyStrokesOnlyWhenAsked) {
    const Path line = sample(polyline({{300, 300}, {480, 390}}), 50);
    const std::vector<Path> others{{{303, 303}}, {}, {{QUIET_NAN, 1}}};
    const Beautified snapped = beautify(line, {}, others);
    EXPECT_TRUE(isNear(snapped.path.front(), {303, 303}, 7e-7));
    std::visit(Agrees{snapped.path}, snapped.figure);
    const Beautified alone = beautify(line, {.nearbyStrokes = false}, others);
    EXPECT_TRUE(isNear(alone.path.front(), {300, 300}, 0.7));
}

}  // namespace

}  // namespace Scrivo::test
