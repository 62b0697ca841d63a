#include "Beautifier/Beautifier.h"
#include "Beautifier/Features.h"
#include "BeautifierInk.h"
#include "Matchers.h"
#include "Random.h"

#include <algorithm>
#include <future>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>

namespace Scrivo::test {

namespace {

using namespace beautifier_ink;
using beautifier_ink::ellipse;

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 600.0;

Path fractions(const Path& path) {
    return Scrivo::test::fractions(path, WIDTH, HEIGHT);
}

/// Answer for a stroke in units, its path in units too.
Beautified beautify(const Path& path, const BeautifierOptions& options = {},
                    std::vector<Path> others = {}) {
    std::transform(others.begin(), others.end(), others.begin(), fractions);
    Beautified answer = Beautifier(options).beautify(fractions(path), WIDTH, HEIGHT, others);
    answer.path = Scrivo::test::fractions(answer.path, 1 / WIDTH, 1 / HEIGHT);
    return answer;
}

class EveryFigure : public testing::TestWithParam<Example> {
protected:
    void expectFigure(const Path& path, const std::string& how) const {
        const Beautified answer = beautify(path);
        EXPECT_EQ(answer.type, GetParam().type) << how;
        EXPECT_EQ(answer.figure.index(), GetParam().figure) << how;
        EXPECT_EQ(answer.reason, Reason::RECOGNISED) << how;
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
    const Path path = fractions(sample(GetParam().curve, 80));
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
            const Path path = fractions(sample(shaky(other.curve, 1.0), count));
            const Beautified answer = Beautifier().beautify(path, WIDTH, HEIGHT);
            EXPECT_EQ(answer.type, 0) << other.name << ", " << count;
            EXPECT_EQ(answer.figure.index(), 0U);
            EXPECT_NE(answer.reason, Reason::RECOGNISED);
            EXPECT_TRUE(hasBitsOf(answer.path, path));
        }
    }
}

TEST(BeautifierInk, PolygonsOfFewSamplesKeepTheirCorners) {
    const Path square{{300, 200}, {500, 203}, {498, 402}, {301, 400}, {300, 202}};
    const Beautified answer = beautify(square);
    ASSERT_EQ(answer.figure.index(), 5U);
    EXPECT_EQ(std::get<QuadrangleFigure>(answer.figure).kind, QuadrangleKind::SQUARE);
    EXPECT_EQ(beautify({{100, 100}, {160, 300}, {300, 100}}).type, FIGURE_ANGLE);
}

TEST(BeautifierInk, CurvesOfFewSamplesStayRound) {
    for (const int count : {7, 9, 12, 20}) {
        const auto answer = beautify(sample(ellipse(100, 100, 0.0), count));
        ASSERT_EQ(answer.figure.index(), 6U) << count << " points";
        EXPECT_NEAR(std::get<CircleFigure>(answer.figure).radius, 100.0, 2.0);
    }
}

TEST(BeautifierInk, TailsBeyondTheClosureAreCut) {
    // Both ends run on beyond the corner where they cross.
    const Path path =
        sample(polyline({{270, 205}, {500, 200}, {505, 340}, {300, 335}, {302, 170}}), 100);
    const Beautified answer = beautify(path);
    ASSERT_EQ(answer.figure.index(), 5U);
    for (const Point2D& p : answer.path) {
        EXPECT_TRUE(p.x > 293.0 && p.y > 193.0) << toText(p);
    }
    // A turn and a seventh, the second lap a little wider.
    const Curve twice = [](double t) {
        const double phi = 7.2 * t;
        const double radius = 100.0 + 3.0 * t;
        return Point2D{400.0 + radius * std::cos(phi), 300.0 + radius * std::sin(phi), 0.0};
    };
    EXPECT_EQ(beautify(sample(twice, 90)).figure.index(), 6U);
}

TEST(BeautifierInk, SlimRectanglesAreNoEllipsesAndSlimEllipsesNoRectangles) {
    for (const double height : {60.0, 30.0, 20.0}) {
        const Curve slim = polyline(
            {{200, 200}, {500, 201}, {500, 200 + height}, {201, 199 + height}, {200, 201}});
        EXPECT_EQ(beautify(sample(shaky(slim, 0.6), 150)).figure.index(), 5U) << height;
        EXPECT_EQ(beautify(sample(shaky(ellipse(150, height / 2, 0.0), 0.6), 150)).figure.index(),
                  7U)
            << height;
    }
}

TEST(BeautifierInk, AreJudgedByTheFirstOfSeveralLaps) {
    Path laps{{300, 200}, {500, 200}, {500, 400}, {300, 400}};
    laps.insert(laps.end(), {{303, 204}, {497, 196}, {504, 396}, {304, 405}, {300, 202}});
    EXPECT_EQ(beautify(sample(shaky(polyline(laps), 1.0), 200)).figure.index(), 5U);
    const Curve circle = ellipse(100, 95, 0.0);
    const Curve twice = [=](double t) { return circle(2.0 * t); };
    EXPECT_EQ(beautify(sample(shaky(twice, 3.0), 200)).figure.index(), 6U);
}

TEST(BeautifierInk, QuadranglesMayBendInwardsButNotCrossThemselves) {
    const Curve bowTie = polyline({{200, 200}, {400, 350}, {400, 200}, {200, 350}, {200, 203}});
    EXPECT_EQ(beautify(sample(bowTie, 120)).type, 0);
    const Path dart{{300, 280}, {100, 200}, {170, 280}, {100, 360}, {300, 280}};
    const Beautified answer = beautify(sample(polyline(dart), 120));
    ASSERT_EQ(answer.figure.index(), 5U);
    for (const Point2D& corner : std::get<QuadrangleFigure>(answer.figure).corners) {
        EXPECT_TRUE(std::any_of(dart.begin(), dart.end(), [&](const Point2D& p) {
            return length(p - corner) < 4.0;
        })) << toText(corner);
    }
}

/// The outline in the frame's own units, as it is examined.
beautifier::Fine outlineOf(const Curve& curve) {
    const Path path = sample(curve, 400);
    return beautifier::resample(path, 1, 1, beautifier::measure(path, 1, 1));
}

TEST(BeautifierPolygons, AreFoundFromAStartOnAnEdge) {
    using namespace beautifier;
    const Path square{{120, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}, {120, 0}};
    const PolylineFits fits = fitPolygons(Scatter(coarse(outlineOf(polyline(square)))));
    EXPECT_LT(fits[3].rms, 0.01);
    EXPECT_GT(fits[2].rms, 0.05);
}

TEST(BeautifierFeatures, MeasureWhatTheirNamesSay) {
    using namespace beautifier;
    const double least = std::log(0.003);
    const auto expectNear = [](const Features& f, const std::map<Feature, double>& expected) {
        for (const auto& [feature, value] : expected) {
            EXPECT_NEAR(f.at(static_cast<std::size_t>(feature)), value, 0.05)
                << featureName(feature);
        }
    };
    expectNear(featuresOf(examine(outlineOf(polyline({{0, 0}, {300, 0}, {300, 400}})))),
               {{TURNING, PI / 2}, {BOW, PI / 2}, {OPENING, PI / 2}, {LEG_RATIO, std::log(0.75)}});
    // Both ends run on by 40 units behind the corner where they cross.
    const Evidence square =
        examine(outlineOf(polyline({{-40, 0}, {400, 0}, {400, 400}, {0, 400}, {0, -40}})));
    expectNear(featuresOf(square), {{TURNING, 3 * PI / 2},
                                    {GAP, least},
                                    {TRIMMED, 80.0 / 1680},
                                    {TAIL, std::log(40 / (440 * square.size))},
                                    {SHARPEST_BEND, PI / 2},
                                    {COUNTER_BENDS, 0},
                                    {POLYGON4_RMS, least},
                                    {QUADRANGLE_SIDE, 0},
                                    {QUADRANGLE_ANGLE, PI / 2},
                                    {QUADRANGLE_WINDING, 0}});
    // The pen comes from outside: the circle's centre is not that of the box.
    const Curve lollipop = [](double t) {
        return t < 0.1 ? Point2D{1.6 - 6 * t, 0} : polar(1, 2 * PI * (t - 0.1) / 0.9);
    };
    expectNear(featuresOf(examine(outlineOf(lollipop))), {{ELLIPSE_RMS, least}});
}

TEST(BeautifierOutline, CoarsePointsLieAtEvenDistances) {
    using namespace beautifier;
    const Fine fine = outlineOf(polyline({{0, 0}, {300, 400}}));
    const Coarse coarse = resample(fine, 10, 77, {});
    for (std::size_t k = 0; k < coarse.size(); ++k) {
        const double t = static_cast<double>(k) / (COARSE - 1);
        EXPECT_LT(norm(coarse[k] - (1 - t) * fine[10] - t * fine[77]), 1e-9) << k;
    }
}

TEST(BeautifierDots, AreTapsScribblesAndSlipsButNotSmallLetters) {
    const Path letter{{100, 100}, {103, 106}, {104, 101}, {106, 106}, {107, 100}};
    const Case<std::int32_t> cases[] = {
        {"tap of one sample", {{100, 100}}, FIGURE_POINT},
        {"tap", Path(9, {100, 100}), FIGURE_POINT},
        {"scribble", {{100, 100}, {103, 101}, {101, 102}, {102, 100}}, FIGURE_POINT},
        {"slip", sample(polyline({{100, 100}, {106, 103}}), 6), FIGURE_POINT},
        {"letter as large as that slip", sample(polyline(letter), 40), FIGURE_NONE},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(beautify(c.stroke).type, c.expected) << c.name;
    }
    const auto dot = std::get<DotFigure>(beautify(Path(9, {100, 90})).figure);
    EXPECT_TRUE(isNear(dot.centre, {100, 90}));
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

TEST(BeautifierDots, ArePressesHeldForAnyTime) {
    for (const int count : {10, 60, 240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 2.4)).type, FIGURE_POINT) << count;
    }
    for (const int count : {240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 3.9)).type, FIGURE_POINT) << count;
        EXPECT_EQ(beautify(heldPress(count, 4.1)).type, 0) << count;
    }
}

