#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

namespace Scrivo::detail {

/// Corners of a closed stroke, by which the recogniser chooses the templates
/// to compare with.
///
/// A span of 10 points slides along the stroke; where the ratio of its chord to
/// its path has dropped below 0.95 and stops falling, the point that deviates
/// most from the chord of the span before is a corner. Indices ascend, from 0
/// to n - 1; a stroke of exactly 10 points has only 0, an empty one 0 and -1.
///
/// The span's length is a float and each addition to it is rounded: the scan
/// in CornerScan.h rounds once an update and can find other corners.
std::vector<std::int32_t> strokeCorners(Stroke stroke);

}  // namespace Scrivo::detail
