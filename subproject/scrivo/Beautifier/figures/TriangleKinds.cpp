#include "Beautifier/figures/TriangleKinds.h"

namespace Scrivo::beautifier {

namespace {

constexpr double EDGES = 0.009;
constexpr double DIRECTIONS = 0.008;
constexpr LeanCharge LEAN{4.64, 0.133};

// Every triangle has an inscribed circle: one distance for all edges. The first
// edge is the base or a leg of the right angle, the one by which the triangle
// stands.
constexpr std::array<Kind, 5> KINDS{{
    {EQUILATERAL,
     3,
     {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 2.0 / 3.0, 0}, {{1}, 4.0 / 3.0, 0}}}},
     EDGES,
     0.0},
    {RIGHT_ISOSCELES, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.25, 0}}}}, EDGES, 0.3},
    {RIGHT_ISOSCELES, 3, {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.75, 0}, {{1}, 1.25, 0}}}}, EDGES, 0.5},
    {ISOSCELES, 3, {3, 2, 1, {{{{1}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}}, EDGES, 0.6},
    {RIGHT, 3, {3, 2, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1, 1}, 0.0, 0}}}}, DIRECTIONS, 1.2},
}};

constexpr FreeKind FREE{ANY_TRIANGLE, 2.0};

}  // namespace

std::span<const Kind> triangleKinds() {
    return KINDS;
}

KindChoice chooseTriangle(const PolygonInk& ink, KindSet allowed) {
    return chooseKind(ink, KINDS, FREE, LEAN, allowed);
}

}  // namespace Scrivo::beautifier
