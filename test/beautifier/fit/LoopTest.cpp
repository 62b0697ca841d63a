#include "Answers.h"
#include "Beautifier/fit/Loop.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(Loop, CirclesOfSeveralLapsAreCircles) {
    // A turn and a seventh, the second lap a little wider.
    const Curve spiral = [](double t) { return polar(100.0 + 3.0 * t, 7.2 * t); };
    const Curve circle = ellipse(100, 95, 0.0);
    const Curve twice = [=](double t) { return circle(2.0 * t); };
    for (const Curve& laps : {spiral, shaky(twice, 3.0)}) {
        EXPECT_TRUE(is<CircleFigure>(beautify(sample(laps, 200), {.insideArea = false}).figure));
    }
}

TEST(Loop, CutsBothEndsWhereTheyCross) {
    using namespace beautifier;
    // Both ends overshoot the corner of the box by 40 units.
    const Fine fine = fineOutline(polyline({{-40, 0}, {400, 0}, {400, 400}, {0, 400}, {0, -40}}));
    const Closure closure = close(fine);
    const int steps = static_cast<int>(40.0 / 1680 * (FINE - 1));
    EXPECT_NEAR(closure.first, steps, 1);
    EXPECT_NEAR(closure.last, FINE - 1 - steps, 1);
    EXPECT_LT(closure.gap, 1e-9) << "the remaining ends cross";
    EXPECT_NEAR(closure.trimmed, 2.0 * steps / (FINE - 1), 2.0 / (FINE - 1));
}

TEST(Loop, CutsAtMostAQuarterOfTheOutlineAndOnlyWhatClosesIt) {
    using namespace beautifier;
    const Closure line = close(fineOutline(polyline({{0, 0}, {400, 10}})));
    EXPECT_EQ(line.first, FINE / 4);
    EXPECT_EQ(line.last, FINE - 1 - FINE / 4);
    // Cutting an arc widens its gap.
    const Curve arc = [](double t) { return polar(100.0, 5.0 * t); };
    const Closure open = close(fineOutline(arc));
    EXPECT_EQ(open.first, 0);
    EXPECT_EQ(open.last, FINE - 1);
    EXPECT_EQ(open.trimmed, 0.0);
    // The stem of a flag is as long as all of its loop.
    const Closure flag =
        close(fineOutline(polyline({{0, 400}, {0, 0}, {100, 0}, {100, 100}, {0, 100}})));
    EXPECT_LE(flag.first, FINE / 4);
    EXPECT_GT(flag.gap, 0.1);
}

TEST(Loop, StartsAtACornerAndReturnsToIt) {
    using namespace beautifier;
    const Fine fine =
        fineOutline(polyline({{200, 0}, {400, 0}, {400, 200}, {0, 200}, {0, 0}, {200, 0}}));
    const Coarse points = loop(fine, close(fine));
    EXPECT_NEAR(std::abs(points.front().x), 0.5, 0.02);
    EXPECT_NEAR(std::abs(points.front().y), 0.25, 0.02);
    EXPECT_EQ(norm(points.back() - points.front()), 0.0);
    EXPECT_NEAR(lengthBetween(fine, 0, FINE - 1), 3.0, 0.02) << "1200 of 400 units";
}

}  // namespace

}  // namespace Scrivo::test
