#include "Beautifier/figures/TriangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Every triangle has an inscribed circle: one distance for all edges. The first
// edge is the base or a leg of the right angle, the one that levelling makes level
// or upright.
constexpr std::array<Candidate, 5> TRIANGLE_FORMS{{
    {EQUILATERAL,
     ANY_TRIANGLE,
     3,
     {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 2.0 / 3.0, 0}, {{1}, 4.0 / 3.0, 0}}}},
     0.0},
    {RIGHT_ISOSCELES, RIGHT, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.25, 0}}}}, 0.0},
    {RIGHT_ISOSCELES, RIGHT, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}}, 0.2},
    {ISOSCELES,
     ANY_TRIANGLE,
     3,
     {3, 2, 1, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}},
     0.6},
    {RIGHT, RIGHT, 3, {3, 2, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1, 1}, 0.0, 0}}}}, 0.6},
}};

// The strokes have no labels for the kinds of triangles. People draw them as
// accurately as quadrangles, but general triangles are common, so the tolerances
// are smaller.
constexpr FormCosts TRIANGLE_COSTS{.edges = 0.022,
                                   .directions = 0.011,
                                   .move = 0.3,
                                   .lean = 0.07,
                                   .leaning = 1.0,
                                   .maxLean = 0.07,
                                   .freeId = ANY_TRIANGLE,
                                   .freeFreedom = 1.2};

}  // namespace

KindChoice chooseTriangle(const PolygonInk& ink, FormSet allowed, bool isLevelled) {
    return chooseKind(ink, TRIANGLE_FORMS, TRIANGLE_COSTS, allowed, isLevelled);
}

}  // namespace Scrivo::beautifier
