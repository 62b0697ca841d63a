#include "Answers.h"
#include "Beautifier/judge/Score.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;
using beautifier::examine;
using beautifier::rank;

TEST(Score, ClosedFamiliesDoNotCompeteForOpenStrokes) {
    const auto open =
        rank(examine(fineOutline(polyline({{0, 0}, {200, 0}, {0, 200}, {200, 200}})))).front();
    EXPECT_TRUE(open.family == FigureFamily::LINE || open.family == FigureFamily::ANGLE);
    EXPECT_LT(open.probability(), 0.1);
}

TEST(Score, TheLikeliestFamilyLosesAsTheShapeLeavesIt) {
    double before = 1.0;
    for (const double bulge : {0.0, 30.0, 60.0, 90.0}) {
        const Curve bow = [=](double t) { return Point2D{400.0 * t, 4.0 * bulge * t * (1.0 - t)}; };
        const auto verdict = rank(examine(fineOutline(bow))).front();
        const double line = verdict.family == FigureFamily::LINE ? verdict.probability() : 0.0;
        EXPECT_TRUE(line < before || line == 0.0) << bulge;
        before = line;
    }
    EXPECT_EQ(before, 0.0) << "a bow is no line";
}

TEST(Score, SensitivityShiftsAllThresholdsAlike) {
    EXPECT_EQ(beautifier::thresholdShift(0.5), 0.0);
    EXPECT_EQ(beautifier::thresholdShift(1.0), -beautifier::thresholdShift(0.0));
    EXPECT_GT(beautifier::thresholdShift(1.0), beautifier::thresholdShift(0.75));
}

}  // namespace

}  // namespace Scrivo::test
