#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// Strokes with exactly one corner.
namespace Scrivo::detail {

/// See `Scrivo::isAngle`.
bool isAngle(Stroke stroke, const Point2D& corner);

/// See `Scrivo::reDrawAngle`.
std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke);

}  // namespace Scrivo::detail
