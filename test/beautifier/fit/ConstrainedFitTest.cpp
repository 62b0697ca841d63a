#include "Shapes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

void expectRecovered(std::span<const Kind> kinds, const Shape& shape) {
    const PolygonInk ink = inkOf(shape.corners);
    PolygonFit best;
    best.squares = INFINITY;
    for (const Kind& kind : kinds) {
        for (int first = 0; kind.name == shape.name && first < kind.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            best = fit.squares < best.squares ? fit : best;
        }
    }
    EXPECT_LT(best.squares, 1e-9) << "kind " << shape.name;
    const PolygonFit free = fitFreePolygon(ink);
    for (std::size_t i = 0; i < shape.corners.size(); ++i) {
        EXPECT_LT(norm(best.corners.at(i) - shape.corners[i]), 1e-6) << "kind " << shape.name;
        EXPECT_LT(norm(free.corners.at(i) - shape.corners[i]), 1e-6) << "free, " << shape.name;
    }
}

/// From every corner, in both directions, turned.
void expectRecoveredAnyhow(std::span<const Kind> kinds, Shape shape) {
    for (Vec& p : shape.corners) {
        p = {std::cos(0.4) * p.x - std::sin(0.4) * p.y, std::sin(0.4) * p.x + std::cos(0.4) * p.y};
    }
    for (std::size_t i = 0; i < 2 * shape.corners.size(); ++i) {
        expectRecovered(kinds, shape);
        std::rotate(shape.corners.begin(), shape.corners.begin() + 1, shape.corners.end());
        if (i + 1 == shape.corners.size()) {
            std::reverse(shape.corners.begin(), shape.corners.end());
        }
    }
}

TEST(ConstrainedFit, RecoversExactPolygonsOfEveryKind) {
    for (const Shape& shape : exactQuadrangles()) {
        expectRecoveredAnyhow(quadrangleKinds(), shape);
    }
    for (const Shape& shape : exactTriangles()) {
        expectRecoveredAnyhow(triangleKinds(), shape);
    }
}

TEST(ConstrainedFit, FindsTheLeastSquaresSquareOfARectangle) {
    // Even weights on all edges: the side is the mean of width and height.
    const PolygonInk ink = inkOf({{0, 0}, {1, 0}, {1, 0.98}, {0, 0.98}});
    const PolygonFit fit = fitPolygon(ink, quadrangleKinds()[0].rule, 0);
    EXPECT_NEAR(norm(fit.corners[1] - fit.corners[0]), 0.99, 1e-6);
    // Every line misses its points by a hundredth of half the side.
    EXPECT_NEAR(fit.squares, ink.count * 0.005 * 0.005, 1e-9);
}

TEST(ConstrainedFit, HasInfiniteSquaresWhereThereIsNoSuchPolygon) {
    const auto isosceles = [](double baseAngle) {
        const PolygonInk ink = inkOf({{-0.5, 0}, {0.5, 0}, {0, 0.5 * std::tan(baseAngle)}});
        return fitPolygon(ink, triangleKinds()[3].rule, 0).squares;
    };
    // Edges at less than a tenth of a radian are parallel.
    EXPECT_EQ(isosceles(0.08), INFINITY);
    EXPECT_LT(isosceles(0.14), 1e-9);
    const PolygonInk dart = inkOf({{1, 0}, {0, 0.4}, {0.35, 0}, {0, -0.4}});
    for (const Kind& kind : quadrangleKinds()) {
        EXPECT_EQ(fitPolygon(dart, kind.rule, 0).squares > 0.01, true) << kind.name;
    }
}

}  // namespace

}  // namespace Scrivo::test
