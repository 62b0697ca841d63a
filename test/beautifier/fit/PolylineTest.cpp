#include "Answers.h"
#include "Beautifier/fit/Polyline.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using namespace ink;

/// Smallest sum of squares of `pieces` pieces from point `first` to the last one, by trial
/// of all knots.
double leastOf(const Scatter& scatter, int first, int pieces) {
    constexpr int MIN_STEPS = 3;
    double least = pieces == 1 ? scatter.squares(first, COARSE - 1) : INF;
    const int last = pieces == 1 ? first : COARSE - 1 - MIN_STEPS * (pieces - 1);
    for (int knot = first + MIN_STEPS; knot <= last; ++knot) {
        least = std::min(least, scatter.squares(first, knot) + leastOf(scatter, knot, pieces - 1));
    }
    return least;
}

double sumOf(const Scatter& scatter, const PolylineFit& fit) {
    double sum = 0.0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(fit.pieces); ++k) {
        sum += scatter.squares(fit.knots.at(k), fit.knots.at(k + 1));
    }
    return sum;
}

TEST(Polyline, NoOtherKnotsAreBetter) {
    std::vector<Example> curves = examples();
    const std::vector<Example> more = others();
    curves.insert(curves.end(), more.begin(), more.end());
    for (const Example& example : curves) {
        Coarse points = coarse(fineOutline(shaky(example.curve, 2.0)));
        const Scatter open(points);
        points.back() = points.front();
        const Scatter loop(points);
        const PolylineFits lines = fitPolylines(open, 4);
        const PolylineFits polygons = fitPolygons(loop);
        for (int pieces = 1; pieces <= 4; ++pieces) {
            const double least = std::sqrt(leastOf(open, 0, pieces) / COARSE);
            const PolylineFit& line = lines.at(static_cast<std::size_t>(pieces - 1));
            EXPECT_NEAR(line.rms, least, 1e-9) << example.name << pieces;
            EXPECT_NEAR(std::sqrt(sumOf(open, line) / COARSE), least, 1e-9) << example.name;
        }
        for (int pieces = 3; pieces <= 4; ++pieces) {
            // From the start of the loop; those from another one may be better.
            const double least = std::sqrt(leastOf(loop, 0, pieces) / COARSE);
            const PolylineFit& polygon = polygons.at(static_cast<std::size_t>(pieces - 1));
            EXPECT_LT(polygon.rms, least + 1e-9) << example.name << pieces;
            EXPECT_NEAR(std::sqrt(sumOf(loop, polygon) / COARSE), polygon.rms, 1e-9)
                << example.name << pieces;
        }
    }
}

TEST(Polyline, PolygonsAreFoundFromAStartOnAnEdge) {
    const Path square{{120, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}, {120, 0}};
    const PolylineFits fits = fitPolygons(Scatter(coarse(fineOutline(polyline(square)))));
    EXPECT_LT(fits[3].rms, 0.01);
    EXPECT_GT(fits[2].rms, 0.05);
}

}  // namespace

}  // namespace Scrivo::test
