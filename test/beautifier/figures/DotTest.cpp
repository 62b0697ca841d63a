#include "Answers.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;
using curves::ellipse;

TEST(BeautifierDots, AreTapsScribblesAndSlipsButNotSmallLetters) {
    const Path letter{{100, 100}, {103, 106}, {104, 101}, {106, 106}, {107, 100}};
    const Case<std::int32_t> cases[] = {
        {"tap of one sample", {{100, 100}}, FIGURE_POINT},
        {"tap", Path(9, {100, 100}), FIGURE_POINT},
        {"scribble", {{100, 100}, {103, 101}, {101, 102}, {102, 100}}, FIGURE_POINT},
        {"slip", sample(polyline({{100, 100}, {106, 103}}), 6), FIGURE_POINT},
        {"letter as large as that slip", sample(polyline(letter), 40), FIGURE_NONE},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(beautify(c.stroke).type, c.expected) << c.name;
    }
    const auto dot = std::get<DotFigure>(beautify(Path(9, {100, 90})).figure);
    EXPECT_TRUE(isNear(dot.centre, {100, 90}));
}

/// A press of `count` samples whose tremor stays within `extent` units.
Path heldPress(int count, double extent) {
    const auto tremor = [&](double t) {
        const double i = t * (count - 1);
        return Point2D{200.0 + 0.5 * extent * std::sin(2.3 * i + 0.01 * i * i),
                       200.0 + 0.5 * extent * std::sin(1.7 * i)};
    };
    return sample(tremor, count);
}

TEST(BeautifierDots, ArePressesHeldForAnyTime) {
    for (const int count : {10, 60, 240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 2.4)).type, FIGURE_POINT) << count;
    }
    for (const int count : {240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 3.9)).type, FIGURE_POINT) << count;
        EXPECT_EQ(beautify(heldPress(count, 4.1)).type, 0) << count;
    }
}

TEST(BeautifierDots, AreSureWithinTwoUnitsAndLeaveDashesToLinesWhereNoneAreWanted) {
    const Path dash = sample(polyline({{200, 200}, {210, 202}}), 8);
    const BeautifierOptions onlySure{.sensitivity = 0.0};
    EXPECT_EQ(beautify({{200, 200}}, onlySure).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash, onlySure).reason, Reason::NOT_SURE);
    BeautifierOptions noDots;
    noDots.figures.erase(FigureFamily::DOT);
    EXPECT_EQ(beautify(dash).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash, noDots).type, FIGURE_LINE);
    const Beautified tap = beautify({{200, 200}}, noDots);
    EXPECT_EQ(tap.reason, Reason::NOT_WANTED);
    EXPECT_EQ(tap.confidence, 1.0);
}

}  // namespace

}  // namespace Scrivo::test
