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

TEST(Families, AreInTheOrderOfTheEnumeration) {
    std::size_t number = 0;
    for (const auto& family : beautifier::families()) {
        EXPECT_EQ(static_cast<std::size_t>(family.family), number++) << family.name;
        EXPECT_EQ(beautifier::findFamily(family.family), &family);
    }
    EXPECT_EQ(beautifier::findFamily(static_cast<FigureFamily>(number)), nullptr);
}

}  // namespace

}  // namespace Scrivo::test
