#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// Closed strokes with corners.
namespace Scrivo::detail {

/// See `Scrivo::reDrawPolygon`.
std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke);

}  // namespace Scrivo::detail
