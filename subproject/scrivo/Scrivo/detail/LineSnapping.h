#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// Straight lines that follow nearby strokes; docs/regularisation.md.
namespace Scrivo::detail {

/// See `Scrivo::reDrawLine`.
std::int64_t reDrawLine(std::vector<Point2D>& out, Stroke stroke, Stroke anchors);

}  // namespace Scrivo::detail
