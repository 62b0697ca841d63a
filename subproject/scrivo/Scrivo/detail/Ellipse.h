#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// The routines behind Ellipse.h that the pipeline calls.
namespace Scrivo::detail {

bool isPoint(Stroke stroke);
std::int64_t reDrawPoint(std::vector<Point2D>& out, Stroke stroke);
std::int64_t reDrawEllipse(std::vector<Point2D>& out, Stroke stroke, std::int32_t width,
                           std::int32_t height);

}  // namespace Scrivo::detail
