#pragma once

#include "Beautifier/Vec.h"
#include "Scrivo/Scrivo.h"

#include <array>
#include <span>

/// A stroke reduced to evenly spaced points, so that nothing behind this unit
/// sees how densely or how evenly the device sampled.
namespace Scrivo::beautifier {

/// Points of the even outline, and of its coarse version (every second one).
inline constexpr int FINE = 97;
inline constexpr int COARSE = 49;

using Fine = std::array<Vec, FINE>;
using Coarse = std::array<Vec, COARSE>;

/// The stroke's position and size in drawing-area units.
struct Frame {
    Vec centre;             ///< of the bounding box
    double extent = 0.0;    ///< longer side of the bounding box
    double diagonal = 0.0;  ///< of the bounding box
    double length = 0.0;    ///< of the polyline through the samples
    /// There is a sample, and all coordinates are numbers below `UNKNOWN_EXTENT`.
    bool measurable = false;
};

/// Measures `stroke`, whose samples are fractions of a `width` by `height` area.
Frame measure(std::span<const Point2D> stroke, double width, double height);

/// Length of the path without its tremor, in drawing-area units: moves count
/// once they come to an eighth of the size, and to half a unit at least, so that
/// a press that is held longer is not longer.
double travel(std::span<const Point2D> stroke, double width, double height, const Frame& frame);

/// `FINE` points at even distances along `stroke`, in the frame's own units:
/// centred, longer side 1. Where samples lie further apart than these points, a
/// centripetal Catmull-Rom curve joins them (Yuksel, Schaefer, Keyser: On the
/// parameterization of Catmull-Rom curves, 2009); at sharp bends it gives way
/// to straight pieces, so that a polygon of few samples keeps its edges.
/// Requires a measurable frame with a positive extent.
Fine resample(std::span<const Point2D> stroke, double width, double height, const Frame& frame);

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
