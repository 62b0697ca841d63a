#pragma once

#include "Beautifier/ink/Vec.h"
#include "Scrivo/Types.h"

#include <span>

/// Position and size of a stroke, measured on its samples.
namespace Scrivo::beautifier {

/// A stroke as the caller delivers it: samples in fractions of a drawing area.
struct Ink {
    std::span<const Point2D> samples;
    double width = 0.0;   ///< of the drawing area, units
    double height = 0.0;  ///< of the drawing area, units

    /// A sample in drawing-area units.
    [[nodiscard]] Vec at(const Point2D& p) const { return {p.x * width, p.y * height}; }
};

/// The stroke's position and size in drawing-area units. The fits use the
/// frame's own units: centred, longer side 1.
struct Frame {
    Vec centre;             ///< of the bounding box
    double extent = 0.0;    ///< longer side of the bounding box; 0 below 1e-150 units
    double diagonal = 0.0;  ///< of the bounding box
    double length = 0.0;    ///< of the polyline through the samples
    /// Effective number of pieces between the samples: the square of `length` over the
    /// sum of the squared lengths of the pieces. Pieces much shorter than others
    /// hardly count.
    double pieces = 0.0;
    /// There is a sample, and all coordinates are numbers below `UNKNOWN_EXTENT`.
    bool measurable = false;

    /// From the frame's units to drawing-area units.
    [[nodiscard]] Point2D toUnits(Vec p) const {
        const Vec q = centre + extent * p;
        return {q.x, q.y, 0.0};
    }
};

Frame measure(const Ink& ink);

/// Length of the path without its tremor, in drawing-area units. A move counts
/// once it reaches an eighth of the extent and half a unit, so holding the pen
/// still adds no length.
double travel(const Ink& ink, const Frame& frame);

}  // namespace Scrivo::beautifier
