#include "Matchers.h"
#include "Scrivo/detail/EllipseShape.h"

namespace Scrivo::test {

namespace {

TEST(EllipseShape, BoundsBelongToTheEllipse) {
    const auto radii = [](double x, double y) { return detail::rounded({{}, {x, y}, 0.0}).radii; };
    EXPECT_TRUE(isNear(radii(80, 100), {80, 100}, 0.0));
    EXPECT_TRUE(isNear(radii(above(80), 100), {90, 90}));
    EXPECT_TRUE(isNear(radii(125, 100), {125, 100}, 0.0));
    EXPECT_TRUE(isNear(radii(below(125), 100), {112.5, 112.5}));
    EXPECT_EQ(detail::levelled({{}, {}, 0.26}).angle, 0.26);
    EXPECT_EQ(detail::levelled({{}, {}, below(0.26)}).angle, 0.0);
    EXPECT_EQ(detail::levelled({{}, {}, above(-0.26)}).angle, 0.0);
    // Rounded to a float, 0.26 is slightly smaller.
    EXPECT_EQ(detail::levelled({{}, {}, 0.26F}).angle, 0.0);
}

}  // namespace

}  // namespace Scrivo::test
