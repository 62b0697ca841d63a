#pragma once

#include "Beautifier/fit/ConstrainedFit.h"

#include <cstdint>
#include <span>

/// Which kind of polygon was meant: the simplest that hands explain.
namespace Scrivo::beautifier {

/// A kind of polygon and what it costs. The cost is, of every kind, the squared
/// distance that the ink has to move beyond the free fit, over that of hands
/// which mean the kind; plus what the kind's freedom costs; plus a charge for a
/// first angle that is neither level nor upright, as most people draw them so.
/// The cheapest kind is chosen. All of it was learnt from people's strokes, see
/// docs/beautifier.md.
struct Kind {
    int name;    ///< number of the kind in its own enumeration
    int firsts;  ///< how many of the edges can be the first one
    KindRule rule;
    double tolerance;  ///< root mean square distance that hands err, shares of the size
    double freedom;    ///< cost of the kind itself
};

/// What a polygon of free edges is called and costs.
struct FreeKind {
    int name;
    double freedom;
};

/// Charge for a lean: nothing at 0, half of the most at `half`.
struct LeanCharge {
    double most;
    double half;  ///< radians
};

struct KindChoice {
    int kind = 0;
    PolygonFit fit;
};

/// Names of kinds as bits.
using KindSet = std::uint32_t;
inline constexpr KindSet ALL_KINDS = ~KindSet{0};

/// The cheapest of `kinds` and of the free polygon that is `allowed`; quickest when
/// the freedoms of `kinds` ascend. Corners are NaN when there is no such polygon.
KindChoice chooseKind(const PolygonInk& ink, std::span<const Kind> kinds, const FreeKind& free,
                      const LeanCharge& charge, KindSet allowed = ALL_KINDS);

/// Root mean square distance of the ink from `fit` beyond that from the free fit,
/// share of the size.
double excess(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& free);

}  // namespace Scrivo::beautifier
