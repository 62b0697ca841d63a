/// @file
/// The pipeline: load templates, classify a stroke, redraw a stroke.
#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Scrivo {

/// Loads the template files into the process-wide recogniser. A path is
/// assigned by the name that it contains, tested in this order:
/// "rectangle.template", "isosceles_triangle.template", "triangle.template",
/// "ellipse.template". Of several paths for one slot the last one counts;
/// other paths are ignored. Paths are UTF-8 on every system. Missing or
/// unreadable files contribute nothing. A further call adds to what is loaded.
/// Always returns true.
bool initScrivo(std::vector<std::string> paths);

/// Classifies a stroke given in drawing-area units. `extent` holds its width
/// and height as `scaleOfGraph` measures them. Returns 0, 1, 2, 6 or 7, never
/// the code of the angle: angles are found by trying to redraw one.
std::int32_t judge(std::vector<Point2D> stroke, Point2D extent);

/// Redraws one stroke as the figure that it was meant to be.
/// `stroke` and `otherStrokes` are in fractions of the drawing area, `width`
/// and `height` in any unit; all thresholds count in that unit. The ends of a
/// straight line may snap to the centroids of `otherStrokes`.
/// Returns the stroke as drawn with type 0 when nothing was recognised, when
/// the figure's routine declined, or when memory ran out: never throws.
/// The answer depends on the arguments and the loaded templates alone. Any number is
/// accepted: points in pixels, or an area of nearly no width, give a figure that is as
/// large or NaN.
StrokeResult optimizeAStroke(std::vector<Point2D> stroke, float width, float height,
                             std::vector<std::vector<Point2D>> otherStrokes);

}  // namespace Scrivo