TEST(BeautifierDots, AreSureWithinTwoUnitsAndLeaveDashesToLinesWhereNoneAreWanted) {
    const Path dash = sample(polyline({{200, 200}, {210, 202}}), 8);
    const BeautifierOptions onlySure{.sensitivity = 0.0};
    EXPECT_EQ(beautify({{200, 200}}, onlySure).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash, onlySure).reason, Reason::NOT_SURE);
    BeautifierOptions noDots;
    noDots.figures.erase(FigureFamily::DOT);
    EXPECT_EQ(beautify(dash).type, FIGURE_POINT);
    EXPECT_EQ(beautify(dash, noDots).type, FIGURE_LINE);
    const Beautified tap = beautify({{200, 200}}, noDots);
    EXPECT_EQ(tap.reason, Reason::NOT_WANTED);
    EXPECT_EQ(tap.confidence, 1.0);
}

/// Whether the figure's parameters describe the path, in units.
struct Agrees {
    const Path& path;

    void corner(std::size_t i, const Point2D& p) const {
        EXPECT_LT(length(path.at(i) - p), 1e-6) << "point " << i;
    }
    void operator()(const std::monostate&) const { ADD_FAILURE() << "no figure"; }
    void operator()(const DotFigure& f) const { corner(63, f.centre); }
    void operator()(const LineFigure& f) const {
        corner(0, f.from);
        corner(20, f.to);
    }
    void operator()(const AngleFigure& f) const {
        corner(0, f.from);
        corner(20, f.vertex);
        corner(41, f.to);
        const Point2D u = f.from - f.vertex;
        const Point2D v = f.to - f.vertex;
        EXPECT_NEAR(std::cos(f.opening), dot(u, v) / (length(u) * length(v)), 1e-9);
    }
    void operator()(const CircleFigure& f) const {
        for (const Point2D& p : path) {
            EXPECT_NEAR(length(p - f.centre), f.radius, 1e-6);
        }
    }
    void operator()(const EllipseFigure& f) const {
        for (const Point2D& p : path) {
            const Point2D axis = polar(1.0, f.rotation);
            const double u = dot(axis, p - f.centre) / f.radii.x;
            const double v = cross(axis, p - f.centre) / f.radii.y;
            EXPECT_NEAR(std::hypot(u, v), 1.0, 1e-9);
        }
    }
    template <typename Polygon>
    void operator()(const Polygon& f) const {
        for (std::size_t i = 0; i < f.corners.size(); ++i) {
            corner(21 * i, f.corners[i]);
            corner(21 * i + 20, f.corners[(i + 1) % f.corners.size()]);
        }
    }
};

