#include "Matchers.h"
#include "Scrivo/ScrivoUtil.h"

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
    // 2^24 + 1 is not representable: both units are lost. In double they would not be.
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

}  // namespace

}  // namespace Scrivo::test
