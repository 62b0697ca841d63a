#include "Answers.h"
#include "Beautifier/fit/Levelling.h"
#include "Beautifier/fit/StraightFit.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;
using beautifier::LegsFit;
using beautifier::Vec;

/// The legs of a stroke in units.
std::array<Point2D, 3> legsOf(const Path& corners) {
    const Path stroke = sample(polyline(corners), 120);
    const beautifier::Ink ink{stroke, 1, 1};
    const beautifier::Frame frame = beautifier::measure(ink);
    const LegsFit fit = beautifier::fitLegs(beautifier::examine(ink, frame));
    return {frame.toUnits(fit.from), frame.toUnits(fit.vertex), frame.toUnits(fit.to)};
}

TEST(BeautifierAngles, HaveTheirLegsOnceHoweverTheyAreTraced) {
    const Point2D a{300, 200};
    const Point2D v{350, 380};
    const Point2D b{480, 250};
    const std::vector<Path> ways{{a, v, b}, {a, v, b, v, a}, {v, a, v, b}, {a, v, b, {440, 290}}};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        const auto legs = legsOf(ways[i]);
        EXPECT_TRUE(isNear(legs[0], a, 12.0)) << i << toText(legs[0]);
        EXPECT_TRUE(isNear(legs[1], v, 5.0)) << i << toText(legs[1]);
        EXPECT_TRUE(isNear(legs[2], b, 12.0)) << i << toText(legs[2]);
    }
}

TEST(BeautifierAngles, LieLevelByTheLegThatLeansLess) {
    std::array<Vec, 3> points{Vec{100, 3}, Vec{0, 0}, Vec{60, 80}};
    const double opening = beautifier::turn(points[0] - points[1], points[2] - points[1]);
    beautifier::levelLegs(points, 0.087);
    EXPECT_EQ(points[0].y, points[1].y);
    EXPECT_NEAR(beautifier::turn(points[0] - points[1], points[2] - points[1]), opening, 1e-12);
    std::array<Vec, 3> right{Vec{100, 3}, Vec{0, 0}, Vec{2, 100}};
    beautifier::levelLegs(right, 0.087);
    EXPECT_EQ(right[0].y, right[1].y);
    EXPECT_EQ(right[2].x, right[1].x);
}

}  // namespace

}  // namespace Scrivo::test