TEST(BeautifierFigure, AgreesWithThePath) {
    for (const Example& example : examples()) {
        SCOPED_TRACE(example.name);
        for (const bool ideal : {true, false}) {
            const Beautified answer = beautify(
                sample(example.curve, 70), {.horizontalVertical = ideal, .regularFigures = ideal});
            std::visit(Agrees{answer.path}, answer.figure);
        }
    }
    const Beautified dot = beautify({{400, 300}});
    std::visit(Agrees{dot.path}, dot.figure);
}

TEST(BeautifierFigure, MovesIntoTheAreaWithItsPath) {
    const Beautified dot = beautify({{0, 300}});
    EXPECT_NEAR(std::get<DotFigure>(dot.figure).centre.x, 2.5, 1e-9);
    std::visit(Agrees{dot.path}, dot.figure);
    const Path path = mapped(sample(ellipse(100, 100, 0.0), 80), [](const Point2D& p) {
        return p + Point2D{330, 0};
    });
    const Beautified circle = beautify(path);
    EXPECT_LE(circle.path.front().x, WIDTH + 1e-9);
    std::visit(Agrees{circle.path}, circle.figure);
    const auto beyond = std::get<CircleFigure>(beautify(path, {.insideArea = false}).figure);
    EXPECT_NEAR(beyond.centre.x, 730.0, 1.0);
    const Beautified tall = beautify(sample(ellipse(100, 320, 0.0), 80));
    EXPECT_NEAR(std::get<EllipseFigure>(tall.figure).centre.y, 300.0, 1.0)
        << "higher than the area";
}

