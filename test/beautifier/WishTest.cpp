#include "Answers.h"
#include "Beautifier/figures/Families.h"

#include <array>
#include <gtest/gtest.h>
#include <stdexcept>

namespace Scrivo::test {

namespace {

using namespace ink;

Beautified beautifyAs(const Path& path, const Wish& wish, const BeautifierOptions& options = {}) {
    Beautified answer = Beautifier(options).beautifyAs(inFractions(path), wish, WIDTH, HEIGHT);
    answer.path = fractions(answer.path, 1 / WIDTH, 1 / HEIGHT);
    return answer;
}

const Path HAND_DRAWN =
    sample(shaky(polyline({{300, 200}, {500, 206}, {498, 330}, {302, 326}, {301, 204}}), 1.0), 90);

TEST(Wish, IsGrantedToEveryStrokeWhateverItsScore) {
    std::vector<Example> drawn = examples();
    for (const Example& other : others()) {
        drawn.push_back(other);
    }
    const BeautifierOptions strict{.figures = {}, .minSize = 1e6, .sensitivity = 0.0};
    for (const Example& example : drawn) {
        const Path path = sample(example.curve, 80);
        for (const auto& family : beautifier::families()) {
            const Beautified answer = beautifyAs(path, family.family, strict);
            EXPECT_EQ(answer.type, family.code) << example.name << " as " << family.name;
            EXPECT_EQ(answer.reason, Reason::RECOGNISED);
            std::visit(Agrees{answer.path}, answer.figure);
            for (const Point2D& p : answer.path) {
                EXPECT_TRUE(p.x > 180 && p.x < 620 && p.y > 80 && p.y < 500)
                    << example.name << " as " << family.name << " reaches " << toText(p);
            }
        }
    }
}

TEST(Wish, MakesFiguresOfTheKind) {
    for (int kind = 0; kind <= static_cast<int>(QuadrangleKind::KITE); ++kind) {
        const auto wished = static_cast<QuadrangleKind>(kind);
        const auto figure = std::get<QuadrangleFigure>(beautifyAs(HAND_DRAWN, wished).figure);
        EXPECT_EQ(figure.subtype, wished);
    }
    const auto square =
        std::get<QuadrangleFigure>(beautifyAs(HAND_DRAWN, QuadrangleKind::SQUARE).figure).corners;
    const Point2D side = square[1] - square[0];
    EXPECT_NEAR(length(square[2] - square[1]), length(side), 1e-9);
    EXPECT_NEAR(dot(side, square[2] - square[1]), 0.0, 1e-6);
    EXPECT_NEAR(length(side), 160.0, 10.0) << "between the sides of the box";
    EXPECT_TRUE(is<CircleFigure>(beautifyAs(HAND_DRAWN, EllipseKind::CIRCLE).figure));
    EXPECT_TRUE(is<EllipseFigure>(
        beautifyAs(sample(ellipse(99, 100, 0), 80), EllipseKind::ELLIPSE).figure));
}

TEST(Wish, FillsTheBoxWhereNoFitDoes) {
    const Path square =
        sample(polyline({{300, 200}, {500, 200}, {500, 400}, {300, 400}, {300, 200}}), 90);
    const auto triangle =
        std::get<TriangleFigure>(beautifyAs(square, FigureFamily::TRIANGLE).figure);
    for (const Point2D& corner : triangle.corners) {
        EXPECT_TRUE(corner.x > 250 && corner.x < 550 && corner.y > 150 && corner.y < 450)
            << toText(corner);
    }
}

TEST(Wish, HasTheProbabilityOfItsFamily) {
    const Beautified box = beautifyAs(HAND_DRAWN, FigureFamily::QUADRANGLE);
    EXPECT_GT(box.confidence, 0.9);
    EXPECT_LT(beautifyAs(HAND_DRAWN, FigureFamily::ELLIPSE).confidence, 0.1);
    const auto offered = beautifyAs(HAND_DRAWN, FigureFamily::ELLIPSE).alternatives;
    ASSERT_FALSE(offered.empty());
    EXPECT_EQ(offered.front().family, FigureFamily::QUADRANGLE);
}

TEST(Wish, WithoutAFigureIsRejected) {
    EXPECT_EQ(beautifyAs({}, FigureFamily::DOT).reason, Reason::INVALID);
    EXPECT_EQ(beautifyAs({{300, 300}}, FigureFamily::DOT).type, FIGURE_POINT);
    EXPECT_EQ(beautifyAs({{300, 300}}, FigureFamily::LINE).reason, Reason::NO_FIGURE);
    EXPECT_THROW(beautifyAs(HAND_DRAWN, static_cast<FigureFamily>(9)), std::invalid_argument);
    EXPECT_THROW(beautifyAs(HAND_DRAWN, Wish(FigureFamily::LINE, 0)), std::invalid_argument);
    EXPECT_THROW(beautifyAs(HAND_DRAWN, Wish(FigureFamily::QUADRANGLE, 7)), std::invalid_argument);
}

TEST(Alternatives, AreOtherFamiliesLikeliestFirstAndSumToOneAtMost) {
    int offered = 0;
    for (int i = 0; i < 20; ++i) {
        // From a square to a circle, of few samples and of many.
        const int step = i / 4;
        const double round = 20.0 * step;
        const int count = std::array{6, 7, 8, 90}.at(static_cast<std::size_t>(i % 4));
        const Curve between = [=](double t) {
            const Point2D c = ellipse(100, 100, 0.0)(t);
            const auto clamp = [&](double v, double middle) {
                return std::clamp(v, middle - 100 + 0.3 * (80 - round),
                                  middle + 100 - 0.3 * (80 - round));
            };
            return Point2D{clamp(c.x, 400), clamp(c.y, 300), 0.0};
        };
        const Beautified answer = beautify(sample(between, count), {.sensitivity = 1.0});
        double sum = answer.reason == Reason::RECOGNISED ? answer.confidence : 0.0;
        double before = 1.0;
        for (const Alternative& alternative : answer.alternatives) {
            EXPECT_LE(alternative.probability, before);
            EXPECT_GE(alternative.probability, 0.01);
            EXPECT_NE(beautifier::findFamily(alternative.family), nullptr);
            before = alternative.probability;
            sum += alternative.probability;
            ++offered;
        }
        EXPECT_LE(sum, 1.0 + 1e-12);
    }
    EXPECT_GT(offered, 0);
}

TEST(Outline, FollowsParametersThatTheHostHasChanged) {
    CircleFigure circle{{300, 200}, 50.0};
    const Path path = fractions(outlineOf(circle, WIDTH, HEIGHT), 1 / WIDTH, 1 / HEIGHT);
    EXPECT_EQ(path.size(), 85U);
    std::visit(Agrees{path}, Figure(circle));
    EXPECT_TRUE(outlineOf(std::monostate(), WIDTH, HEIGHT).empty());
    EXPECT_TRUE(outlineOf(circle, 1e-300, HEIGHT).empty());
    for (const Example& example : examples()) {
        const Beautified answer = beautify(sample(example.curve, 70));
        const Path again =
            fractions(outlineOf(answer.figure, WIDTH, HEIGHT), 1 / WIDTH, 1 / HEIGHT);
        EXPECT_TRUE(hasBitsOf(again, answer.path)) << example.name;
    }
}

}  // namespace

}  // namespace Scrivo::test
