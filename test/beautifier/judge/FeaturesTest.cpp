#include "Answers.h"
#include "Beautifier/judge/Features.h"

#include <gtest/gtest.h>
#include <map>
#include <numbers>
#include <string_view>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(BeautifierFeatures, MeasureWhatTheirNamesSay) {
    using namespace beautifier;
    const double least = std::log(0.003);
    const auto expectNear = [](const Features& f, const std::map<std::size_t, double>& expected) {
        for (const auto& [feature, value] : expected) {
            EXPECT_NEAR(f.at(feature), value, 0.05) << FEATURE_NAMES.at(feature);
        }
    };
    expectNear(featuresOf(examine(fineOutline(polyline({{0, 0}, {300, 0}, {300, 400}})))),
               {{"TURNING"_f, std::numbers::pi / 2},
                {"BOW"_f, std::numbers::pi / 2},
                {"OPENING"_f, std::numbers::pi / 2},
                {"LEG_RATIO"_f, std::log(0.75)}});
    // Both ends overshoot the corner where they cross by 40 units.
    const Evidence square =
        examine(fineOutline(polyline({{-40, 0}, {400, 0}, {400, 400}, {0, 400}, {0, -40}})));
    expectNear(featuresOf(square), {{"TURNING"_f, 3 * std::numbers::pi / 2},
                                    {"GAP"_f, least},
                                    {"TRIMMED"_f, 80.0 / 1680},
                                    {"TAIL"_f, std::log(40 / (440 * square.size))},
                                    {"SHARPEST_BEND"_f, std::numbers::pi / 2},
                                    {"COUNTER_BENDS"_f, 0},
                                    {"POLYGON4_RMS"_f, least},
                                    {"QUADRANGLE_SIDE"_f, 0},
                                    {"QUADRANGLE_ANGLE"_f, std::numbers::pi / 2},
                                    {"QUADRANGLE_WINDING"_f, 0}});
    // The pen comes from outside: the circle's centre is not that of the box.
    const Curve lollipop = [](double t) {
        return t < 0.1 ? Point2D{1.6 - 6 * t, 0} : polar(1, 2 * std::numbers::pi * (t - 0.1) / 0.9);
    };
    expectNear(featuresOf(examine(fineOutline(lollipop))), {{"ELLIPSE_RMS"_f, least}});
}

}  // namespace

}  // namespace Scrivo::test
