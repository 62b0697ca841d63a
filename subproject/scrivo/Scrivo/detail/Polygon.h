#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// The routines behind Polygon.h that the pipeline calls.
namespace Scrivo::detail {

bool isStrictLine(Stroke stroke);
std::int64_t reDrawLine(std::vector<Point2D>& out, Stroke stroke, Stroke anchors);
std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke);
std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke);

}  // namespace Scrivo::detail
