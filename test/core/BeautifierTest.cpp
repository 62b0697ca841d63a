#include "Beautifier/Beautifier.h"
#include "Beautifier/Polyline.h"
#include "BeautifierInk.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <stdexcept>
#include <thread>

namespace {

using namespace beautifier_ink;
using Scrivo::Beautified;
using Scrivo::Beautifier;
using Scrivo::BeautifierOptions;
using Scrivo::FigureFamily;
using Scrivo::Reason;

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 600.0;

Path fractions(Path path) {
    for (Point2D& p : path) {
        p = {p.x / WIDTH, p.y / HEIGHT, p.force};
    }
    return path;
}

/// Answer for a stroke in units, its path in units too.
Beautified beautify(const Path& path, const BeautifierOptions& options = {},
                    const std::vector<Path>& others = {}) {
    std::vector<Path> around;
    for (const Path& other : others) {
        around.push_back(fractions(other));
    }
    Beautified answer = Beautifier(options).beautify(fractions(path), WIDTH, HEIGHT, around);
    for (Point2D& p : answer.path) {
        p = {p.x * WIDTH, p.y * HEIGHT, p.force};
    }
    return answer;
}

void expectSame(const Path& a, const Path& b, double tolerance) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_NEAR(a[i].x, b[i].x, tolerance) << "x of point " << i;
        EXPECT_NEAR(a[i].y, b[i].y, tolerance) << "y of point " << i;
    }
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
    for (const int count : {15, 30, 60, 120, 240, 1000}) {
        expectFigure(sample(GetParam().curve, count), std::to_string(count) + " points");
        expectFigure(sample(eased(GetParam().curve), count),
                     std::to_string(count) + " points, slow at the ends");
    }
}

TEST_P(EveryFigure, IsTheSameInEitherDirectionAndAtAnySize) {
    const Path path = sample(GetParam().curve, 90);
    expectFigure(reversed(path), "backwards");
    for (const double size : {60.0, 100.0, 400.0, 1500.0}) {
        expectFigure(scaled(path, size / 200.0), std::to_string(size) + " units");
    }
}

TEST_P(EveryFigure, IsNotDisturbedByARestingPenOrRepeatedPoints) {
    Path path = sample(GetParam().curve, 60);
    Path repeated;
    for (const Point2D& p : path) {
        repeated.insert(repeated.end(), 5, p);
    }
    path.insert(path.begin(), 200, path.front());
    path.insert(path.end(), 200, path.back());
    expectFigure(path, "resting");
    expectSame(beautify(repeated).path, beautify(sample(GetParam().curve, 60)).path, 1e-6);
}

TEST_P(EveryFigure, NeverTurnsBackIntoInkAsSensitivityRises) {
    for (const double tremor : {0.0, 2.0, 5.0, 8.0, 14.0}) {
        const Path path = sample(shaky(GetParam().curve, tremor), 80);
        std::int32_t before = 0;
        for (int step = 0; step <= 20; ++step) {
            BeautifierOptions options;
            options.sensitivity = step / 20.0;
            const std::int32_t type = beautify(path, options).type;
            EXPECT_TRUE(before == 0 || type == before) << tremor << " at " << step;
            before = type;
        }
    }
}

TEST_P(EveryFigure, AnswersTheSameBitsFromEveryThread) {
    const Path path = fractions(sample(GetParam().curve, 80));
    const Beautifier shared;
    const Beautified expected = shared.beautify(path, WIDTH, HEIGHT);
    std::array<Beautified, 4> answers;
    std::vector<std::thread> threads;
    for (Beautified& answer : answers) {
        threads.emplace_back([&] { answer = shared.beautify(path, WIDTH, HEIGHT); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const Beautified& answer : answers) {
        expectSame(answer.path, expected.path, 0.0);
        EXPECT_EQ(answer.confidence, expected.confidence);
    }
}

TEST_P(EveryFigure, StaysInkWhenUnwantedOrSmall) {
    const Path path = sample(GetParam().curve, 80);
    BeautifierOptions unwanted;
    unwanted.figures = {FigureFamily::DOT};
    EXPECT_EQ(beautify(path, unwanted).reason, Reason::NOT_WANTED);
    BeautifierOptions large;
    large.minSize = 230.0;
    const Beautified answer = beautify(path, large);
    EXPECT_EQ(answer.reason, Reason::TOO_SMALL);
    expectSame(answer.path, path, 1e-9);
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
            expectSame(answer.path, path, 0.0);
        }
    }
}

