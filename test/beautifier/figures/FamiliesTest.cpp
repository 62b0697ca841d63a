#include "Answers.h"
#include "Beautifier/figures/Families.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

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
    EXPECT_NEAR(std::get<EllipseFigure>(tall.figure).centre.y, 300.0, 1.0) << "too high to fit";
}

TEST(BeautifierFigure, IsMovedWhereItFitsOnly) {
    const auto movedBy = [](double width, double height) {
        Figure line = LineFigure{{-10, 20}, {width - 10, height + 20}};
        const bool isMoved = beautifier::moveInside(line, beautifier::outlineOf(line), 800, 600);
        const Point2D from = std::get<LineFigure>(line).from;
        EXPECT_EQ(isMoved, length(from - Point2D{-10, 20}) > 0.0);
        return from - Point2D{-10, 20};
    };
    EXPECT_EQ(movedBy(800, 600).x, 10.0);
    EXPECT_EQ(movedBy(800, 600).y, -20.0);
    EXPECT_EQ(movedBy(801, 600).x, 0.0);
    EXPECT_EQ(movedBy(800, 601).y, 0.0);
}

TEST(Families, AreInTheOrderOfTheEnumeration) {
    std::size_t number = 0;
    for (const auto& family : beautifier::families()) {
        EXPECT_EQ(static_cast<std::size_t>(family.family), number++) << family.name;
        EXPECT_EQ(beautifier::findFamily(family.family), &family);
    }
    EXPECT_EQ(beautifier::findFamily(static_cast<FigureFamily>(number)), nullptr);
}

constexpr beautifier::Box BOX{{100, 50}, {300, 150}};

template <typename F, typename Kind>
F filling(FigureFamily family, Kind kind) {
    const Figure figure =
        beautifier::findFamily(family)->inBox(BOX, static_cast<std::uint8_t>(kind));
    return std::get<F>(figure);
}

/// The sides of a polygon that fills the box.
template <typename F, typename Kind>
std::vector<Point2D> sidesOf(FigureFamily family, Kind kind, bool fillsBox = true) {
    const F polygon = filling<F>(family, kind);
    EXPECT_EQ(polygon.subtype, kind);
    const auto box = beautifier::boxOf(polygon.corners);
    EXPECT_EQ(box.low.x == 100 && box.low.y == 50 && box.high.x == 300 && box.high.y == 150,
              fillsBox);
    std::vector<Point2D> sides;
    for (std::size_t i = 0; i < polygon.corners.size(); ++i) {
        sides.push_back(polygon.corners[(i + 1) % polygon.corners.size()] - polygon.corners[i]);
    }
    return sides;
}

TEST(Families, FillABoxWithEveryTriangle) {
    const auto sides = [](TriangleKind kind, bool fillsBox = true) {
        return sidesOf<TriangleFigure>(FigureFamily::TRIANGLE, kind, fillsBox);
    };
    const auto even = sides(TriangleKind::EQUILATERAL, false);
    EXPECT_NEAR(length(even[0]), 200, 1e-9);
    EXPECT_NEAR(length(even[1]), 200, 1e-9);
    EXPECT_NEAR(length(even[2]), 200, 1e-9);
    const auto tent = sides(TriangleKind::ISOSCELES);
    EXPECT_NEAR(length(tent[0]), length(tent[1]), 1e-9);
    EXPECT_EQ(dot(sides(TriangleKind::RIGHT)[0], sides(TriangleKind::RIGHT)[2]), 0.0);
}

TEST(Families, FillABoxWithEveryQuadrangle) {
    const auto sides = [](QuadrangleKind kind, bool fillsBox = true) {
        return sidesOf<QuadrangleFigure>(FigureFamily::QUADRANGLE, kind, fillsBox);
    };
    for (const QuadrangleKind kind : {QuadrangleKind::SQUARE, QuadrangleKind::RECTANGLE}) {
        const auto right = sides(kind, kind == QuadrangleKind::RECTANGLE);
        EXPECT_EQ(dot(right[0], right[1]), 0.0);
        EXPECT_TRUE(isNear(right[0], -1 * right[2]));
        EXPECT_EQ(length(right[0]), kind == QuadrangleKind::SQUARE ? 150 : 200);
        EXPECT_EQ(length(right[1]), kind == QuadrangleKind::SQUARE ? 150 : 100);
    }
    const auto rhombus = sides(QuadrangleKind::RHOMBUS);
    const auto kite = sides(QuadrangleKind::KITE);
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}}) {
        EXPECT_EQ(length(rhombus[i]), length(rhombus[i + 1]));
        EXPECT_EQ(length(kite[2 * i]), length(kite[3 - 2 * i])) << "beside the upper, lower corner";
    }
    EXPECT_LT(length(kite[0]), length(kite[1]) - 10);
    const auto slanted = sides(QuadrangleKind::PARALLELOGRAM);
    EXPECT_TRUE(isNear(slanted[0], -1 * slanted[2]));
    EXPECT_GT(std::abs(dot(slanted[0], slanted[1])), 1000.0);
    const auto trapezoid = sides(QuadrangleKind::TRAPEZOID);
    EXPECT_EQ(cross(trapezoid[0], trapezoid[2]), 0.0);
    EXPECT_EQ(length(trapezoid[1]), length(trapezoid[3]));
    EXPECT_LT(length(trapezoid[0]), length(trapezoid[2]) - 50);
}

TEST(Families, FillABoxWithRoundFigures) {
    const auto circle = filling<CircleFigure>(FigureFamily::ELLIPSE, EllipseKind::CIRCLE);
    EXPECT_TRUE(isNear({circle.centre, {circle.radius, 0}}, {{200, 100}, {75, 0}}));
    const auto ellipse = filling<EllipseFigure>(FigureFamily::ELLIPSE, EllipseKind::ELLIPSE);
    EXPECT_TRUE(isNear({ellipse.centre, ellipse.radii}, {{200, 100}, {100, 50}}));
    EXPECT_EQ(ellipse.rotation, 0.0);
}

}  // namespace

}  // namespace Scrivo::test
