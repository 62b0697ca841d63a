#include "Answers.h"
#include "Beautifier/fit/EllipseFit.h"
#include "Beautifier/fit/Evidence.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(BeautifierInk, PolygonsOfFewSamplesKeepTheirCorners) {
    const Path square{{300, 200}, {500, 203}, {498, 402}, {301, 400}, {300, 202}};
    const Beautified answer = beautify(square);
    ASSERT_TRUE(is<QuadrangleFigure>(answer.figure));
    EXPECT_EQ(std::get<QuadrangleFigure>(answer.figure).subtype, QuadrangleKind::SQUARE);
    EXPECT_EQ(beautify({{100, 100}, {160, 300}, {300, 100}}).type, FIGURE_ANGLE);
}

TEST(BeautifierInk, BoxesOfFewSamplesNeedNoneAtTheirCorners) {
    const Curve box = polyline({{0, 0}, {200, 0}, {200, 120}, {0, 120}, {0, 0}});
    for (const double start : {0.02, 0.04, 0.06}) {
        const Curve ink = [&](double t) { return box(std::fmod(t + start, 1.0)); };
        for (const int count : {9, 12}) {
            const Beautified answer = beautify(sample(ink, count));
            EXPECT_TRUE(is<QuadrangleFigure>(answer.figure)) << count << " from " << start;
        }
    }
}

TEST(BeautifierInk, CurvesOfFewSamplesStayRound) {
    for (const int count : {7, 9, 12, 20}) {
        const auto answer = beautify(sample(ellipse(100, 100, 0.0), count));
        ASSERT_TRUE(is<CircleFigure>(answer.figure)) << count << " points";
        EXPECT_NEAR(std::get<CircleFigure>(answer.figure).radius, 100.0, 2.0);
    }
}

TEST(BeautifierInk, SparseLoopsAreFittedRoundAndStraight) {
    using namespace beautifier;
    for (const int count : {6, 7, 8}) {
        const Path path = sample(ellipse(100, 60, 0.3), count);
        const Ink ink{path, 1, 1};
        const Evidence e = beautifier::examine(ink, measure(ink));
        ASSERT_TRUE(e.closed) << count;
        const double round = fitEllipseTo(e.closed->round.loop).rms;
        EXPECT_LT(round, 0.02) << count;
        EXPECT_LE(round, fitEllipseTo(e.closed->loop).rms + 1e-12) << count;
    }
    const Path dense = sample(ellipse(100, 60, 0.3), 60);
    const Ink ink{dense, 1, 1};
    const Evidence e = beautifier::examine(ink, measure(ink));
    EXPECT_EQ(norm(e.closed->round.fine[40] - e.fine[40]), 0.0);
}

TEST(BeautifierOutline, CoarsePointsLieAtEvenDistances) {
    using namespace beautifier;
    const Fine fine = fineOutline(polyline({{0, 0}, {300, 400}}));
    const Coarse coarse = resample(fine, 10, 77, {});
    for (std::size_t k = 0; k < coarse.size(); ++k) {
        const double t = static_cast<double>(k) / (COARSE - 1);
        EXPECT_LT(norm(coarse[k] - (1 - t) * fine[10] - t * fine[77]), 1e-9) << k;
    }
}

}  // namespace

}  // namespace Scrivo::test