TEST(BeautifierInk, PolygonsOfFewSamplesKeepTheirCorners) {
    const Path square{{300, 200}, {500, 203}, {498, 402}, {301, 400}, {300, 202}};
    const Beautified answer = beautify(square);
    ASSERT_EQ(answer.figure.index(), 5U);
    EXPECT_EQ(std::get<Scrivo::QuadrangleFigure>(answer.figure).kind,
              Scrivo::QuadrangleKind::SQUARE);
    EXPECT_EQ(beautify({{100, 100}, {160, 300}, {300, 100}}).type, Scrivo::FIGURE_ANGLE);
}

TEST(BeautifierInk, CurvesOfFewSamplesStayRound) {
    for (const int count : {7, 9, 12, 20}) {
        const auto answer = beautify(sample(ellipse(100, 100, 0.0), count));
        ASSERT_EQ(answer.figure.index(), 6U) << count << " points";
        EXPECT_NEAR(std::get<Scrivo::CircleFigure>(answer.figure).radius, 100.0, 2.0);
    }
}

TEST(BeautifierInk, TailsBeyondTheClosureAreCut) {
    // Both ends run on beyond the corner where they cross.
    const Path path =
        sample(polyline({{270, 205}, {500, 200}, {505, 340}, {300, 335}, {302, 170}}), 100);
    const Beautified answer = beautify(path);
    ASSERT_EQ(answer.figure.index(), 5U);
    for (const Point2D& p : answer.path) {
        EXPECT_GT(p.x, 293.0);
        EXPECT_GT(p.y, 193.0);
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
    const Curve square = polyline({{300, 200},
                                   {500, 200},
                                   {500, 400},
                                   {300, 400},
                                   {303, 204},
                                   {497, 196},
                                   {504, 396},
                                   {304, 405},
                                   {300, 202}});
    EXPECT_EQ(beautify(sample(shaky(square, 1.0), 200)).figure.index(), 5U);
    const Curve circle = ellipse(100, 95, 0.0);
    const Curve twice = [=](double t) { return circle(2.0 * t); };
    EXPECT_EQ(beautify(sample(shaky(twice, 3.0), 200)).figure.index(), 6U);
}

TEST(BeautifierInk, QuadranglesMayBendInwardsButNotCrossThemselves) {
    const Curve bowTie = polyline({{200, 200}, {400, 350}, {400, 200}, {200, 350}, {200, 203}});
    EXPECT_EQ(beautify(sample(bowTie, 120)).type, 0);
    const Path dart{{300, 280}, {100, 200}, {170, 280}, {100, 360}};
    const Curve outline = polyline({dart[0], dart[1], dart[2], dart[3], dart[0]});
    const Beautified answer = beautify(sample(outline, 120));
    ASSERT_EQ(answer.figure.index(), 5U);
    for (const Point2D& corner : std::get<Scrivo::QuadrangleFigure>(answer.figure).corners) {
        EXPECT_TRUE(std::any_of(
            dart.begin(), dart.end(),
            [&](const Point2D& p) { return std::hypot(p.x - corner.x, p.y - corner.y) < 4.0; }))
            << corner.x << ", " << corner.y;
    }
}

TEST(BeautifierPolygons, AreFoundFromAStartOnAnEdge) {
    using namespace Scrivo::beautifier;
    const Curve square =
        polyline({{0.2, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}, {-0.5, -0.5}, {0.2, -0.5}});
    const Path path = sample(square, COARSE);
    Coarse points;
    std::transform(path.begin(), path.end(), points.begin(), [](const Point2D& p) {
        return Vec{p.x, p.y};
    });
    const PolylineFits fits = fitPolygons(Scatter(points));
    EXPECT_LT(fits[3].rms, 0.01);
    EXPECT_GT(fits[2].rms, 0.05);
}

TEST(BeautifierDots, AreTapsScribblesAndSlipsButNotSmallLetters) {
    EXPECT_EQ(beautify({{100, 100}}).type, Scrivo::FIGURE_POINT);
    EXPECT_EQ(beautify(Path(9, {100, 100})).type, Scrivo::FIGURE_POINT);
    EXPECT_EQ(beautify({{100, 100}, {103, 101}, {101, 102}, {102, 100}}).type,
              Scrivo::FIGURE_POINT);
    EXPECT_EQ(beautify(sample(polyline({{100, 100}, {106, 103}}), 6)).type, Scrivo::FIGURE_POINT);
    // A letter as large as that slip.
    const Path letter =
        sample(polyline({{100, 100}, {103, 106}, {104, 101}, {106, 106}, {107, 100}}), 40);
    EXPECT_EQ(beautify(letter).type, 0);
    const auto dot = std::get<Scrivo::DotFigure>(beautify(Path(9, {100, 90})).figure);
    EXPECT_NEAR(dot.centre.x, 100.0, 1e-9);
    EXPECT_NEAR(dot.centre.y, 90.0, 1e-9);
}

/// A press of `count` samples whose tremor stays within `extent` units.
Path heldPress(int count, double extent) {
    Path path;
    for (int i = 0; i < count; ++i) {
        path.push_back({200.0 + 0.5 * extent * std::sin(2.3 * i + 0.01 * i * i),
                        200.0 + 0.5 * extent * std::sin(1.7 * i), 0.0});
    }
    return path;
}

TEST(BeautifierDots, ArePressesHeldForAnyTime) {
    for (const int count : {10, 60, 240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 2.4)).type, Scrivo::FIGURE_POINT) << count;
    }
    for (const int count : {240, 1000}) {
        EXPECT_EQ(beautify(heldPress(count, 3.9)).type, Scrivo::FIGURE_POINT) << count;
        EXPECT_EQ(beautify(heldPress(count, 4.1)).type, 0) << count;
    }
}

