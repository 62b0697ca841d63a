#include "Beautifier/Beautifier.h"
#include "Ink.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <scrivo.h>
#include <string>

namespace Scrivo::test {

namespace {

using CPoints = std::vector<scrivo_point>;
using OwnedAnswer = std::unique_ptr<scrivo_answer, decltype(&scrivo_answer_free)>;
using OwnedBeautifier = std::unique_ptr<scrivo_beautifier, decltype(&scrivo_beautifier_free)>;

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 600.0;

CPoints toC(const Stroke& stroke) {
    CPoints points;
    for (const Point2D& p : stroke) {
        points.push_back({p.x, p.y, p.force});
    }
    return points;
}

scrivo_stroke viewOf(const CPoints& points) {
    return {points.data(), points.size()};
}

Stroke drawn(const ink::Curve& curve) {
    return fractions(ink::sample(curve, 80), WIDTH, HEIGHT);
}

scrivo_result read(const scrivo_answer* answer) {
    scrivo_result result{};
    result.size = sizeof result;
    EXPECT_EQ(scrivo_answer_read(answer, &result), SCRIVO_OK);
    return result;
}

OwnedBeautifier make(const scrivo_options* options) {
    scrivo_beautifier* made = nullptr;
    EXPECT_EQ(scrivo_beautifier_create(options, &made), SCRIVO_OK) << scrivo_error();
    return {made, scrivo_beautifier_free};
}

OwnedAnswer beautify(const OwnedBeautifier& beautifier, const CPoints& stroke,
                     const std::vector<scrivo_stroke>& others = {}) {
    scrivo_answer* answer = nullptr;
    EXPECT_EQ(scrivo_beautify(beautifier.get(), viewOf(stroke), WIDTH, HEIGHT, others.data(),
                              others.size(), &answer),
              SCRIVO_OK)
        << scrivo_error();
    return {answer, scrivo_answer_free};
}

void expectSame(const scrivo_result& result, const Beautified& expected) {
    ASSERT_EQ(result.path_count, expected.path.size());
    for (std::size_t i = 0; i < expected.path.size(); ++i) {
        EXPECT_EQ(result.path[i].x, expected.path[i].x);
        EXPECT_EQ(result.path[i].y, expected.path[i].y);
        EXPECT_EQ(result.path[i].force, expected.path[i].force);
    }
    EXPECT_EQ(result.type, expected.type);
    EXPECT_EQ(result.reason, static_cast<std::int32_t>(expected.reason));
    EXPECT_EQ(result.confidence, expected.confidence);
    ASSERT_EQ(result.alternative_count, expected.alternatives.size());
    for (std::size_t i = 0; i < expected.alternatives.size(); ++i) {
        EXPECT_EQ(result.alternatives[i].probability, expected.alternatives[i].probability);
    }
}

TEST(CInterface, AnswersAsTheBeautifierDoes) {
    const ink::Curve line = ink::polyline({{100, 100}, {404, 308}});
    const ink::Curve angle = ink::polyline({{100, 100}, {400, 120}, {380, 400}});
    const ink::Curve square = ink::polyline({{90, 90}, {290, 95}, {288, 290}, {92, 288}, {91, 91}});
    const ink::Curve triangle = ink::polyline({{90, 90}, {390, 95}, {140, 380}, {91, 91}});
    const Stroke neighbour = drawn(ink::ellipse(40, 40, 0));
    const CPoints other = toC(neighbour);
    const OwnedBeautifier beautifier = make(nullptr);
    struct Row {
        ink::Curve curve;
        std::int32_t family, kind;
        std::size_t points;
    };
    const Row rows[] = {
        {line, SCRIVO_LINE, 0, 2},
        {angle, SCRIVO_ANGLE, 0, 3},
        {triangle, SCRIVO_TRIANGLE, 0, 3},
        {square, SCRIVO_QUADRANGLE, static_cast<std::int32_t>(QuadrangleKind::SQUARE), 4},
        {ink::ellipse(100, 101, 0), SCRIVO_ELLIPSE, 1, 1},
        {ink::ellipse(150, 60, 0.5), SCRIVO_ELLIPSE, 0, 1},
        {ink::polyline({{100, 100}, {101, 100}}), SCRIVO_DOT, 0, 1},
    };
    for (const auto& [curve, family, kind, points] : rows) {
        const Stroke stroke = drawn(curve);
        const auto answer = beautify(beautifier, toC(stroke), {viewOf(other)});
        const scrivo_result result = read(answer.get());
        expectSame(result, Beautifier().beautify(stroke, WIDTH, HEIGHT, {{neighbour}}));
        EXPECT_EQ(result.family, family);
        EXPECT_EQ(result.kind, kind);
        EXPECT_EQ(result.point_count, points);
        EXPECT_EQ(result.radius_y > 0.0, family == SCRIVO_ELLIPSE);
        EXPECT_EQ(result.opening > 0.0, family == SCRIVO_ANGLE);
    }
    const scrivo_result none = read(beautify(beautifier, {}).get());
    EXPECT_EQ(none.reason, SCRIVO_INVALID);
    EXPECT_EQ(none.family, SCRIVO_NO_FAMILY);
}

TEST(CInterface, TakesOptionsOfOlderCallersOnly) {
    scrivo_options options;
    scrivo_options_init(&options, sizeof options);
    options.families = 1U << SCRIVO_LINE;
    const CPoints circle = toC(drawn(ink::ellipse(100, 100, 0)));
    EXPECT_EQ(read(beautify(make(&options), circle).get()).reason, SCRIVO_NOT_WANTED);
    options.size = offsetof(scrivo_options, families);
    EXPECT_EQ(read(beautify(make(&options), circle).get()).family, SCRIVO_ELLIPSE);

    scrivo_beautifier* made = nullptr;
    for (const std::size_t size : {std::size_t{0}, sizeof options + 1}) {
        options.size = size;
        EXPECT_EQ(scrivo_beautifier_create(&options, &made), SCRIVO_INVALID_ARGUMENT);
    }
    std::memset(&options, 0x55, sizeof options);
    scrivo_options_init(&options, offsetof(scrivo_options, min_size));
    EXPECT_EQ(options.anchors, 7U);
    EXPECT_NE(options.min_size, 0.0);  // not written
    std::memset(&options, 0x55, sizeof options);
    scrivo_options_init(&options, sizeof options.size - 1);
    EXPECT_NE(options.size, sizeof options.size - 1);  // no room for it
    scrivo_options_init(nullptr, sizeof options);

    scrivo_result result;
    std::memset(&result, 0x55, sizeof result);
    result.size = offsetof(scrivo_result, reason);
    const auto answer = beautify(make(nullptr), circle);
    EXPECT_EQ(scrivo_answer_read(answer.get(), &result), SCRIVO_OK);
    EXPECT_EQ(result.path_count, 85U);
    EXPECT_EQ(result.reason, 0x55555555);
    result.size = sizeof result.size;
    EXPECT_EQ(scrivo_answer_read(answer.get(), &result), SCRIVO_OK);
    for (const std::size_t size : {sizeof result.size - 1, sizeof result + 1}) {
        result.size = size;
        EXPECT_EQ(scrivo_answer_read(answer.get(), &result), SCRIVO_INVALID_ARGUMENT);
    }
}

TEST(CInterface, NamesWrongArguments) {
    scrivo_options options;
    scrivo_beautifier* made = nullptr;
    const auto expectRefused = [&](const char* message) {
        EXPECT_EQ(scrivo_beautifier_create(&options, &made), SCRIVO_INVALID_ARGUMENT);
        EXPECT_NE(std::string(scrivo_error()).find(message), std::string::npos) << scrivo_error();
        EXPECT_EQ(made, nullptr);
        scrivo_options_init(&options, sizeof options);
    };
    scrivo_options_init(&options, sizeof options);
    options.sensitivity = std::numeric_limits<double>::quiet_NaN();
    expectRefused("sensitivity");
    options.families = 1U << 6;
    expectRefused("families");
    options.anchors = 8;
    expectRefused("anchors");

    scrivo_answer* answer = nullptr;
    const OwnedBeautifier beautifier = make(nullptr);
    const auto call = [&](const scrivo_beautifier* by, scrivo_stroke stroke, std::size_t others) {
        return scrivo_beautify(by, stroke, WIDTH, HEIGHT, nullptr, others, &answer);
    };
    EXPECT_EQ(call(nullptr, {}, 0), SCRIVO_INVALID_ARGUMENT);
    EXPECT_EQ(call(beautifier.get(), {nullptr, 3}, 0), SCRIVO_INVALID_ARGUMENT);
    EXPECT_EQ(call(beautifier.get(), {}, 1), SCRIVO_INVALID_ARGUMENT);
    const scrivo_point point{};
    EXPECT_EQ(call(beautifier.get(), {&point, std::numeric_limits<std::size_t>::max()}, 0),
              SCRIVO_OUT_OF_MEMORY);
    EXPECT_EQ(answer, nullptr);
}

TEST(CInterface, LoadsTemplatesOrSaysWhichFileHasNone) {
    const CPoints circle = toC(drawn(ink::ellipse(100, 100, 0)));
    const auto typeOfCircle = [&] {
        scrivo_answer* answer = nullptr;
        EXPECT_EQ(scrivo_optimize(viewOf(circle), WIDTH, HEIGHT, nullptr, 0, &answer), SCRIVO_OK);
        return read(OwnedAnswer(answer, scrivo_answer_free).get()).type;
    };
    const std::string folder = SCRIVO_TEMPLATES;
    const std::string file = folder + "ellipse.template";
    const std::string missing = folder + "missing/rectangle.template";
    const std::string unnamed = folder + "ellipse.txt";
    const auto load = [](const std::string& first, const std::string& second) {
        const char* const paths[] = {first.c_str(), second.c_str()};
        return scrivo_load_templates(paths, 2);
    };
    EXPECT_EQ(load(file, missing), SCRIVO_NO_TEMPLATES);
    EXPECT_NE(std::string(scrivo_error()).find(missing), std::string::npos);
    EXPECT_EQ(load(file, unnamed), SCRIVO_INVALID_ARGUMENT);
    EXPECT_EQ(scrivo_load_templates(nullptr, 1), SCRIVO_INVALID_ARGUMENT);
    EXPECT_EQ(scrivo_load_templates(nullptr, 0), SCRIVO_OK);
    EXPECT_EQ(typeOfCircle(), SCRIVO_TYPE_NONE);  // nothing was loaded
    EXPECT_EQ(load(file, folder + "rectangle.template"), SCRIVO_OK);
    EXPECT_EQ(typeOfCircle(), SCRIVO_TYPE_ELLIPSE);
}

}  // namespace

}  // namespace Scrivo::test
