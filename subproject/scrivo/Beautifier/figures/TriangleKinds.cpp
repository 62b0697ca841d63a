#include "Beautifier/figures/TriangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Every triangle has an inscribed circle: one distance for all edges. The first
// edge is the base or a leg of the right angle, the one by which the triangle
// stands.
constexpr std::array<Kind, 5> KINDS{{
    {EQUILATERAL,
     ANY_TRIANGLE,
     3,
     {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 2.0 / 3.0, 0}, {{1}, 4.0 / 3.0, 0}}}},
     0.0},
    {RIGHT_ISOSCELES, RIGHT, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.25, 0}}}}, 0.3},
    {RIGHT_ISOSCELES, RIGHT, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}}, 0.5},
    {ISOSCELES,
     ANY_TRIANGLE,
     3,
     {3, 2, 1, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}},
     0.6},
    {RIGHT, RIGHT, 3, {3, 2, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1, 1}, 0.0, 0}}}}, 0.8},
}};

// No stroke is labelled by the kind of its triangle. Hands are those of the
// quadrangles, but triangles of no kind are common: the tolerances are smaller.
constexpr KindCosts COSTS{.edges = 0.022,
                          .directions = 0.008,
                          .lean = 3.0,
                          .halfLean = 0.2,
                          .freeName = ANY_TRIANGLE,
                          .freeFreedom = 2.2};

}  // namespace

KindChoice chooseTriangle(const PolygonInk& ink, KindSet allowed) {
    return chooseKind(ink, KINDS, COSTS, allowed);
}

}  // namespace Scrivo::beautifier
