#include "Beautifier/figures/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Hands err more in the lengths of edges than in their directions.
constexpr double EDGES = 0.028;
constexpr double DIRECTIONS = 0.0113;

// Kites have an inscribed circle, as rhombuses do: one distance for all edges.
// In a trapezoid the centre lies half way between the parallel edges and as far
// from one leg as from the other. The first angle is that of the edge or the
// diagonal by which the figure stands.
constexpr std::array<Kind, 8> KINDS{{
    {SQUARE,
     1,
     {4, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.0, 0}, {{1}, 1.5, 0}}}},
     EDGES,
     0.0},
    {RECTANGLE,
     1,
     {4, 1, 2, {{{{1}, 0.0, 0}, {{1}, 0.5, 1}, {{1}, 1.0, 0}, {{1}, 1.5, 1}}}},
     DIRECTIONS,
     2.00},
    {RHOMBUS,
     1,
     {4, 2, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 1.0, 0}, {{1, 1}, 1.0, 0}}}},
     EDGES,
     2.74},
    {PARALLELOGRAM,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 1}, 1.0, 1}}}},
     DIRECTIONS,
     4.63},
    {STANDING_SQUARE,
     1,
     {4, 1, 1, {{{{1}, -0.25, 0}, {{1}, 0.25, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}},
     EDGES,
     4.64},
    {TRAPEZOID,
     2,
     {4, 3, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 0, -1}, 2.0, 1}}}},
     DIRECTIONS,
     6.81},
    {KITE,
     2,
     {4, 3, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, 0, 1}, 0.0, 0}, {{1, 0, -1}, 2.0, 0}}}},
     EDGES,
     7.35},
    {ISOSCELES_TRAPEZOID,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, -1}, 2.0, 1}}}},
     DIRECTIONS,
     7.43},
}};

constexpr FreeKind FREE{ANY_QUADRANGLE, 10.39};

}  // namespace

std::span<const Kind> quadrangleKinds() {
    return KINDS;
}

KindChoice chooseQuadrangle(const PolygonInk& ink) {
    return chooseKind(ink, KINDS, FREE);
}

}  // namespace Scrivo::beautifier
