#include "Beautifier/figures/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

#include "Beautifier/figures/QuadrangleKinds.inc"

// Kites have an inscribed circle, as rhombuses do: one distance for all edges.
// The centre of a trapezoid lies half way between the parallel edges and at equal
// distances from the legs. The first angle is that of the edge or the diagonal that
// levelling makes level or upright.
constexpr std::array<Candidate, 8> QUADRANGLE_FORMS{{
    {SQUARE,
     RECTANGLE,
     1,
     {4, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.0, 0}, {{1}, 1.5, 0}}}},
     0.0},
    {STANDING_SQUARE,
     RECTANGLE,
     1,
     {4, 1, 1, {{{{1}, -0.25, 0}, {{1}, 0.25, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}},
     STANDING_SQUARE_FREEDOM},
    {RHOMBUS,
     PARALLELOGRAM,
     1,
     {4, 2, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 1.0, 0}, {{1, 1}, 1.0, 0}}}},
     RHOMBUS_FREEDOM},
    {RECTANGLE,
     RECTANGLE,
     1,
     {4, 1, 2, {{{{1}, 0.0, 0}, {{1}, 0.5, 1}, {{1}, 1.0, 0}, {{1}, 1.5, 1}}}},
     RECTANGLE_FREEDOM},
    {PARALLELOGRAM,
     PARALLELOGRAM,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 1}, 1.0, 1}}}},
     PARALLELOGRAM_FREEDOM},
    {ISOSCELES_TRAPEZOID,
     ISOSCELES_TRAPEZOID,
     2,
     {4, 2, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, -1}, 2.0, 1}}}},
     ISOSCELES_TRAPEZOID_FREEDOM},
    {TRAPEZOID,
     TRAPEZOID,
     2,
     {4, 3, 2, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 1}, {{1}, 1.0, 0}, {{1, 0, -1}, 2.0, 1}}}},
     TRAPEZOID_FREEDOM},
    {KITE,
     ANY_QUADRANGLE,
     2,
     {4, 3, 1, {{{{1, -1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, 0, 1}, 0.0, 0}, {{1, 0, -1}, 2.0, 0}}}},
     KITE_FREEDOM},
}};

constexpr FormCosts QUADRANGLE_COSTS{.edges = EDGES,
                                     .directions = DIRECTIONS,
                                     .move = MOVE,
                                     .lean = LEAN,
                                     .leaning = LEANING,
                                     .maxLean = MAX_LEAN,
                                     .freeId = ANY_QUADRANGLE,
                                     .freeFreedom = ANY_QUADRANGLE_FREEDOM};

}  // namespace

const FormCosts& quadrangleCosts() {
    return QUADRANGLE_COSTS;
}

std::span<const Candidate> quadrangleForms() {
    return QUADRANGLE_FORMS;
}

KindChoice chooseQuadrangle(const PolygonInk& ink, FormSet allowed, bool isLevelled) {
    return chooseKind(ink, QUADRANGLE_FORMS, QUADRANGLE_COSTS, allowed, isLevelled);
}

}  // namespace Scrivo::beautifier
