#include "Answers.h"

#include <gtest/gtest.h>
#include <numbers>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(Ellipse, NeedlesAreNoLongerThanTheirInk) {
    for (const double start : {0.0, 0.35, 0.7, 1.1, 1.5}) {
        const Curve bentNeedle = [&](double t) {
            const double phi = 2.2 * std::numbers::pi * t + start;
            const double x = std::cos(phi);
            return Point2D{400 + 150 * x, 300 + std::sin(phi) + 0.5 * x * x};
        };
        const Beautified answer = Beautifier().beautifyAs(inFractions(sample(bentNeedle, 60)),
                                                          EllipseKind::ELLIPSE, WIDTH, HEIGHT);
        EXPECT_LT(std::get<EllipseFigure>(answer.figure).radii.x, 1.1 * 150) << start;
    }
}

}  // namespace

}  // namespace Scrivo::test
