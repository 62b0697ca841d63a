#include "Beautifier/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

/// A kind, and how many of its edges can be the first one.
struct Kind {
    FourEdges name;
    int firsts;
    KindRule rule;
};

// Kites have an inscribed circle, as rhombuses do: one distance for all edges.
// In a trapezoid the centre lies half way between the parallel edges and as far
// from one leg as from the other.
constexpr std::array<Kind, FOUR_EDGES - 1> KINDS{{
    {FourEdges::SQUARE,
     1,
     {4, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.0, 0}, {{1}, 1.5, 0}}}}},
    {FourEdges::RECTANGLE,
     1,
     {4, 1, 2, {{{{1}, 0.0, 0}, {{1}, 0.5, 1}, {{1}, 1.0, 0}, {{1}, 1.5, 1}}}}},
    {FourEdges::RHOMBUS,
     1,
     {4, 2, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 1.0, 0}, {{1, 1}, 1.0, 0}}}}},
    {FourEdges::PARALLELOGRAM,
     1,
     {4, 2, 2, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1, -1}, 1.0, 0}, {{1, 1}, 1.0, 1}}}}},
    {FourEdges::KITE,
     2,
     {4,
      3,
      1,
      {{{{1, -1, 0}, 0.0, 0}, {{1, 1, 0}, 0.0, 0}, {{1, 0, 1}, 0.0, 0}, {{1, 0, -1}, 2.0, 0}}}}},
    {FourEdges::ISOSCELES_TRAPEZOID,
     2,
     {4, 2, 2, {{{{1, 0}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1, 0}, 1.0, 0}, {{1, -1}, 2.0, 1}}}}},
    {FourEdges::TRAPEZOID,
     2,
     {4,
      3,
      2,
      {{{{1, 0, 0}, 0.0, 0}, {{1, 1, 0}, 0.0, 1}, {{1, 0, 0}, 1.0, 0}, {{1, 0, -1}, 2.0, 1}}}}},
}};

}  // namespace

std::array<PolygonFit, FOUR_EDGES> fitQuadrangles(const PolygonInk& ink) {
    std::array<PolygonFit, FOUR_EDGES> fits;
    for (const Kind& kind : KINDS) {
        PolygonFit& best = fits[static_cast<std::size_t>(kind.name)];
        best = fitPolygon(ink, kind.rule, 0);
        for (int first = 1; first < kind.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            best = fit.squares < best.squares ? fit : best;
        }
    }
    fits.back() = fitFreePolygon(ink);
    return fits;
}

}  // namespace Scrivo::beautifier
