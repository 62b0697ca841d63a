#pragma once

#include "Beautifier/fit/Loop.h"
#include "Beautifier/ink/Resampling.h"

#include <numbers>

/// Changes of direction along an outline.
namespace Scrivo::beautifier {

/// Sums of absolute bends are clamped to two full turns, radians: a stroke that bends
/// more is a scribble.
inline constexpr double MAX_TURNING = 4.0 * std::numbers::pi;

/// Sums over the bends between successive chords, radians.
struct Bends {
    double absolute = 0.0;
    double sum = 0.0;

    void add(double bend);
};

/// Bends between chords of two steps along the points.
Bends bendsOf(const Coarse& points);

/// Bends between successive chords of four fine steps along the part between the tails.
/// The closure itself is left out: ends that do not quite meet bend there in any case.
Bends innerBends(const Fine& fine, const Closure& closure);

/// The largest absolute bend, radians, between such chords about any point of that part.
double sharpestBend(const Fine& fine, const Closure& closure);

}  // namespace Scrivo::beautifier
