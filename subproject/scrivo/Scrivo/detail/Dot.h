#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// Taps and small scribbles.
namespace Scrivo::detail {

/// See `Scrivo::isPoint`.
bool isPoint(Stroke stroke);

/// See `Scrivo::reDrawPoint`.
std::int64_t reDrawPoint(std::vector<Point2D>& out, Stroke stroke);

}  // namespace Scrivo::detail