template <typename Figure>
auto kindOf(Path corners) {
    corners.push_back(corners.front());
    return std::get<Figure>(beautify(sample(polyline(corners), 120)).figure).kind;
}

TEST(BeautifierFigure, NeedlesAreNoLongerThanTheirInk) {
    for (const double start : {0.0, 0.35, 0.7, 1.1, 1.5}) {
        const Curve bentNeedle = [&](double t) {
            const double phi = 2.2 * std::numbers::pi * t + start;
            const double x = std::cos(phi);
            return Point2D{400 + 150 * x, 300 + std::sin(phi) + 0.5 * x * x};
        };
        const auto answer = beautify(sample(bentNeedle, 60), {.sensitivity = 1.0});
        EXPECT_LT(std::get<EllipseFigure>(answer.figure).radii.x, 1.1 * 150) << start;
    }
}

LineFigure lineOf(const Path& path, const BeautifierOptions& options = {},
                  const std::vector<Path>& others = {}) {
    return std::get<LineFigure>(beautify(path, options, others).figure);
}

TEST(BeautifierLines, RunTheWayThePenRan) {
    for (const Point2D& to : Path{{500, 360}, {100, 240}, {290, 500}, {330, 100}, {303, 100}}) {
        for (const bool snaps : {true, false}) {
            const Path path = sample(polyline({{300, 300}, to}), 40);
            const auto line =
                lineOf(path, {}, snaps ? std::vector<Path>{{{302, 303}}} : std::vector<Path>{});
            EXPECT_TRUE(isNear(line.from, {300, 300}, 11.0));
            EXPECT_TRUE(isNear(line.to, to, 11.0));
        }
    }
}

TEST(BeautifierLines, DrawnThereAndBackAreAsLongAsTheirInk) {
    // The ends lie above each other: their chord is upright, the ink is not.
    const Curve thereAndBack = polyline({{100, 200}, {400, 200}, {100.03, 202}});
    const auto line = lineOf(sample(thereAndBack, 80));
    EXPECT_GT(length(line.to - line.from), 290.0);
}

TEST(BeautifierLines, AreNotMovedByStrokesOutOfReach) {
    const Path upright = sample(polyline({{300, 200}, {300, 400}}), 40);
    for (const Point2D& other : Path{{100, 100}, {312, 300}, {305, 520}}) {
        const auto line = lineOf(upright, {}, {{other}});
        EXPECT_NEAR(line.from.x, 300.0, 1e-9) << other.x << ", " << other.y;
        EXPECT_NEAR(line.to.x, 300.0, 1e-9) << other.x << ", " << other.y;
    }
    EXPECT_GT(lineOf(upright, {}, {{{305, 300}}}).from.x, 304.0);
}

