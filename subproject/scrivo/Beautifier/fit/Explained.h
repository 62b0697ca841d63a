#pragma once

#include "Beautifier/fit/Evidence.h"
#include "Beautifier/ink/Vec.h"

#include <span>

/// How much of the ink a figure explains.
namespace Scrivo::beautifier {

/// A figure does not explain ink further from it than this share of the size.
inline constexpr double FAR = 0.025;

/// Share of the points that lie `FAR` from the polyline through `corners`.
double farShare(const Evidence& evidence, std::span<const Vec> corners);

/// The ink about a corner of a figure.
struct CornerInk {
    double distance = 0.0;  ///< of the nearest ink
    double bend = 0.0;      ///< of the ink within some steps, radians
};

/// Measures the ink nearest to `corner` among the fine points `first` to `last`, with
/// `reach` of them in both directions. Next to an end, where gap and tails are
/// measured instead, the bend is pi.
CornerInk inkAt(const Fine& fine, Vec corner, int first, int last, int reach);

/// Logarithm of the length of the ink over that of a figure, within bounds.
double lengthRatio(const Evidence& evidence, double length);

}  // namespace Scrivo::beautifier
