#pragma once

#include "Beautifier/fit/ConstrainedFit.h"

#include <cstdint>
#include <span>

/// Which kind of polygon was meant: the simplest that hands explain.
namespace Scrivo::beautifier {

/// A kind of polygon and what it costs: what hands would have to err to draw the
/// ink and mean the kind, plus what the freedom of the kind costs, plus a charge
/// for a first angle that is neither level nor upright. Hands err more in the
/// lengths of edges than in their directions, so these count apart: kinds with
/// equal edges have a wider kind without. The cheapest kind is chosen.
struct Kind {
    int name;    ///< number of the kind in its own enumeration
    int wider;   ///< name of the wider kind, its own where there is none; one that is not in the
                 ///< list for free edges
    int firsts;  ///< how many of the edges can be the first one
    KindRule rule;
    double freedom;
};

/// What the kinds of a family have in common. The numbers were learnt from
/// people's strokes, see docs/beautifier.md.
struct KindCosts {
    double edges;       ///< what hands err, as `KindErrors` has it
    double directions;  ///< the same for directions
    double lean;        ///< most that a lean costs
    double halfLean;    ///< lean that costs half of it, radians
    int freeName;       ///< name of the polygon of free edges
    double freeFreedom;
};

struct KindChoice {
    int kind = 0;
    PolygonFit fit;
};

/// Names of kinds as bits.
using KindSet = std::uint32_t;
inline constexpr KindSet ALL_KINDS = ~KindSet{0};

/// The cheapest of `kinds` and of the free polygon that is `allowed`; quickest when
/// their freedoms ascend. Corners are NaN when there is no such polygon.
KindChoice chooseKind(const PolygonInk& ink, std::span<const Kind> kinds, const KindCosts& costs,
                      KindSet allowed = ALL_KINDS);

/// How far a fit is from the free one.
struct KindErrors {
    double edges = 0.0;       ///< root mean square logarithm of edges over those of the wider kind
    double directions = 0.0;  ///< root mean square distance of the ink from the wider kind, beyond
                              ///< that from the free fit, share of the size
};

KindErrors errorsOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& wider,
                    const PolygonFit& free);

/// The best fit of the kind that is wider than `kind`; `fit` where there is none.
PolygonFit widerFit(const PolygonInk& ink, std::span<const Kind> kinds, const Kind& kind,
                    const PolygonFit& fit);

}  // namespace Scrivo::beautifier
