#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// The search for corners: of angles, of polygons, and of the strokes that the
/// recogniser compares.
///
/// A span of `LIMIT` points slides along the stroke. Where the ratio of its
/// chord to its path has dropped below `RATIO_ANGLE` and stops falling, the
/// point of the span that deviates most from the span's chord is a corner. The
/// scan restarts after it. No corner lies within half a span of an end of
/// the stroke. Linear in the number of points.
namespace Scrivo::detail {

/// How the span's length, a float, is updated when a segment enters and another
/// one leaves. The choice can move a corner by a point where the ratio is close
/// to the threshold; recorded results depend on it.
enum class SpanRounding {
    ONCE,   ///< after both
    TWICE,  ///< after each
};

/// Index strictly between `from` and `to` of the point with the longest detour,
/// the earliest of equals; -1 when there is none.
std::int64_t farthestFromChord(Stroke stroke, std::int64_t from, std::int64_t to);

/// The indices of the corners, ascending. Gives up, with `atMost` + 1 corners,
/// as soon as there are more than `atMost`. A stroke of `LIMIT` points or fewer
/// has none.
std::vector<std::int64_t> scanCorners(Stroke stroke, SpanRounding rounding, std::size_t atMost);

/// The corners of an angle or a polygon, as points.
std::vector<Point2D> findCorners(Stroke stroke, std::size_t atMost);

/// The corners by which the recogniser chooses the templates to compare with:
/// indices from 0 to n - 1. A stroke of exactly `LIMIT` points has only 0, an
/// empty one 0 and -1.
std::vector<std::int32_t> strokeCorners(Stroke stroke);

}  // namespace Scrivo::detail
