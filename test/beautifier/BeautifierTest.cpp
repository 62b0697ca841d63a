#include "Answers.h"

#include <future>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <string>

namespace Scrivo::test {

namespace {

using namespace ink;

class EveryFigure : public testing::TestWithParam<Example> {
protected:
    void expectFigure(const Path& path, const std::string& how) const {
        const Beautified answer = beautify(path);
        EXPECT_EQ(answer.type, GetParam().type) << how;
        EXPECT_TRUE(GetParam().isFigure(answer.figure)) << how;
        EXPECT_EQ(answer.reason, Reason::RECOGNISED) << how;
        std::visit(Agrees{answer.path}, answer.figure);
    }
};

TEST_P(EveryFigure, IsTheSameAtAnySamplingRateAndSpeed) {
    const Curve& curve = GetParam().curve;
    const Curve eased = [&](double t) { return curve(t * t * (3.0 - 2.0 * t)); };
    for (const int count : {15, 30, 60, 120, 240, 1000}) {
        expectFigure(sample(curve, count), std::to_string(count) + " points");
        expectFigure(sample(eased, count), std::to_string(count) + " points, slow at the ends");
    }
}

TEST_P(EveryFigure, IsTheSameInEitherDirectionAndAtAnySize) {
    Path path = sample(GetParam().curve, 90);
    for (const double size : {60.0, 100.0, 400.0, 1500.0}) {
        expectFigure(Scrivo::test::fractions(path, 200 / size, 200 / size),
                     std::to_string(size) + " units");
    }
    std::reverse(path.begin(), path.end());
    expectFigure(path, "backwards");
}

TEST_P(EveryFigure, IsNotDisturbedByARestingPenOrRepeatedPoints) {
    Path path = sample(GetParam().curve, 60);
    Path repeated;
    for (const Point2D& p : path) {
        repeated.insert(repeated.end(), 5, p);
    }
    EXPECT_TRUE(isNear(beautify(repeated).path, beautify(path).path, 1e-6));
    path.insert(path.begin(), 200, path.front());
    path.insert(path.end(), 200, path.back());
    expectFigure(path, "resting");
}

TEST_P(EveryFigure, NeverTurnsBackIntoInkAsSensitivityRises) {
    for (const double tremor : {0.0, 2.0, 5.0, 8.0, 14.0}) {
        const Path path = sample(shaky(GetParam().curve, tremor), 80);
        std::int32_t before = 0;
        for (int step = 0; step <= 20; ++step) {
            const std::int32_t type = beautify(path, {.sensitivity = step / 20.0}).type;
            EXPECT_TRUE(before == 0 || type == before) << tremor << " at " << step;
            before = type;
        }
    }
}

TEST_P(EveryFigure, AnswersTheSameBitsFromEveryThread) {
    const Path path = inFractions(sample(GetParam().curve, 80));
    const Beautifier shared;
    const auto answer = [&] { return shared.beautify(path, WIDTH, HEIGHT); };
    std::vector<std::future<Beautified>> others;
    for (int i = 0; i < 4; ++i) {
        others.push_back(std::async(std::launch::async, answer));
    }
    const Beautified expected = answer();
    for (auto& other : others) {
        const Beautified actual = other.get();
        EXPECT_TRUE(hasBitsOf(actual.path, expected.path));
        EXPECT_EQ(actual.confidence, expected.confidence);
    }
}

TEST_P(EveryFigure, StaysInkWhenUnwantedOrSmall) {
    const Path path = sample(GetParam().curve, 80);
    EXPECT_EQ(beautify(path, {.figures = {FigureFamily::DOT}}).reason, Reason::NOT_WANTED);
    const Beautified small = beautify(path, {.minSize = 230.0});
    EXPECT_EQ(small.reason, Reason::TOO_SMALL);
    EXPECT_TRUE(isNear(small.path, path));
}

INSTANTIATE_TEST_SUITE_P(Beautifier, EveryFigure, testing::ValuesIn(examples()),
                         [](const auto& example) { return example.param.name; });

TEST(BeautifierInk, OtherShapesStayBitForBit) {
    for (const Example& other : others()) {
        for (const int count : {40, 80, 240}) {
            const Path path = inFractions(sample(shaky(other.curve, 1.0), count));
            const Beautified answer = Beautifier().beautify(path, WIDTH, HEIGHT);
            EXPECT_EQ(answer.type, 0) << other.name << ", " << count;
            EXPECT_TRUE(is<std::monostate>(answer.figure));
            EXPECT_NE(answer.reason, Reason::RECOGNISED);
            EXPECT_TRUE(hasBitsOf(answer.path, path));
        }
    }
}

TEST(BeautifierOptionsTest, SwitchTheIdealOff) {
    const Path flat = sample(polyline({{300, 300}, {500, 308}}), 50);
    const Path square =
        sample(polyline({{300, 200}, {500, 206}, {497, 399}, {301, 401}, {300, 201}}), 120);
    const BeautifierOptions plain{.horizontalVertical = false, .regularFigures = false};
    const auto rise = [](const Beautified& line) {
        return line.path.back().y - line.path.front().y;
    };
    EXPECT_EQ(rise(beautify(flat)), 0.0);
    EXPECT_NEAR(rise(beautify(flat, plain)), 8.0, 0.1);
    const auto steep = std::get<LineFigure>(
        beautify(sample(polyline({{300, 200}, {305, 400}}), 50), plain).figure);
    EXPECT_NEAR(steep.to.x - steep.from.x, 5.0, 0.1);
    const auto drawn = std::get<QuadrangleFigure>(beautify(square, plain).figure);
    EXPECT_EQ(drawn.subtype, QuadrangleKind::GENERAL);
    EXPECT_TRUE(std::any_of(drawn.corners.begin(), drawn.corners.end(), [](const Point2D& p) {
        return length(p - Point2D{497, 399}) < 2.0;
    }));
    const Path egg = sample(ellipse(100, 90, 0.4), 90);
    EXPECT_TRUE(is<CircleFigure>(beautify(egg).figure));
    const auto oval = std::get<EllipseFigure>(beautify(egg, plain).figure);
    EXPECT_TRUE(isNear(oval.radii, {100, 90}, 0.5));
    EXPECT_NEAR(oval.rotation, 0.4, 0.02);
}

TEST(BeautifierOptionsTest, AreChecked) {
    EXPECT_NO_THROW(Beautifier({.minSize = 0.0, .sensitivity = 0.0}));
    EXPECT_NO_THROW(Beautifier({.minSize = 1e9, .sensitivity = 1.0}));
    const BeautifierOptions rejected[] = {
        {.minSize = -1.0},
        {.minSize = QUIET_NAN},
        {.minSize = INF},
        {.sensitivity = -0.01},
        {.sensitivity = 1.01},
        {.sensitivity = QUIET_NAN},
        {.figures = {static_cast<FigureFamily>(17)}},
    };
    for (const BeautifierOptions& options : rejected) {
        EXPECT_THROW(Beautifier{options}, std::invalid_argument);
    }
}

TEST(BeautifierInput, FiguresStayNearTheirInkInNarrowAreas) {
    const Beautifier beautifier;
    for (const double width : {5e-324, 1e-300, 1e-100, 1e-20, 1e-6}) {
        for (const Example& example : examples()) {
            const Path path = inFractions(sample(example.curve, 50));
            for (const Point2D& p : beautifier.beautify(path, width, HEIGHT).path) {
                EXPECT_LE(std::abs(p.x), 51.0) << example.name << " in " << width;
            }
        }
    }
}

TEST(BeautifierInput, DegenerateStrokesHaveAnAnswer) {
    constexpr double HUGE_VALUE = std::numeric_limits<double>::max();
    constexpr double TINY = std::numeric_limits<double>::denorm_min();
    const Beautifier beautifier;
    const std::vector<Path> invalid{{},
                                    {{QUIET_NAN, 0.5}, {0.1, 0.2}},
                                    {{0.5, 0.5}, {0.1, QUIET_NAN}},
                                    {{INF, 0.5}},
                                    {{-HUGE_VALUE, 0}, {HUGE_VALUE, 1}}};
    for (const Path& path : invalid) {
        const Beautified answer = beautifier.beautify(path, WIDTH, HEIGHT);
        EXPECT_EQ(answer.reason, Reason::INVALID);
        EXPECT_EQ(answer.path.size(), path.size());
    }
    const Path square = inFractions(sample(examples()[3].curve, 50));
    for (const double side : {0.0, -5.0, INF, QUIET_NAN}) {
        EXPECT_EQ(beautifier.beautify(square, side, HEIGHT).reason, Reason::INVALID);
        EXPECT_EQ(beautifier.beautify(square, WIDTH, side).reason, Reason::INVALID);
    }
    // Figures overflow the fractions of a nearly zero width; coordinates beyond UNKNOWN_EXTENT are
    // not drawn.
    EXPECT_EQ(beautifier.beautify({{{0.5, 0.5}}}, TINY, HEIGHT).reason, Reason::INVALID);
    // So do figures of an area that is far smaller, and strokes in pixels.
    EXPECT_EQ(beautifier.beautify({{{0.5, 0.5}}}, 0.05, HEIGHT).reason, Reason::INVALID);
    EXPECT_EQ(beautifier.beautify({{{0, 0}, {50, 0}}}, WIDTH, HEIGHT).type, FIGURE_LINE);
    const double above = std::nextafter(50.0, INF);
    EXPECT_EQ(beautifier.beautify({{{0, 0}, {above, 0}}}, WIDTH, HEIGHT).reason, Reason::INVALID);
    EXPECT_EQ(beautifier.beautify({{{0, 0}, {0, above}}}, WIDTH, HEIGHT).reason, Reason::INVALID);
    const Path afar = {{{0, 5e6}, {0.2, 5e6}, {0.4, 5e6}}};
    EXPECT_EQ(beautifier.beautify(afar, WIDTH, HEIGHT).reason, Reason::INVALID);
    const std::vector<Path> extreme{
        {{0, 0}, {1e150, 1e150}},
        {{0, 0}, {TINY, TINY}, {0, TINY}, {TINY, 0}},
        {{1e9, 1e9}, {1e9 + 1, 1e9}},
        {{0.5, 0.5}, {0.9, 0.5}, {0.5, 0.5}, {0.9, 0.5}, {0.5, 0.5}, {0.9, 0.5}}};
    for (const Path& path : extreme) {
        const Beautified answer = beautifier.beautify(path, WIDTH, HEIGHT);
        EXPECT_TRUE(answer.confidence >= 0.0 && answer.confidence <= 1.0);
        for (const Point2D& p : answer.path) {
            EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
        }
    }
}

TEST(BeautifierInput, IsResampledAtEvenDistances) {
    const Path eased = sample([](double t) { return Point2D{80 + 320 * t * t, 300, 0}; }, 200);
    const Path points = resample(inFractions(eased), WIDTH, HEIGHT);
    ASSERT_EQ(points.size(), 97U);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].x, 0.1 + 0.4 * static_cast<double>(i) / 96.0, 1e-4);
        EXPECT_NEAR(points[i].y, 0.5, 1e-9);
    }
    EXPECT_TRUE(resample(Path{{0.5, 0.5}, {0.5, 0.5}}, WIDTH, HEIGHT).empty());
    EXPECT_TRUE(resample(Path{{0.1, 0.5}, {QUIET_NAN, 0.5}}, WIDTH, HEIGHT).empty());
}

TEST(BeautifierInput, AMillionPointsAreOneStroke) {
    EXPECT_TRUE(is<EllipseFigure>(beautify(sample(examples()[6].curve, 1'000'000)).figure));
}

}  // namespace

}  // namespace Scrivo::test
