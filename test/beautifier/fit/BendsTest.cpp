#include "Beautifier/fit/Bends.h"

#include <cmath>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

constexpr double TURN = 2.0 * std::numbers::pi;

/// Once around, counter-clockwise for a `sense` of 1.
template <std::size_t N>
std::array<Vec, N> circle(double sense) {
    std::array<Vec, N> points;
    for (std::size_t i = 0; i < N; ++i) {
        const double phi = sense * TURN * static_cast<double>(i) / (N - 1);
        points.at(i) = {std::cos(phi), std::sin(phi)};
    }
    return points;
}

TEST(Bends, SumUpWithAndWithoutTheirSigns) {
    for (const double sense : {1.0, -1.0}) {
        const Bends bends = bendsOf(circle<COARSE>(sense));
        EXPECT_NEAR(bends.absolute, 23.0 * TURN / 24, 1e-9);
        EXPECT_NEAR(bends.sum, sense * 23.0 * TURN / 24, 1e-9);
        EXPECT_NEAR(bends.sharpest, TURN / 24, 1e-9);
    }
    Coarse zigzag;
    for (std::size_t i = 0; i < COARSE; ++i) {
        zigzag.at(i) = {static_cast<double>(i), i % 4 < 2 ? 0.0 : 2.0};
    }
    const Bends bends = bendsOf(zigzag);
    EXPECT_NEAR(bends.absolute, 23.0 * TURN / 4, 1e-9) << "right angles";
    EXPECT_NEAR(bends.sum, -TURN / 4, 1e-9) << "an odd number of them";
}

TEST(Bends, OutsideTheClosureDoNotCount) {
    Fine fine = circle<FINE>(1.0);
    fine[5] = {3, 3};
    fine[95] = {-3, 3};
    const Closure closure{.first = 10, .last = 80};
    const Bends bends = innerBends(fine, closure, 4);
    // Chords of four steps, from eight steps behind the first to eight before the last.
    constexpr int COUNT = (80 - 10 - 16) / 4 + 1;
    EXPECT_NEAR(bends.sum, COUNT * 4 * TURN / (FINE - 1), 1e-9);
    EXPECT_NEAR(bends.sharpest, 4 * TURN / (FINE - 1), 1e-9);
}

}  // namespace

}  // namespace Scrivo::test
