#include "Answers.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(Dot, IsWhatATapLeavesButNoSmallLetterOrDash) {
    const Path slip = sample(polyline({{100, 100}, {106, 103}}), 6);
    const Path letter{{100, 100}, {100.8, 103}, {101.6, 100}, {102.4, 103}, {103.2, 100}};
    const Case<std::int32_t> cases[] = {
        {"tap of one sample", {{100, 100}}, FIGURE_POINT},
        {"tap", Path(9, {100, 100}), FIGURE_POINT},
        {"tap that slips by three units", sample(polyline({{100, 100}, {102.5, 101.5}}), 6),
         FIGURE_POINT},
        {"scribble", {{100, 100}, {101.4, 100.5}, {100.5, 101}, {101, 100}}, FIGURE_POINT},
        {"letter of three units", sample(polyline(letter), 40), FIGURE_NONE},
        {"dash of six units", slip, FIGURE_LINE},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(beautify(c.stroke).type, c.expected) << c.name;
    }
    const auto dot = std::get<DotFigure>(beautify(Path(9, {100, 90})).figure);
    EXPECT_TRUE(isNear(dot.centre, {100, 90}));
}

TEST(Dot, IsAsLargeAsATapIs) {
    const auto dash = [](double size) {
        return sample(polyline({{100, 100}, {100 + size, 101}}), 8);
    };
    EXPECT_EQ(beautify(dash(13.9), {.tapSize = 14.0}).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash(14.1), {.tapSize = 14.0}).type, FIGURE_LINE);
    EXPECT_EQ(beautify(dash(3.9)).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash(4.1)).type, FIGURE_LINE);
    EXPECT_EQ(beautify({{100, 100}}, {.tapSize = 0.0}).type, FIGURE_POINT);
}

/// A press of `count` samples whose tremor stays within `extent` units.
Path heldPress(int count, double extent) {
    const auto tremor = [&](double t) {
        const double i = t * (count - 1);
        return Point2D{200.0 + 0.5 * extent * std::sin(2.3 * i + 0.01 * i * i),
                       200.0 + 0.5 * extent * std::sin(1.7 * i)};
    };
    return sample(tremor, count);
}

TEST(Dot, IsAPressHeldForAnyTime) {
    for (const int count : {10, 60, 240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 1.4)).type, FIGURE_POINT) << count;
    }
    for (const int count : {240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 3.9)).type, FIGURE_POINT) << count;
        EXPECT_EQ(beautify(heldPress(count, 4.1)).type, 0) << count;
    }
}

TEST(Dot, IsAsLikelyInAnyUnit) {
    for (const double extent : {1.4, 2.5, 3.9}) {
        const Path press = heldPress(60, extent);
        const double confidence = beautify(press).confidence;
        for (const double scale : {1e-3, 10.0}) {
            const Path scaled = mapped(press, [&](const Point2D& p) { return scale * p; });
            EXPECT_EQ(beautify(scaled, {.tapSize = 4.0 * scale}).confidence, confidence) << scale;
        }
    }
}

TEST(Dot, OfOnePlaceIsBeyondDoubt) {
    const BeautifierOptions strict{.sensitivity = 0.0};
    EXPECT_EQ(beautify({{200, 200}}, strict).type, FIGURE_POINT);
    EXPECT_EQ(beautify(sample(polyline({{200, 200}, {203, 201}}), 8), strict).reason,
              Reason::NOT_SURE);
    BeautifierOptions noDots;
    noDots.figures.erase(FigureFamily::DOT);
    const Beautified tap = beautify({{200, 200}}, noDots);
    EXPECT_EQ(tap.reason, Reason::NOT_WANTED);
    EXPECT_EQ(tap.confidence, 1.0);
}

}  // namespace

}  // namespace Scrivo::test
