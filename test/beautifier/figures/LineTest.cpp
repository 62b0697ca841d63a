#include "Answers.h"

#include <gtest/gtest.h>
#include <vector>

namespace Scrivo::test {

namespace {

using namespace ink;

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
            EXPECT_TRUE(isNear(line.to, to, 13.0));
        }
    }
}

TEST(BeautifierLines, DrawnThereAndBackOrWithHooksAreAsLongAsTheirInk) {
    // The ends lie above each other: their chord is upright, the ink is not.
    const Curve thereAndBack = polyline({{100, 200}, {400, 200}, {100.03, 202}});
    const auto line = lineOf(sample(thereAndBack, 80));
    EXPECT_NEAR(length(line.to - line.from), 300.0, 4.0);
    EXPECT_TRUE(isNear(line.from, {100, 201}, 2.0));
    const Curve hooked = polyline({{106, 188}, {100, 200}, {400, 200}, {394, 214}});
    const auto straight = lineOf(sample(hooked, 80));
    EXPECT_TRUE(isNear(straight.from, {100, 200}, 2.0));
    EXPECT_TRUE(isNear(straight.to, {400, 200}, 2.0));
}

TEST(BeautifierLines, StayWhereTheyAreBesideStrokes) {
    const Path upright = sample(polyline({{300, 200}, {300, 400}}), 40);
    for (const Point2D& other : Path{{100, 100}, {312, 300}, {300, 300}, {305, 300}, {305, 520}}) {
        const auto line = lineOf(upright, {}, {{other}});
        EXPECT_TRUE(isNear(line.from, {300, 200}, 1e-9)) << toText(other);
        EXPECT_TRUE(isNear(line.to, {300, 400}, 1e-9)) << toText(other);
    }
}

TEST(BeautifierLines, EndAtTheAnchorsThatTheOptionNames) {
    const Path open = sample(polyline({{300, 296}, {200, 200}, {120, 300}}), 30);
    const Path box =
        sample(polyline({{504, 306}, {604, 306}, {604, 206}, {504, 206}, {504, 306}}), 60);
    const Path dot{{396, 154}};
    const auto ends = [&](const Point2D& to, std::set<AnchorSort> sorts) {
        BeautifierOptions options;
        options.anchors = std::move(sorts);
        return lineOf(sample(polyline({{300, 300}, to}), 40), options, {open, box, dot});
    };
    const auto joined = ends({500, 300}, {AnchorSort::END, AnchorSort::CORNER});
    EXPECT_TRUE(isNear(joined.from, {300, 296}, 1e-6));
    EXPECT_TRUE(isNear(joined.to, {504, 306}, 1.0)) << toText(joined.to);
    const auto free = ends({500, 300}, {AnchorSort::CENTRE});
    EXPECT_TRUE(isNear(free.from, {300, 300}, 1e-6));
    EXPECT_TRUE(isNear(free.to, {500, 300}, 1e-6));
    EXPECT_TRUE(isNear(ends({400, 150}, {AnchorSort::CENTRE}).to, {396, 154}, 1e-6));
    // Held by one anchor, a line that leans little is level with it.
    EXPECT_NEAR(ends({460, 304}, {AnchorSort::END}).to.y, 296.0, 1e-9);
}

TEST(BeautifierLines, LieWithinTheirInkHoweverFarFromTheOrigin) {
    for (const double offset : {0.0, 1e7, 2e9}) {
        for (int i = 0; i < 36; ++i) {
            const Point2D along = polar(100.0, i * PI / 36);
            const Point2D middle{offset + 300, offset + 300};
            const Path path = Scrivo::test::fractions(
                sample(polyline({middle - along, middle + along}), 30), 1000, 1000);
            const auto answer =
                Beautifier({.horizontalVertical = false}).beautify(path, 1000, 1000);
            const auto& line = std::get<LineFigure>(answer.figure);
            EXPECT_TRUE(isNear(line.from, middle - along, 1e-5)) << offset << ", " << i;
            EXPECT_TRUE(isNear(line.to, middle + along, 1e-5)) << offset << ", " << i;
        }
    }
}

}  // namespace

}  // namespace Scrivo::test
