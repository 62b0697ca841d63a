#include "Beautifier/fit/Explained.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

TEST(Explained, InkFurtherThanItsShareOfTheSizeIsFar) {
    Evidence e;
    e.size = 2.0;
    for (std::size_t i = 0; i < COARSE; ++i) {
        e.points.at(i) = {static_cast<double>(i) / (COARSE - 1), (i < 12 ? 1.1 : 0.9) * FAR * 2.0};
    }
    const Vec line[] = {{0, 0}, {0.5, 0}, {1, 0}};
    EXPECT_DOUBLE_EQ(farShare(e, line), 12.0 / COARSE);
    EXPECT_DOUBLE_EQ(farShare(e, std::span(line).first(2)), (12.0 + 23.0) / COARSE)
        << "not by the straight extension of an edge";
}

TEST(Explained, CornersAreMeasuredOnTheNearestInk) {
    Fine fine;
    for (std::size_t i = 0; i < FINE; ++i) {
        const double s = (static_cast<double>(i) - 48) / 48;
        fine.at(i) = s < 0 ? Vec{s, 0} : Vec{0, s};
    }
    const CornerInk corner = inkAt(fine, {0.3, -0.4}, 0, FINE - 1, 8);
    EXPECT_NEAR(corner.distance, 0.5, 1e-12);
    EXPECT_NEAR(corner.bend, std::numbers::pi / 2, 1e-12);
    EXPECT_NEAR(inkAt(fine, {-0.5, 0.1}, 0, FINE - 1, 8).bend, 0.0, 1e-12);
    EXPECT_EQ(inkAt(fine, {0, 0}, 0, 55, 8).bend, std::numbers::pi) << "next to an end";
    EXPECT_NEAR(inkAt(fine, {0, 0}, 0, 56, 8).bend, std::numbers::pi / 2, 1e-12);
}

TEST(Explained, LengthsCompareWithinBounds) {
    Evidence e;
    e.length = 3.0;
    EXPECT_DOUBLE_EQ(lengthRatio(e, 2.0), std::log(1.5));
    EXPECT_DOUBLE_EQ(lengthRatio(e, 0.0), std::log(5.0));
    EXPECT_DOUBLE_EQ(lengthRatio(e, 1e6), std::log(0.1));
}

}  // namespace

}  // namespace Scrivo::test