TEST(BeautifierFigure, NamesRegularPolygons) {
    constexpr auto QUADRANGLE = kindOf<QuadrangleFigure>;
    EXPECT_EQ(QUADRANGLE({{300, 200}, {500, 203}, {498, 402}, {301, 400}}), QuadrangleKind::SQUARE);
    EXPECT_EQ(QUADRANGLE({{300, 200}, {500, 203}, {498, 302}, {301, 300}}),
              QuadrangleKind::RECTANGLE);
    EXPECT_EQ(QUADRANGLE({{300, 300}, {400, 240}, {500, 301}, {400, 361}}),
              QuadrangleKind::RHOMBUS);
    constexpr auto TRIANGLE = kindOf<TriangleFigure>;
    EXPECT_EQ(TRIANGLE({{300, 400}, {400, 226}, {501, 401}}), TriangleKind::EQUILATERAL);
    EXPECT_EQ(TRIANGLE({{300, 400}, {350, 180}, {401, 401}}), TriangleKind::ISOSCELES);
    EXPECT_EQ(TRIANGLE({{300, 200}, {302, 400}, {430, 401}}), TriangleKind::RIGHT);
    EXPECT_EQ(TRIANGLE({{300, 200}, {330, 400}, {620, 300}}), TriangleKind::GENERAL);
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
    const LineFigure steep = lineOf(sample(polyline({{300, 200}, {305, 400}}), 50), plain);
    EXPECT_NEAR(steep.to.x - steep.from.x, 5.0, 0.1);
    const auto drawn = std::get<QuadrangleFigure>(beautify(square, plain).figure);
    EXPECT_EQ(drawn.kind, QuadrangleKind::GENERAL);
    EXPECT_TRUE(std::any_of(drawn.corners.begin(), drawn.corners.end(), [](const Point2D& p) {
        return length(p - Point2D{497, 399}) < 2.0;
    }));
    const Path egg = sample(ellipse(100, 90, 0.4), 90);
    EXPECT_EQ(beautify(egg).figure.index(), 6U);
    const auto oval = std::get<EllipseFigure>(beautify(egg, plain).figure);
    EXPECT_TRUE(isNear(oval.radii, {100, 90}, 0.5));
    EXPECT_NEAR(oval.rotation, 0.4, 0.02);
}

TEST(BeautifierOptionsTest, SnapLinesToNearbyStrokesOnlyWhenAsked) {
    const Path line = sample(polyline({{300, 300}, {480, 390}}), 50);
    const std::vector<Path> others{{{303, 303}}, {}, {{QUIET_NAN, 1}}};
    const Beautified snapped = beautify(line, {}, others);
    EXPECT_TRUE(isNear(snapped.path.front(), {303, 303}, 7e-7));
    std::visit(Agrees{snapped.path}, snapped.figure);
    const Beautified alone = beautify(line, {.nearbyStrokes = false}, others);
    EXPECT_TRUE(isNear(alone.path.front(), {300, 300}, 0.7));
}

TEST(BeautifierOptionsTest, AreChecked) {
    EXPECT_NO_THROW(Beautifier({.minSize = 0.0, .sensitivity = 0.0}));
    EXPECT_NO_THROW(Beautifier({.minSize = 1e9, .sensitivity = 1.0}));
    const BeautifierOptions refused[] = {
        {.minSize = -1.0},
        {.minSize = QUIET_NAN},
        {.minSize = INF},
        {.sensitivity = -0.01},
        {.sensitivity = 1.01},
        {.sensitivity = QUIET_NAN},
        {.figures = {static_cast<FigureFamily>(17)}},
    };
    for (const BeautifierOptions& options : refused) {
        EXPECT_THROW(Beautifier{options}, std::invalid_argument);
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
    const Path square = fractions(sample(examples()[3].curve, 50));
    for (const double side : {0.0, -5.0, INF, QUIET_NAN}) {
        EXPECT_EQ(beautifier.beautify(square, side, HEIGHT).type, 0);
        EXPECT_EQ(beautifier.beautify(square, WIDTH, side).type, 0);
    }
    // No finite fractions of an area of no width to speak of, and no lines where
    // the routines that draw them end.
    EXPECT_EQ(beautifier.beautify({{{0.5, 0.5}}}, TINY, HEIGHT).reason, Reason::INVALID);
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

TEST(BeautifierInput, AMillionPointsAreOneStroke) {
    EXPECT_EQ(beautify(sample(examples()[6].curve, 1'000'000)).figure.index(), 7U);
}

}  // namespace

}  // namespace Scrivo::test
