#include "Polygons.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;

TEST(Levelling, TurnsTheWholeFigureAtOnce) {
    for (const Drawn& shape : quadrangles()) {
        for (const double angle : {0.07, -0.07, PI / 2 + 0.07}) {
            SCOPED_TRACE(shape.name + " turned by " + std::to_string(angle));
            const Path stroke = drawn(turnedBy(shape.corners, angle), 1.0);
            const auto leaning = quadrangleOf(stroke, {.horizontalVertical = false}).corners;
            const auto level = quadrangleOf(stroke).corners;
            const auto before = lengthsOf(leaning);
            const auto after = lengthsOf(level);
            Point2D shift;
            for (std::size_t i = 0; i < before.size(); ++i) {
                EXPECT_NEAR(before[i], after[i], 1e-9);
            }
            for (std::size_t i = 0; i < level.size(); ++i) {
                shift = shift + level[i] - leaning[i];
            }
            EXPECT_LT(length(shift), 1e-9) << "turned about the centre";
            EXPECT_GE(exactPairs(level), 1) << "corners exactly level or upright of each other";
        }
    }
    const auto askew = turnedBy(quadrangles()[2].corners, 0.3);
    const auto q = quadrangleOf(drawn(askew, 0.5)).corners;
    EXPECT_TRUE(hasCorners(q, askew, 5.0)) << "leans too much";
}

}  // namespace

}  // namespace Scrivo::test
