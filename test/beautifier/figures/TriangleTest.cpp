#include "Polygons.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(Triangle, KindsAreExact) {
    /// Differences of the sides, ascending.
    const auto differences = [](const TriangleFigure& t) {
        std::array<double, 3> sides;
        for (std::size_t i = 0; i < sides.size(); ++i) {
            sides.at(i) = length(t.corners.at((i + 1) % 3) - t.corners.at(i));
        }
        std::sort(sides.begin(), sides.end());
        const double low = sides[1] - sides[0];
        const double high = sides[2] - sides[1];
        return std::pair(std::min(low, high), std::max(low, high));
    };
    const auto triangleOf = [](const Path& corners) {
        return std::get<TriangleFigure>(beautify(drawn(corners, 0.5)).figure);
    };
    const auto equilateral = triangleOf({{300, 400}, {400, 227}, {500, 400}});
    EXPECT_EQ(equilateral.subtype, TriangleKind::EQUILATERAL);
    EXPECT_LT(differences(equilateral).second, 1e-9);
    const auto isosceles = triangleOf({{300, 402}, {360, 180}, {420, 400}});
    EXPECT_EQ(isosceles.subtype, TriangleKind::ISOSCELES);
    EXPECT_LT(differences(isosceles).first, 1e-9);
    EXPECT_EQ(exactPairs(isosceles.corners), 1);
    const auto right = triangleOf({{300, 200}, {300, 400}, {430, 401}});
    EXPECT_EQ(right.subtype, TriangleKind::RIGHT);
    EXPECT_EQ(exactPairs(right.corners), 2);
    EXPECT_EQ(triangleOf({{300, 200}, {330, 400}, {620, 300}}).subtype, TriangleKind::GENERAL);
    // Wherever the right angle is, its legs become level and upright, or its longest side.
    for (int eighths = 0; eighths < 8; ++eighths) {
        const auto at = [&](double size, int turn) {
            return Point2D{400, 400} + polar(size, (eighths + turn) * PI / 4);
        };
        const Path stroke = drawn({at(100, -2), at(100, 0), at(100, 2)}, 0.0);
        const auto turned = std::get<TriangleFigure>(beautify(stroke).figure);
        EXPECT_EQ(turned.subtype, TriangleKind::RIGHT) << eighths;
        EXPECT_LT(differences(turned).first, 1e-9) << eighths;
        EXPECT_EQ(exactPairs(turned.corners), eighths % 2 == 0 ? 1 : 2) << eighths;
    }
}

}  // namespace

}  // namespace Scrivo::test
