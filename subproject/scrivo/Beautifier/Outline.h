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
    bool finite = false;    ///< all of the above are finite and there is a sample
};

/// Measures `stroke`, whose samples are fractions of a `width` by `height` area.
Frame measure(std::span<const Point2D> stroke, double width, double height);

/// `FINE` points at even distances along `stroke`, in the frame's own units:
/// centred, longer side 1. Where samples lie further apart than these points, a
/// centripetal Catmull-Rom curve joins them (Yuksel, Schaefer, Keyser: On the
/// parameterization of Catmull-Rom curves, 2009); at sharp bends it gives way
/// to straight pieces, so that a polygon of few samples keeps its edges.
/// Requires a finite frame with a positive extent.
Fine resample(std::span<const Point2D> stroke, double width, double height, const Frame& frame);

/// Every second point.
Coarse coarse(const Fine& fine);

/// `COARSE` points at even distances along the part of `fine` from index
/// `first` to `last`.
Coarse resample(const Fine& fine, int first, int last);

}  // namespace Scrivo::beautifier
