#include "Shapes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

using Choose = KindChoice (*)(const PolygonInk&, KindSet);

void expectRecovered(Choose choose, const Shape& shape) {
    const PolygonInk ink = inkOf(shape.corners);
    const PolygonFit best = choose(ink, KindSet{1} << static_cast<unsigned>(shape.name)).fit;
    EXPECT_LT(best.squares, 1e-9) << "kind " << shape.name;
    const PolygonFit free = fitFreePolygon(ink);
    for (std::size_t i = 0; i < shape.corners.size(); ++i) {
        EXPECT_LT(norm(best.corners.at(i) - shape.corners[i]), 1e-6) << "kind " << shape.name;
        EXPECT_LT(norm(free.corners.at(i) - shape.corners[i]), 1e-6) << "free, " << shape.name;
    }
}

/// From every corner, in both directions, turned.
void expectRecoveredAnyhow(Choose choose, Shape shape) {
    for (Vec& p : shape.corners) {
        p = {std::cos(0.4) * p.x - std::sin(0.4) * p.y, std::sin(0.4) * p.x + std::cos(0.4) * p.y};
    }
    for (std::size_t i = 0; i < 2 * shape.corners.size(); ++i) {
        expectRecovered(choose, shape);
        std::rotate(shape.corners.begin(), shape.corners.begin() + 1, shape.corners.end());
        if (i + 1 == shape.corners.size()) {
            std::reverse(shape.corners.begin(), shape.corners.end());
        }
    }
}

TEST(ConstrainedFit, RecoversExactPolygonsOfEveryKind) {
    for (const Shape& shape : exactQuadrangles()) {
        expectRecoveredAnyhow(chooseQuadrangle, shape);
    }
    for (const Shape& shape : exactTriangles()) {
        expectRecoveredAnyhow(chooseTriangle, shape);
    }
}

TEST(ConstrainedFit, HasInfiniteSquaresWhereThereIsNoSuchPolygon) {
    const KindRule rule{3, 2, 1, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}};
    const auto isosceles = [&](double baseAngle) {
        const PolygonInk ink = inkOf({{-0.5, 0}, {0.5, 0}, {0, 0.5 * std::tan(baseAngle)}});
        return fitPolygon(ink, rule, 0).squares;
    };
    // Edges at less than a tenth of a radian are parallel.
    EXPECT_EQ(isosceles(0.08), INFINITY);
    EXPECT_LT(isosceles(0.14), 1e-9);
    const PolygonInk dart = inkOf({{1, 0}, {0, 0.4}, {0.35, 0}, {0, -0.4}});
    for (const Kind& kind : quadrangleKinds()) {
        EXPECT_GT(fitPolygon(dart, kind.rule, 0).squares, 0.01) << kind.name;
    }
}

}  // namespace

}  // namespace Scrivo::test
