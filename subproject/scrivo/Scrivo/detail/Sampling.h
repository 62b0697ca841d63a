#pragma once

#include "Scrivo/Scrivo.h"

#include <cstdint>
#include <vector>

namespace Scrivo::detail {

inline std::int64_t sizeOf(const std::vector<Point2D>& stroke) {
    return static_cast<std::int64_t>(stroke.size());
}

/// Appends NUM_POINT + 1 points, the i-th of them `at(i)`.
template <typename PointAt>
void appendSamples(std::vector<Point2D>& out, PointAt at) {
    for (std::int32_t i = 0; static_cast<double>(i) < NUM_POINT + 1.0; ++i) {
        const Point2D p = at(static_cast<double>(i));
        out.push_back({p.x, p.y, 0.0});
    }
}

}  // namespace Scrivo::detail
