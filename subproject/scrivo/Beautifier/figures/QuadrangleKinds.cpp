#include "Beautifier/figures/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

#include "Beautifier/figures/QuadrangleKinds.inc"

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
     RECTANGLE_FREEDOM},
    {RHOMBUS,
     1,
     {4, 2, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 1.0, 0}, {{1, 1}, 1.0, 0}}}},
     EDGES,
     RHOMBUS_FREEDOM},
    {PARALLELOGRAM,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 1}, 1.0, 1}}}},
     DIRECTIONS,
     PARALLELOGRAM_FREEDOM},
    {STANDING_SQUARE,
     1,
     {4, 1, 1, {{{{1}, -0.25, 0}, {{1}, 0.25, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}},
     EDGES,
     STANDING_SQUARE_FREEDOM},
    {TRAPEZOID,
     2,
     {4, 3, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 0, -1}, 2.0, 1}}}},
     DIRECTIONS,
     TRAPEZOID_FREEDOM},
    {KITE,
     2,
     {4, 3, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, 0, 1}, 0.0, 0}, {{1, 0, -1}, 2.0, 0}}}},
     EDGES,
     KITE_FREEDOM},
    {ISOSCELES_TRAPEZOID,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, -1}, 2.0, 1}}}},
     DIRECTIONS,
     ISOSCELES_TRAPEZOID_FREEDOM},
}};

constexpr FreeKind FREE{ANY_QUADRANGLE, ANY_QUADRANGLE_FREEDOM};

}  // namespace

std::span<const Kind> quadrangleKinds() {
    return KINDS;
}

KindChoice chooseQuadrangle(const PolygonInk& ink, KindSet allowed) {
    return chooseKind(ink, KINDS, FREE, LEAN, allowed);
}

}  // namespace Scrivo::beautifier
