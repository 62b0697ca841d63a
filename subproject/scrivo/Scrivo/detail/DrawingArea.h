#pragma once

#include "Scrivo/detail/Geometry.h"

#include <vector>

/// Strokes and the drawing area: extents, units, and moving figures inside.
namespace Scrivo::detail {

/// Width (x) and height (y) of a stroke, each `UNKNOWN_EXTENT` below 10 points.
/// The maxima start at 0. NaN coordinates are skipped.
Point2D extentOf(Stroke stroke);

/// From fractions of the area to its units; forces are kept.
std::vector<Point2D> toUnits(Stroke stroke, float width, float height);
/// The inverse, in place.
void toFractions(std::vector<Point2D>& stroke, float width, float height);

/// Moves a figure into the area by one shift an axis. A figure that sticks out
/// on both sides of an axis stays where it is, on both axes.
void moveInside(std::vector<Point2D>& figure, float width, float height);

}  // namespace Scrivo::detail
