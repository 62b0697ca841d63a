#pragma once

#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Resampling.h"

#include <span>

/// The closed curve of a stroke whose ends meet.
namespace Scrivo::beautifier {

/// The part of a stroke between the tails, the ends that overshoot the closure.
struct Closure {
    int first = 0;  ///< indices into the fine outline
    int last = FINE - 1;
    int end = FINE - 1;    ///< last index of the last lap, where there are several
    double gap = 0.0;      ///< distance of the ends that remain
    double trimmed = 0.0;  ///< length that was cut, as a share of the whole length
};

/// Cuts up to a quarter of the outline at either end where that closes the curve: a
/// cut must reduce the gap by at least three tenths of its length.
Closure close(const Fine& fine);

/// Length along the fine outline from `first` to `last`.
double lengthBetween(const Fine& fine, int first, int last);

/// The outline between the tails, all laps of it.
std::span<const Vec> lapsOf(const Fine& fine, const Closure& closure);

/// Loop of `COARSE` points, the last one equal to the first, that starts at the
/// point farthest from the centre: in a convex polygon that is a corner.
Coarse loop(const Fine& fine, const Closure& closure);

}  // namespace Scrivo::beautifier
