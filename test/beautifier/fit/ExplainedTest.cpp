#include "Answers.h"
#include "Beautifier/fit/Explained.h"
#include "Beautifier/judge/Features.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;
using namespace beautifier;

TEST(BeautifierExplained, InkAtACornerIsNearAndBends) {
    const Fine sharp = fineOutline(polyline({{0, 0}, {100, 0}, {100, 100}}));
    const CornerInk corner = inkAt(sharp, {0.5, -0.5}, 0, FINE - 1, 6);
    EXPECT_LT(corner.distance, 0.02);
    EXPECT_NEAR(corner.bend, std::numbers::pi / 2, 0.01);
    // A quarter of a circle passes the corner of its box far away, and bends less there.
    const Curve arc = [](double t) { return polar(100, std::numbers::pi / 2 * t); };
    const CornerInk round = inkAt(fineOutline(arc), {0.5, 0.5}, 0, FINE - 1, 6);
    EXPECT_NEAR(round.distance, std::sqrt(2.0) - 1.0, 0.01);
    EXPECT_LT(round.bend, 0.3);
    EXPECT_EQ(inkAt(sharp, {-0.5, -0.5}, 0, FINE - 1, 6).bend, std::numbers::pi);
}

TEST(BeautifierExplained, FarShareCountsInkAwayFromTheFigure) {
    // A pole of a third of the path leaves a square.
    const Evidence e =
        examine(fineOutline(polyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0}, {0, -200}})));
    const std::array corners{e.fine[0], e.fine[16], e.fine[32], e.fine[48], e.fine[64]};
    EXPECT_NEAR(farShare(e, corners), 1.0 / 3.0, 0.04);
    EXPECT_NEAR(lengthRatio(e, 4.0 / 3.0), std::log(1.5), 0.01);
}

TEST(BeautifierExplained, FeaturesTellRoundedBendsSpiralsAndBoxes) {
    const auto feature = [](const Curve& curve, std::size_t i) {
        return featuresOf(examine(fineOutline(curve))).at(i);
    };
    const Curve angle = polyline({{0, 0}, {0, 200}, {120, 200}});
    const Curve hooked = [](double t) {
        return t < 0.5 ? Point2D{0, 280 * t}
                       : polar(60, std::numbers::pi * (1.5 - t)) + Point2D{60, 140};
    };
    EXPECT_LT(feature(angle, "VERTEX_INK"_f) + 1.0, feature(hooked, "VERTEX_INK"_f));
    const Curve circle = [](double t) { return polar(100, 2 * std::numbers::pi * t); };
    const Curve spiral = [](double t) { return polar(100 - 50 * t, 3.4 * std::numbers::pi * t); };
    EXPECT_LT(feature(circle, "ELLIPSE_FAR"_f), 0.05);
    EXPECT_GT(feature(spiral, "ELLIPSE_FAR"_f), 0.3);
    EXPECT_NEAR(feature(circle, "ELLIPSE_ALONG"_f), 0.0, 0.02);
    EXPECT_GT(
        feature(polyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0}}), "ELLIPSE_ALONG"_f),
        0.2);
}

}  // namespace

}  // namespace Scrivo::test
