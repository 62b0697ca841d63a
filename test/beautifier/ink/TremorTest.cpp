#include "Answers.h"
#include "Beautifier/ink/Tremor.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using namespace ink;

std::optional<Fine> calmed(const Path& path) {
    const Ink ink{path, 1, 1};
    const Frame frame = measure(ink);
    return withoutTremor(trackOf(ink, frame), frame.length / frame.extent);
}

TEST(Tremor, SteadyPathsHaveNone) {
    EXPECT_FALSE(calmed(sample(polyline({{0, 0}, {300, 100}}), 100)));
    EXPECT_FALSE(calmed(sample(ellipse(100, 60, 0.3), 200)));
    for (const Example& other : others()) {
        EXPECT_FALSE(calmed(sample(other.curve, 300))) << other.name;
    }
}

TEST(Tremor, IsAveragedAway) {
    Path path;
    for (int i = 0; i <= 400; ++i) {
        path.push_back({static_cast<double>(i), i % 4 < 2 ? 2.0 : -2.0, 0.0});
    }
    const auto fine = calmed(path);
    ASSERT_TRUE(fine);
    EXPECT_NEAR(fine->front().x, -0.5, 1e-3);
    EXPECT_NEAR(fine->back().x, 0.5, 1e-3);
    for (std::size_t i = 4; i < FINE - 4; ++i) {
        EXPECT_NEAR(fine->at(i).x, -0.5 + static_cast<double>(i) / (FINE - 1), 0.01);
        EXPECT_LT(std::abs(fine->at(i).y), 0.001) << i;
    }
}

TEST(Tremor, IsAveragedGradually) {
    double before = 0.0;
    for (int step = 10; step < 60; ++step) {
        const double amplitude = 0.05 * step;
        const Path path = sample(
            [&](double t) {
                return Point2D{200 * t, amplitude * std::sin(2 * std::numbers::pi * 200 * t / 12)};
            },
            800);
        double squares = 0.0;
        const Frame frame = measure({path, 1, 1});
        for (const Vec& p : resample(trackOf({path, 1, 1}, frame), frame)) {
            squares += p.y * p.y;
        }
        const double rms = 200 * std::sqrt(squares / FINE);
        if (before > 0.0) {
            EXPECT_LT(std::abs(rms - before), 0.25) << amplitude;
        }
        before = rms;
    }
}

}  // namespace

}  // namespace Scrivo::test
