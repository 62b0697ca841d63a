#include "Beautifier/fit/Corners.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

/// One unit along the x axis, one at the given angle.
Coarse twoPieces(double angle) {
    Coarse points;
    for (int i = 0; i < COARSE; ++i) {
        const double s = i / 24.0;
        points.at(static_cast<std::size_t>(i)) =
            i <= 24 ? Vec{s, 0} : Vec{1 + (s - 1) * std::cos(angle), (s - 1) * std::sin(angle)};
    }
    return points;
}

Corners openCorners(const Coarse& points) {
    return cornersOf(points, Scatter(points), {2, {0, 24, 48}, 0.0}, false, 2.0);
}

TEST(Corners, LieWhereTheLinesMeetDespiteRoundedInk) {
    Coarse points = twoPieces(1.2);
    points[24] = {0.97, 0.02};
    const Corners corners = openCorners(points);
    ASSERT_EQ(corners.count, 1);
    EXPECT_LT(norm(corners.at[0] - Vec{1, 0}), 1e-9);
    EXPECT_LT(corners.worst, 1e-9);
}

TEST(Corners, LieOnTheInkWhereTheLinesAreNearlyParallel) {
    Coarse points = twoPieces(0.08);
    points[24] = {0.97, 0.02};
    EXPECT_LT(norm(openCorners(points).at[0] - points[24]), 1e-12);
}

TEST(Corners, TellTheLargestDistanceFromTheLines) {
    Coarse points = twoPieces(1.2);
    points[12].y = 0.1;
    // In the middle of the 23 points that count a bump lifts the line evenly.
    EXPECT_NEAR(openCorners(points).worst, 0.1 - 0.1 / 23, 1e-9);
}

}  // namespace

}  // namespace Scrivo::test
