#include "Beautifier/fit/Bends.h"

#include <cmath>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

constexpr double TURN = 2.0 * std::numbers::pi;

/// A full turn, counter-clockwise for a `sense` of 1.
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
    const Bends bends = innerBends(fine, closure);
    // Chords of four steps, from eight steps behind the first to eight before the last.
    constexpr int COUNT = (80 - 10 - 16) / 4 + 1;
    EXPECT_NEAR(bends.sum, COUNT * 4 * TURN / (FINE - 1), 1e-9);
    EXPECT_NEAR(sharpestBend(fine, closure), 4 * TURN / (FINE - 1), 1e-9);
}

TEST(Bends, TheSharpestIsTheLargestToTheBit) {
    // Bends of nearly a half turn either way, several of them nearly alike.
    Fine fine;
    for (std::size_t i = 0; i < FINE; ++i) {
        const double phi = 0.7 * static_cast<double>(i * i % 31);
        fine.at(i) = {std::cos(phi), std::sin(phi)};
    }
    double sharpest = 0.0;
    for (int i = 8; i <= FINE - 9; ++i) {
        const Vec p = pointAt(fine, i);
        sharpest =
            std::max(sharpest, std::abs(turn(p - pointAt(fine, i - 4), pointAt(fine, i + 4) - p)));
    }
    EXPECT_EQ(sharpestBend(fine, Closure()), sharpest);
}

}  // namespace

}  // namespace Scrivo::test
