#include "Beautifier/TriangleKinds.h"

namespace Scrivo::beautifier {

namespace {

/// A kind, and how many of its edges can be the first one.
struct Kind {
    ThreeEdges name;
    int firsts;
    KindRule rule;
};

// Every triangle has an inscribed circle: one distance for all edges.
constexpr std::array<Kind, THREE_EDGES - 1> KINDS{{
    {ThreeEdges::EQUILATERAL,
     1,
     {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 2.0 / 3.0, 0}, {{1}, 4.0 / 3.0, 0}}}}},
    {ThreeEdges::RIGHT_ISOSCELES,
     3,
     {3, 1, 1, {{{{1}, 0.0, 0}, {{1}, 0.5, 0}, {{1}, 1.25, 0}}}}},
    {ThreeEdges::ISOSCELES, 3, {3, 2, 1, {{{{1, 0}, 0.0, 0}, {{1, 1}, 0.0, 0}, {{1, -1}, 2.0, 0}}}}},
    {ThreeEdges::RIGHT, 3, {3, 2, 1, {{{{1, 0}, 0.0, 0}, {{1, 0}, 0.5, 0}, {{1, 1}, 0.0, 0}}}}},
}};

}  // namespace

std::array<PolygonFit, THREE_EDGES> fitTriangles(const PolygonInk& ink) {
    std::array<PolygonFit, THREE_EDGES> fits;
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
