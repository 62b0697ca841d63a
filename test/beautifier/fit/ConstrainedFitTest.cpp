#include "Shapes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

using Choose = KindChoice (*)(const PolygonInk&, FormSet, bool);

void expectRecovered(Choose choose, const Shape& shape) {
    const PolygonInk ink = inkOf(shape.corners);
    const PolygonFit best = choose(ink, formBit(shape.form), false).fit;
    EXPECT_LT(best.squares, 1e-9) << "form " << shape.form;
    const PolygonFit free = fitFreePolygon(ink);
    for (std::size_t i = 0; i < shape.corners.size(); ++i) {
        EXPECT_LT(norm(best.corners.at(i) - shape.corners[i]), 1e-6) << "form " << shape.form;
        EXPECT_LT(norm(free.corners.at(i) - shape.corners[i]), 1e-6) << "free, " << shape.form;
    }
}

/// Turned, from every corner and in both directions.
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

TEST(ConstrainedFit, RecoversExactPolygonsOfEveryForm) {
    for (const Shape& shape : exactQuadrangles()) {
        expectRecoveredAnyhow(chooseQuadrangle, shape);
    }
    for (const Shape& shape : exactTriangles()) {
        expectRecoveredAnyhow(chooseTriangle, shape);
    }
}

TEST(ConstrainedFit, HasInfiniteSquaresWhereThereIsNoSuchPolygon) {
    const PolygonForm form{3, 2, 1, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}};
    const auto isosceles = [&](double baseAngle) {
        const PolygonInk ink = inkOf({{-0.5, 0}, {0.5, 0}, {0, 0.5 * std::tan(baseAngle)}});
        return fitPolygon(ink, form, 0).squares;
    };
    // Edges at less than a tenth of a radian are parallel.
    EXPECT_EQ(isosceles(0.08), INFINITY);
    EXPECT_LT(isosceles(0.14), 1e-9);
    const PolygonInk dart = inkOf({{1, 0}, {0, 0.4}, {0.35, 0}, {0, -0.4}});
    for (const Candidate& candidate : quadrangleForms()) {
        EXPECT_GT(fitPolygon(dart, candidate.form, 0).squares, 0.01) << candidate.id;
    }
}

const PolygonForm& formOf(QuadrangleForm id) {
    const auto forms = quadrangleForms();
    return std::find_if(forms.begin(), forms.end(), [&](const Candidate& c) { return c.id == id; })
        ->form;
}

double largestMove(const PolygonFit& fit, const PolygonFit& from) {
    double largest = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
        largest = std::max(largest, norm(fit.corners.at(i) - from.corners.at(i)));
    }
    return largest;
}

TEST(ConstrainedFit, PlacesFormsSoThatNoCornerMovesFar) {
    // One careless corner, which a square by least squares moves by 0.08.
    for (const bool reversed : {false, true}) {
        std::vector<Vec> corners{{0, 0}, {0.84, 0.0}, {1, 1}, {0, 1}};
        if (reversed) {
            std::reverse(corners.begin(), corners.end());
        }
        const PolygonInk ink = inkOf(corners);
        const PolygonFit free = fitFreePolygon(ink);
        const PolygonFit fit = fitPolygon(ink, formOf(SQUARE), 0);
        const PolygonFit placed = placePolygon(ink, formOf(SQUARE), 0, false);
        EXPECT_GT(largestMove(fit, free), 0.075);
        EXPECT_LT(largestMove(placed, free), 0.07);
        EXPECT_LT(placed.squares, 2.0 * fit.squares);
    }
    // Where none moves far, the placed polygon is the best one.
    const PolygonInk ink = inkOf({{0, 0}, {1, 0.02}, {1, 0.6}, {0, 0.6}});
    const PolygonFit fit = fitPolygon(ink, formOf(RECTANGLE), 0);
    EXPECT_EQ(largestMove(placePolygon(ink, formOf(RECTANGLE), 0, false), fit), 0.0);
    const PolygonFit level = placePolygon(ink, formOf(RECTANGLE), 0, true);
    EXPECT_NEAR(norm(level.corners[1] - level.corners[0]), norm(fit.corners[1] - fit.corners[0]),
                1e-12);
    EXPECT_NEAR(level.corners[1].y, level.corners[0].y, 1e-12);
    // A slim rectangle is no square: every corner moves, and the result is still one.
    const PolygonInk slim = inkOf({{0, 0}, {1, 0}, {1, 0.1}, {0, 0.1}});
    const PolygonFit square = placePolygon(slim, formOf(SQUARE), 0, true);
    EXPECT_TRUE(std::isfinite(square.squares));
    EXPECT_NEAR(norm(square.corners[1] - square.corners[0]),
                norm(square.corners[2] - square.corners[1]), 1e-9);
}

}  // namespace

}  // namespace Scrivo::test
