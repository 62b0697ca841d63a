#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// The search for corners that the angle and the polygon share.
///
/// A span of `LIMIT` points slides along the stroke. Where the ratio of its
/// chord to its path has dropped below `RATIO_ANGLE` and stops falling, the
/// point of the span that deviates most from the span's chord is a corner. The
/// scan starts afresh behind it. Linear in the number of points.
namespace Scrivo::detail {

/// Index strictly between `from` and `to` of the point with the longest detour,
/// the earliest of equals; -1 when there is none.
std::int64_t farthestFromChord(Stroke stroke, std::int64_t from, std::int64_t to);

/// The corners in drawing order. Gives up, with `atMost` + 1 corners, as soon as
/// there are more than `atMost`. A stroke of `LIMIT` points or fewer has none.
std::vector<Point2D> findCorners(Stroke stroke, std::size_t atMost);

}  // namespace Scrivo::detail
