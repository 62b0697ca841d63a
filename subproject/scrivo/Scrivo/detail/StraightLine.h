#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// The least-squares line of a stroke, and the test for a straight one.
namespace Scrivo::detail {

/// See `Scrivo::fitLine`.
std::int64_t fitLine(std::vector<Point2D>& out, Stroke stroke);

/// Width relative to its length of the widest band that a straight stroke of
/// this extent may fill.
double maxRelativeBand(double length);

/// See `Scrivo::isStrictLine`.
bool isStrictLine(Stroke stroke);

}  // namespace Scrivo::detail
