#include "Beautifier/ink/Frame.h"
#include "Strokes.h"

#include <gtest/gtest.h>
#include <vector>

namespace Scrivo::test {

namespace {

using namespace beautifier;

TEST(Frame, OfUnknownCoordinatesIsNotMeasurable) {
    EXPECT_FALSE(measure({}).measurable);
    for (const double bad : {QUIET_NAN, INF, -INF, UNKNOWN_EXTENT, -UNKNOWN_EXTENT}) {
        for (std::size_t i = 0; i < 6; ++i) {
            std::vector<Point2D> samples{{0, 0, 0}, {1, 1, 0}, {2, 0, 0}};
            (i % 2 == 0 ? samples[i / 2].x : samples[i / 2].y) = bad;
            EXPECT_FALSE(measure({samples, 1, 1}).measurable) << bad << " at " << i;
        }
        const std::vector<Point2D> one{{0, bad, 0}};
        EXPECT_FALSE(measure({one, 1, 1}).measurable) << bad;
    }
}

TEST(Frame, HoldingThePenStillAddsNoLength) {
    std::vector<Point2D> samples;
    for (const double x : {0.0, 50.0, 100.0}) {
        for (int i = 0; i < 200; ++i) {
            samples.push_back({x, i % 2 == 0 ? 0.0 : 3.0, 0});
        }
        samples.push_back({x, 0, 0});
    }
    const Ink ink{samples, 1, 1};
    EXPECT_GT(measure(ink).length, 1000);
    EXPECT_NEAR(travel(ink, measure(ink)), 100, 1e-9);
    EXPECT_EQ(travel({}, measure({})), 0.0);
    // A tap trembles by less than half a unit, also where that is all its extent.
    std::vector<Point2D> tap(100);
    for (std::size_t i = 0; i < tap.size(); i += 2) {
        tap[i].x = 0.4;
    }
    const Ink dot{tap, 1, 1};
    EXPECT_LE(travel(dot, measure(dot)), 0.4);
}

TEST(Frame, PiecesCountWhatSpansTheStroke) {
    const auto pieces = [](const std::vector<Point2D>& samples) {
        return measure({samples, 1, 1}).pieces;
    };
    EXPECT_NEAR(pieces({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), 3, 1e-9);
    // Neither a pen at rest nor dense corners fill the long pieces.
    std::vector<Point2D> samples{{0, 0, 0}, {100, 0, 0}, {100, 100, 0}};
    samples.insert(samples.begin(), 10, samples.front());
    for (int i = 1; i < 10; ++i) {
        samples.push_back({100 - 0.1 * i, 100, 0});
    }
    EXPECT_NEAR(pieces(samples), 2, 0.1);
    EXPECT_EQ(pieces({{1, 1, 0}}), 0);
}

}  // namespace

}  // namespace Scrivo::test
