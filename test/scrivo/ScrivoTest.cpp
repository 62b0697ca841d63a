#include "Cases.h"
#include "Matchers.h"
#include "Random.h"
#include "Recogniser.h"
#include "Scrivo/Ellipse.h"
#include "Scrivo/Polygon.h"
#include "Scrivo/ScrivoUtil.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <utility>

namespace Scrivo::test {

namespace {

/// One stroke of every kind with random jitter, in units of an area of 800 by 600.
std::vector<Stroke> strokesOfAllKinds(Random& random) {
    const Point2D at{random.in(100, 500), random.in(100, 300)};
    const double size = random.in(60, 200);
    const auto along = [&](const Stroke& corners, int steps) {
        return mapped(chain(corners, steps), [&](const Point2D& p) {
            const Point2D moved = at + size * p + random.jitter(0.01 * size);
            return Point2D{moved.x, moved.y, random.in(0, 1)};
        });
    };
    return {
        {},
        along({{0, 0}, {1, 0.3}}, 6),
        withForce(Stroke(12, at), 0.9),
        along({{0, 0}, {1, random.in(-1, 1)}}, 40),
        along({{-1, 0.02}, {0, 0}, {0.3, 1}}, 20),
        along({{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}, 20),
        along({{0, -0.9}, {-0.5, 0}, {0.5, 0}, {0, -0.9}}, 25),
        along(ellipse({0, 0}, 1, random.in(0.5, 1.1), 0, 70), 1),
        along({{0, 0}, {0.3, 1}, {0.6, 0}, {0.9, 1}, {1.2, 0}}, 15),
    };
}

/// In fractions of an area of 800 by 600.
std::vector<Stroke> inFractions(std::vector<Stroke> strokes) {
    for (Stroke& stroke : strokes) {
        stroke = fractions(stroke, 800, 600);
    }
    return strokes;
}

/// Expects what holds for the answer to any stroke.
void expectAnAnswer(const StrokeResult& answer, const Stroke& stroke) {
    const std::size_t n = answer.path.size();
    if (answer.type == FIGURE_NONE) {
        EXPECT_TRUE(hasBitsOf(answer.path, stroke));
    } else if (answer.type == FIGURE_POLYGON) {
        EXPECT_TRUE(n == stroke.size() || (n % 21 == 0 && n >= 63)) << n;
    } else {
        const std::map<std::int32_t, std::size_t> sizes{
            {FIGURE_POINT, 64}, {FIGURE_LINE, 21}, {FIGURE_ANGLE, 42}, {FIGURE_ELLIPSE, 85}};
        EXPECT_EQ(n, sizes.at(answer.type));
        EXPECT_TRUE(isNear(withForce(answer.path, 0), answer.path, 0)) << "forces are 0";
    }
}

TEST(Judge, ExtentDecidesWhatIsTried) {
    loadCases();
    const Stroke straight = chain({{0, 0}, {30, 0}}, 30);  // would be a dot, too
    const Stroke square = closedChain({{0, 0}, {0, 9}, {9, 9}, {9, 0}}, 20);
    const Stroke wave = chain({{0, 0}, {9, 90}, {18, 0}, {27, 90}}, 20);
    struct Case {
        const char* name;
        Stroke stroke;
        Point2D extent;
        int code;
    };
    const Case cases[] = {
        {"small: dot", straight, {below(9), below(9)}, 1},
        {"9 wide", straight, {9, 0}, 0},
        {"9 high", straight, {0, 9}, 0},
        {"75 is not long", straight, {75, 75}, 0},
        {"wider: line", straight, {above(75), 0}, 2},
        {"higher: line", straight, {0, above(75)}, 2},
        {"small and no dot", Stroke(9, {1, 1}), {0, 0}, 0},
        {"below 40: nothing", square, {below(40), below(40)}, 0},
        {"40 wide: a closed figure", square, {40, 0}, 6},
        {"40 high", square, {0, 40}, 6},
        {"long and not straight", square, {100, 100}, 6},
        {"no figure", wave, {100, 100}, 0},
        {"unknown width", straight, {UNKNOWN_EXTENT, 100}, 0},
        {"unknown height is just high", straight, {0, UNKNOWN_EXTENT}, 2},
        {"NaN is no limit", square, {QUIET_NAN, QUIET_NAN}, 6},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(judge(c.stroke, c.extent), c.code) << c.name;
    }
}

TEST(Init, SortsTheFilesByName) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "scrivo-init";
    const auto write = [&](const std::string& name) {
        const auto file = folder / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << "0,0,0,9,9,9,0,0\n";
        return file.string();
    };
    struct Case {
        const char* name;
        std::vector<std::string> paths;
        std::vector<int> ids;  // of the templates that are added, each with its reverse
    };
    const std::string rectangle = write("rectangle.template");
    const std::string triangle = write("triangle.template");
    const std::string isosceles = write("isosceles_triangle.template");
    const std::string ellipse = write("my-ellipse.template.bak");
    const std::string other = write("rectangle.template.d/ellipse.template");
    const Case cases[] = {
        {"none", {}, {}},
        {"any order", {ellipse, isosceles, triangle, rectangle}, {1, 1, 2, 2, 2, 2, 3, 3}},
        {"both triangles", {triangle, isosceles}, {2, 2, 2, 2}},
        {"the last of a kind", {rectangle, other, "missing/triangle.template"}, {1, 1}},
        {"missing", {rectangle, "missing/rectangle.template"}, {}},
        {"no name that is known", {write("circle.template"), write("RECTANGLE.template")}, {}},
    };
    const auto& templates = std::as_const(TemplatesGraphicsRecognizer::getInstance().allTemplates);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::size_t i = templates.size();
        EXPECT_TRUE(initScrivo(c.paths));
        ASSERT_EQ(templates.size() - i, c.ids.size());
        for (const int id : c.ids) {
            EXPECT_EQ(templates[i++].id, id);
        }
    }
    std::filesystem::remove_all(folder);
}

TEST(Pipeline, ShortStrokesComeBackAsDrawn) {
    for (std::size_t n = 0; n < 10; ++n) {
        const Stroke stroke(n, {0.25, 0.5, 0.9});
        const auto answer = optimizeAStroke(stroke, 800, 600, {});
        EXPECT_EQ(answer.type, 0) << n;
        EXPECT_TRUE(hasBitsOf(answer.path, stroke));
    }
    EXPECT_EQ(optimizeAStroke(Stroke(10, {0.25, 0.5, 0.9}), 800, 600, {}).type, 1);
}

TEST(Pipeline, OtherStrokesAttractByTheirCentroids) {
    const Stroke drawn = fractions(chain({{100, 300}, {400, 300}}, 30), 800, 600);
    const auto heightBeside = [&](const std::vector<Stroke>& others) {
        return 600 * optimizeAStroke(drawn, 800, 600, inFractions(others)).path[0].y;
    };
    EXPECT_NEAR(heightBeside({}), 300, 1e-9);
    EXPECT_NEAR(heightBeside({{{200, 100}, {210, 309}, {340, 509}}}), 306, 1e-9);
    EXPECT_NEAR(heightBeside({{}, {{250, 306}}, {}}), 306, 1e-9) << "empty strokes have no effect";
    EXPECT_NEAR(heightBeside({{{250, 311}}}), 300, 1e-9);
}

TEST(Pipeline, AnswersEveryStroke) {
    loadCases();
    Random random;
    std::array<int, 8> seen{};
    for (int i = 0; i < 100; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const std::vector<Stroke> strokes = inFractions(strokesOfAllKinds(random));
        std::vector<StrokeResult> answers;
        for (const Stroke& stroke : strokes) {
            answers.push_back(optimizeAStroke(stroke, 800, 600, strokes));
            expectAnAnswer(answers.back(), stroke);
            ++seen.at(static_cast<std::size_t>(answers.back().type));
        }
        // The same bits again, regardless of the calls in between.
        for (std::size_t k = strokes.size(); k-- > 0;) {
            const auto again = optimizeAStroke(strokes[k], 800, 600, strokes);
            EXPECT_EQ(again.type, answers[k].type);
            EXPECT_TRUE(hasBitsOf(again.path, answers[k].path));
        }
    }
    for (const int code : {0, 1, 2, 4, 6, 7}) {
        EXPECT_GE(seen.at(static_cast<std::size_t>(code)), 50) << "code " << code;
    }
}

TEST(Pipeline, SurvivesHostileNumbers) {
    loadCases();
    Random random;
    constexpr float ENDLESS = std::numeric_limits<float>::infinity();
    const float sizes[] = {0.0F, -800.0F, 1e-38F, 3e38F, ENDLESS, -ENDLESS, NAN, 600.0F};
    const double odd[] = {QUIET_NAN, INF, -INF, 1e300, -1e300, 1e-300, 0.0, -0.0};
    testing::internal::CaptureStdout();
    for (const Stroke& stroke : strokesOfAllKinds(random)) {
        for (const float width : sizes) {
            for (const float height : sizes) {
                expectAnAnswer(optimizeAStroke(stroke, width, height, {{}, stroke}), stroke);
            }
        }
        for (const double value : odd) {
            Stroke holed = stroke;
            for (int i = random.below(4); i >= 0 && !holed.empty(); --i) {
                Point2D& p = random.oneOf(holed);
                (random.below(2) == 0 ? p.x : p.y) = value;
                p.force = value;
            }
            expectAnAnswer(optimizeAStroke(holed, 1, 1, {stroke, holed, {{value, value}}}), holed);
            const Stroke all(20, {value, value, value});
            expectAnAnswer(optimizeAStroke(all, 1, 1, {all}), all);
        }
    }
    testing::internal::GetCapturedStdout();
}

TEST(Pipeline, AnswersInVeryFlatAreas) {
    // In an area a thousandth of a unit high any scribble is a level line.
    Stroke scribble;
    for (int i = 0; i <= 40; ++i) {
        scribble.push_back({0.1 + 0.02 * i, 0.5 + 0.4 * std::sin(i), 0.0});
    }
    const auto line = optimizeAStroke(scribble, 800, 1e-3F, {});
    ASSERT_EQ(line.type, FIGURE_LINE);
    for (const Point2D& p : line.path) {
        EXPECT_EQ(p.y, line.path.front().y);
        EXPECT_NEAR(p.y, 0.5, 0.4);
    }
    // A dot sticks out of an area 4 units high above and below, and stays.
    const auto heightOf = [](double x) {
        const auto dot = optimizeAStroke(Stroke(30, {x, 0.5}), 800, 4, {});
        EXPECT_EQ(dot.type, FIGURE_POINT);
        EXPECT_TRUE(isNear(dot.path.back(), {x, 0.5}));
        return dot.path[5].y - dot.path[15].y;
    };
    EXPECT_NEAR(heightOf(0.5), 5.0 / 4, 1e-9);
    EXPECT_NEAR(heightOf(0.0), 5.0 / 4, 1e-9) << "not even from the left edge";
}

TEST(Pipeline, UnanswerableStrokeComesBackAsDrawn) {
    loadCases();
    // Closed, and too far out to be resampled: the recogniser throws.
    const Stroke stroke =
        mapped(closedChain({{0, 0}, {0, 100}, {100, 100}, {100, 0}}, 20), [](const Point2D& p) {
            return p + Point2D{1e17, 1e17};
        });
    EXPECT_THROW(judge(stroke, {100, 100}), std::domain_error);
    const auto answer = optimizeAStroke(stroke, 1, 1, {});
    EXPECT_EQ(answer.type, 0);
    EXPECT_TRUE(hasBitsOf(answer.path, stroke));
}

TEST(Pipeline, AnswersAMillionPoints) {
    loadCases();
    const int steps = rounds(250000);
    const Stroke square{{0.2, 0.2}, {0.2, 0.7}, {0.7, 0.7}, {0.7, 0.2}};
    EXPECT_EQ(optimizeAStroke(chain({{0.1, 0.1}, {0.8, 0.3}}, 4 * steps), 1000, 1000, {}).type, 2);
    // Spread over so many points, no corner is found: a square stays as drawn.
    for (const Stroke& stroke :
         {closedChain(square, steps), ellipse({0.5, 0.5}, 0.3, 0.2, 0, 4 * steps),
          chain(Stroke(8, {0.5, 0.5}), steps / 2),
          chain({{0, 0}, {0.1, 0.9}, {0.2, 0}, {0.3, 0.9}, {0.4, 0}}, steps)}) {
        expectAnAnswer(optimizeAStroke(stroke, 1000, 1000, {stroke}), stroke);
    }
}

}  // namespace

}  // namespace Scrivo::test
