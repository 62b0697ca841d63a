#include "Answers.h"
#include "Beautifier/figures/Families.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

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
    return std::get<Figure>(beautify(sample(polyline(corners), 120)).figure).subtype;
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

TEST(Families, StandInTheOrderOfTheirNumbers) {
    std::size_t number = 0;
    for (const auto& family : beautifier::families()) {
        EXPECT_EQ(static_cast<std::size_t>(family.family), number++) << family.name;
        EXPECT_EQ(beautifier::findFamily(family.family), &family);
    }
    EXPECT_EQ(beautifier::findFamily(static_cast<FigureFamily>(number)), nullptr);
}

}  // namespace

}  // namespace Scrivo::test
