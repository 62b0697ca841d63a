#include "Beautifier/fit/CircleFit.h"

#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace Scrivo::test {

namespace {

using namespace beautifier;

/// Points along an arc about (0.3, -0.2), by turns `off` outside and inside 0.5.
std::vector<Vec> arc(double angle, double off) {
    std::vector<Vec> points;
    for (int i = 0; i < 40; ++i) {
        const double phi = angle * i / 40;
        const double radius = 0.5 + (i % 2 == 0 ? off : -off);
        points.push_back({0.3 + radius * std::cos(phi), -0.2 + radius * std::sin(phi)});
    }
    return points;
}

TEST(CircleFit, RecoversCirclesAndArcs) {
    for (const double angle : {2.0 * std::numbers::pi, 4.0}) {
        const CircleFit fit = fitCircleTo(arc(angle, 0.0), {0.35, -0.15});
        EXPECT_LT(norm(fit.centre - Vec{0.3, -0.2}), 1e-6) << angle;
        EXPECT_NEAR(fit.radius, 0.5, 1e-6) << angle;
        EXPECT_LT(fit.rms, 1e-6) << angle;
    }
}

TEST(CircleFit, TellsTheDistanceOfThePoints) {
    const CircleFit fit = fitCircleTo(arc(2.0 * std::numbers::pi, 0.03), {0.3, -0.2});
    EXPECT_NEAR(fit.radius, 0.5, 1e-9);
    EXPECT_NEAR(fit.rms, 0.03, 1e-9);
}

}  // namespace

}  // namespace Scrivo::test
