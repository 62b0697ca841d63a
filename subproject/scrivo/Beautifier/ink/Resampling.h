#pragma once

#include "Beautifier/ink/Frame.h"
#include "Beautifier/ink/Track.h"
#include "Beautifier/ink/Vec.h"

#include <array>

/// Reduces a stroke to evenly spaced points: everything after this step is
/// independent of the sampling rate.
namespace Scrivo::beautifier {

/// Points of the even outline, and of its coarse version (every second one).
inline constexpr int FINE = 97;
inline constexpr int COARSE = 49;

using Fine = std::array<Vec, FINE>;
using Coarse = std::array<Vec, COARSE>;

inline Vec pointAt(const Fine& outline, int i) {
    return outline[static_cast<std::size_t>(i)];
}

/// Part of an even outline, by the indices of its ends.
struct Part {
    int first = 0;
    int last = FINE - 1;
};

/// `FINE` points at even distances along the stroke, in the frame's own units:
/// centred, longer side 1. Where samples lie further apart than these points, a
/// centripetal Catmull-Rom curve joins them (Yuksel, Schaefer, Keyser: On the
/// parameterization of Catmull-Rom curves, 2009); at sharp bends it gives way
/// to straight pieces, so that a polygon of few samples keeps its edges. Where
/// the pen trembles throughout, the points are means of the path about them.
/// Requires a measurable frame with a positive extent.
Fine resample(const Track& track, const Frame& frame);

/// The same for a round stroke of few samples: the curve is smooth at all of them,
/// except where the pen turns back.
Fine resampleRound(const Track& track, const Frame& frame);

/// Every second point.
Coarse coarse(const Fine& fine);

/// Measures lengths with one direction stretched.
struct Metric {
    Vec along{1.0, 0.0};  ///< unit vector that keeps its length
    double across = 1.0;  ///< factor of what is perpendicular to it

    double length(Vec v) const { return norm({dot(along, v), across * cross(along, v)}); }
};

/// `COARSE` points along the part of `fine` from index `first` to `last`, at
/// distances that are even by `metric`.
Coarse resample(const Fine& fine, int first, int last, const Metric& metric);

}  // namespace Scrivo::beautifier
