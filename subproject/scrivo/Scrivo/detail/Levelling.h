#pragma once

#include "Scrivo/Types.h"

#include <vector>

/// Turns figures so that a nearly horizontal edge becomes horizontal.
namespace Scrivo::detail {

/// Turns both legs of an angle about its corner so that a nearly horizontal one
/// becomes horizontal.
void levelLegs(Point2D& first, const Point2D& corner, Point2D& last);

/// See `Scrivo::horiVertalTrigon`. A list without corners stays empty.
void levelLowestEdge(std::vector<Point2D>& corners);

}  // namespace Scrivo::detail
