#include "Answers.h"
#include "Beautifier/fit/EllipseFit.h"
#include "Beautifier/fit/Polyline.h"

#include <gtest/gtest.h>
#include <numbers>

namespace Scrivo::test {

namespace {

using namespace beautifier;

/// Points of an ellipse, closed; `bump` shifts them outwards on one side.
Coarse pointsOf(const EllipseFit& e, double bump = 0.0) {
    Coarse points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double phi = 2.0 * std::numbers::pi * static_cast<double>(i % LOOP) / LOOP;
        const double grow = 1.0 + bump * std::max(0.0, std::cos(phi));
        const Vec u{e.a * std::cos(phi) * grow, e.b * std::sin(phi) * grow};
        const Vec axis{std::cos(e.angle), std::sin(e.angle)};
        points[i] = e.centre + Vec{axis.x * u.x - axis.y * u.y, axis.y * u.x + axis.x * u.y};
    }
    return points;
}

TEST(EllipseFit, FindsTheEllipseThatThePointsLieOn) {
    const EllipseFit expected[] = {{{0.0, 0.0}, 0.5, 0.3, 0.4},
                                   {{0.2, -0.1}, 0.5, 0.49, 0.0},
                                   {{-0.3, 0.3}, 0.5, 0.05, 2.0},
                                   {{1.0, 2.0}, 0.4, 0.2, -1.2}};
    for (const EllipseFit& e : expected) {
        const EllipseFit fit = fitEllipseTo(pointsOf(e));
        ASSERT_TRUE(fit.found);
        EXPECT_LT(norm(fit.centre - e.centre), 1e-5);
        EXPECT_NEAR(fit.a, e.a, 1e-4);
        EXPECT_NEAR(fit.b, e.b, 1e-4);
        EXPECT_LT(std::abs(std::sin(fit.angle - e.angle)), 1e-3);
        EXPECT_LT(fit.worst, 1e-4);
    }
}

TEST(EllipseFit, IsNoWorseThanTheMomentsAndMeasuresItsResidual) {
    const EllipseFit fit = fitEllipseTo(pointsOf({{0.1, 0.1}, 0.5, 0.25, 0.7}, 0.2));
    ASSERT_TRUE(fit.found);
    EXPECT_GT(fit.worst, fit.rms);
    EXPECT_GT(fit.rms, 0.002);
    EXPECT_LT(fit.rms, 0.02);
    EXPECT_GE(fit.a, fit.b);
}

TEST(EllipseFit, NeedsACurveThatEnclosesAnArea) {
    Coarse line;
    for (std::size_t i = 0; i < line.size(); ++i) {
        line[i] = {static_cast<double>(std::min<std::size_t>(i, LOOP - i)) / LOOP, 0.0};
    }
    EXPECT_FALSE(fitEllipseTo(line).found);
    // The two halves of a figure eight cancel out.
    Coarse eight;
    for (std::size_t i = 0; i < eight.size(); ++i) {
        const double t = 2.0 * std::numbers::pi * static_cast<double>(i % LOOP) / LOOP;
        eight[i] = {0.5 * std::sin(t), 0.25 * std::sin(2.0 * t)};
    }
    EXPECT_FALSE(fitEllipseTo(eight).found);
}

}  // namespace

}  // namespace Scrivo::test