TEST(BeautifierDots, AreSureWithinTwoUnitsAndLeaveDashesToLinesWhereNoneAreWanted) {
    const Path dash = sample(polyline({{200, 200}, {210, 202}}), 8);
    BeautifierOptions onlySure;
    onlySure.sensitivity = 0.0;
    EXPECT_EQ(beautify({{200, 200}}, onlySure).type, Scrivo::FIGURE_POINT);
    EXPECT_EQ(beautify(dash, onlySure).reason, Reason::NOT_SURE);
    BeautifierOptions noDots;
    noDots.figures.erase(FigureFamily::DOT);
    EXPECT_EQ(beautify(dash).type, Scrivo::FIGURE_POINT);
    EXPECT_EQ(beautify(dash, noDots).type, Scrivo::FIGURE_LINE);
    const Beautified tap = beautify({{200, 200}}, noDots);
    EXPECT_EQ(tap.reason, Reason::NOT_WANTED);
    EXPECT_EQ(tap.confidence, 1.0);
}

double distance(const Point2D& a, const Point2D& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// Whether the figure's parameters describe the path, in units.
struct Agrees {
    const Path& path;

    void corner(std::size_t i, const Point2D& p) const {
        EXPECT_LT(distance(path.at(i), p), 1e-6) << "point " << i;
    }
    void operator()(const std::monostate&) const { ADD_FAILURE() << "no figure"; }
    void operator()(const Scrivo::DotFigure& f) const { corner(63, f.centre); }
    void operator()(const Scrivo::LineFigure& f) const {
        corner(0, f.from);
        corner(20, f.to);
    }
    void operator()(const Scrivo::AngleFigure& f) const {
        corner(0, f.from);
        corner(20, f.vertex);
        corner(41, f.to);
        const double cosine = ((f.from.x - f.vertex.x) * (f.to.x - f.vertex.x) +
                               (f.from.y - f.vertex.y) * (f.to.y - f.vertex.y)) /
                              (distance(f.from, f.vertex) * distance(f.to, f.vertex));
        EXPECT_NEAR(std::cos(f.opening), cosine, 1e-9);
    }
    void operator()(const Scrivo::CircleFigure& f) const {
        for (const Point2D& p : path) {
            EXPECT_NEAR(distance(p, f.centre), f.radius, 1e-6);
        }
    }
    void operator()(const Scrivo::EllipseFigure& f) const {
        for (const Point2D& p : path) {
            const double dx = p.x - f.centre.x;
            const double dy = p.y - f.centre.y;
            const double u = dx * std::cos(f.rotation) + dy * std::sin(f.rotation);
            const double v = dy * std::cos(f.rotation) - dx * std::sin(f.rotation);
            EXPECT_NEAR(std::hypot(u / f.radii.x, v / f.radii.y), 1.0, 1e-9);
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
            BeautifierOptions options;
            options.regularFigures = options.horizontalVertical = ideal;
            const Beautified answer = beautify(sample(example.curve, 70), options);
            std::visit(Agrees{answer.path}, answer.figure);
        }
    }
    const Beautified dot = beautify({{400, 300}});
    std::visit(Agrees{dot.path}, dot.figure);
}

TEST(BeautifierFigure, MovesIntoTheAreaWithItsPath) {
    const Beautified dot = beautify({{0, 300}});
    EXPECT_NEAR(std::get<Scrivo::DotFigure>(dot.figure).centre.x, 2.5, 1e-9);
    std::visit(Agrees{dot.path}, dot.figure);
    Path path = sample(ellipse(100, 100, 0.0), 80);
    for (Point2D& p : path) {
        p.x += 330.0;
    }
    const Beautified circle = beautify(path);
    EXPECT_LE(circle.path.front().x, WIDTH + 1e-9);
    std::visit(Agrees{circle.path}, circle.figure);
    BeautifierOptions anywhere;
    anywhere.insideArea = false;
    const auto beyond = std::get<Scrivo::CircleFigure>(beautify(path, anywhere).figure);
    EXPECT_NEAR(beyond.centre.x, 730.0, 1.0);
}

Scrivo::LineFigure lineOf(const Path& path, const BeautifierOptions& options = {},
                          const std::vector<Path>& others = {}) {
    return std::get<Scrivo::LineFigure>(beautify(path, options, others).figure);
}

TEST(BeautifierLines, RunTheWayThePenRan) {
    for (const Point2D& to : Path{{500, 360}, {100, 240}, {290, 500}, {330, 100}, {303, 100}}) {
        for (const bool snaps : {true, false}) {
            const Path path = sample(polyline({{300, 300}, to}), 40);
            const auto line =
                lineOf(path, {}, snaps ? std::vector<Path>{{{302, 303}}} : std::vector<Path>{});
            EXPECT_LT(distance(line.from, {300, 300}), 11.0) << to.x << ", " << to.y;
            EXPECT_LT(distance(line.to, to), 11.0) << to.x << ", " << to.y;
        }
    }
}

TEST(BeautifierLines, DrawnThereAndBackAreAsLongAsTheirInk) {
    // The ends lie above each other: their chord is upright, the ink is not.
    const Curve thereAndBack = polyline({{100, 200}, {400, 200}, {100.03, 202}});
    const auto line = lineOf(sample(thereAndBack, 80));
    EXPECT_GT(distance(line.from, line.to), 290.0);
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
    const auto kindOfQuadrangle = [](Path corners) {
        corners.push_back(corners.front());
        const Beautified answer = beautify(sample(polyline(std::move(corners)), 120));
        return std::get<Scrivo::QuadrangleFigure>(answer.figure).kind;
    };
    using Scrivo::QuadrangleKind;
    EXPECT_EQ(kindOfQuadrangle({{300, 200}, {500, 203}, {498, 402}, {301, 400}}),
              QuadrangleKind::SQUARE);
    EXPECT_EQ(kindOfQuadrangle({{300, 200}, {500, 203}, {498, 302}, {301, 300}}),
              QuadrangleKind::RECTANGLE);
    EXPECT_EQ(kindOfQuadrangle({{300, 300}, {400, 240}, {500, 301}, {400, 361}}),
              QuadrangleKind::RHOMBUS);
    const auto kindOfTriangle = [](Path corners) {
        corners.push_back(corners.front());
        const Beautified answer = beautify(sample(polyline(std::move(corners)), 120));
        return std::get<Scrivo::TriangleFigure>(answer.figure).kind;
    };
    using Scrivo::TriangleKind;
    EXPECT_EQ(kindOfTriangle({{300, 400}, {400, 226}, {501, 401}}), TriangleKind::EQUILATERAL);
    EXPECT_EQ(kindOfTriangle({{300, 400}, {350, 180}, {401, 401}}), TriangleKind::ISOSCELES);
    EXPECT_EQ(kindOfTriangle({{300, 200}, {302, 400}, {430, 401}}), TriangleKind::RIGHT);
    EXPECT_EQ(kindOfTriangle({{300, 200}, {330, 400}, {620, 300}}), TriangleKind::GENERAL);
}

TEST(BeautifierOptionsTest, SwitchTheIdealOff) {
    const Path flat = sample(polyline({{300, 300}, {500, 308}}), 50);
    const Path square =
        sample(polyline({{300, 200}, {500, 206}, {497, 399}, {301, 401}, {300, 201}}), 120);
    BeautifierOptions plain;
    plain.horizontalVertical = plain.regularFigures = false;
    EXPECT_DOUBLE_EQ(beautify(flat).path.front().y, beautify(flat).path.back().y);
    EXPECT_NEAR(beautify(flat, plain).path.back().y - beautify(flat, plain).path.front().y, 8.0,
                0.1);
    const auto steep = lineOf(sample(polyline({{300, 200}, {305, 400}}), 50), plain);
    EXPECT_NEAR(steep.to.x - steep.from.x, 5.0, 0.1);
    const auto drawn = std::get<Scrivo::QuadrangleFigure>(beautify(square, plain).figure);
    EXPECT_EQ(drawn.kind, Scrivo::QuadrangleKind::GENERAL);
    const auto isNear = [](const Point2D& a) {
        return [a](const Point2D& b) { return distance(a, b) < 2.0; };
    };
    EXPECT_TRUE(std::any_of(drawn.corners.begin(), drawn.corners.end(), isNear({497, 399})));
    const Path egg = sample(ellipse(100, 90, 0.4), 90);
    EXPECT_EQ(beautify(egg).figure.index(), 6U);
    const auto oval = std::get<Scrivo::EllipseFigure>(beautify(egg, plain).figure);
    EXPECT_NEAR(oval.radii.x, 100.0, 0.5);
    EXPECT_NEAR(oval.radii.y, 90.0, 0.5);
    EXPECT_NEAR(oval.rotation, 0.4, 0.02);
}

TEST(BeautifierOptionsTest, SnapLinesToNearbyStrokesOnlyWhenAsked) {
    const Path line = sample(polyline({{300, 300}, {480, 390}}), 50);
    const std::vector<Path> others{{{303, 303}}, {}, {{std::nan(""), 1}}};
    const Beautified snapped = beautify(line, {}, others);
    EXPECT_LT(distance(snapped.path.front(), {303, 303}), 1e-6);
    std::visit(Agrees{snapped.path}, snapped.figure);
    BeautifierOptions alone;
    alone.nearbyStrokes = false;
    EXPECT_LT(distance(beautify(line, alone, others).path.front(), {300, 300}), 1.0);
}

TEST(BeautifierOptionsTest, AreChecked) {
    const auto with = [](double minSize, double sensitivity) {
        BeautifierOptions options;
        options.minSize = minSize;
        options.sensitivity = sensitivity;
        return options;
    };
    constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NO_THROW(Beautifier{with(0.0, 0.0)});
    EXPECT_NO_THROW(Beautifier{with(1e9, 1.0)});
    for (const auto& bad : {with(-1, 0.5), with(NOT_A_NUMBER, 0.5), with(0, -0.01), with(0, 1.01),
                            with(0, NOT_A_NUMBER)}) {
        EXPECT_THROW(Beautifier{bad}, std::invalid_argument);
    }
    BeautifierOptions unknown;
    unknown.figures = {static_cast<FigureFamily>(17)};
    EXPECT_THROW(Beautifier{unknown}, std::invalid_argument);
}

TEST(BeautifierInput, DegenerateStrokesHaveAnAnswer) {
    constexpr double INF = std::numeric_limits<double>::infinity();
    constexpr double HUGE_VALUE = std::numeric_limits<double>::max();
    constexpr double TINY = std::numeric_limits<double>::denorm_min();
    const Beautifier beautifier;
    const std::vector<Path> invalid{{},
                                    {{std::nan(""), 0.5}, {0.1, 0.2}},
                                    {{0.5, 0.5}, {0.1, std::nan("")}},
                                    {{INF, 0.5}},
                                    {{-HUGE_VALUE, 0}, {HUGE_VALUE, 1}}};
    for (const Path& path : invalid) {
        const Beautified answer = beautifier.beautify(path, WIDTH, HEIGHT);
        EXPECT_EQ(answer.reason, Reason::INVALID);
        EXPECT_EQ(answer.path.size(), path.size());
    }
    const Path square = fractions(sample(examples()[3].curve, 50));
    for (const double side : {0.0, -5.0, INF, static_cast<double>(NAN)}) {
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
    const Beautified answer = beautify(sample(examples()[6].curve, 1'000'000));
    EXPECT_EQ(answer.figure.index(), 7U);
    EXPECT_EQ(answer.path.size(), 85U);
}

}  // namespace
