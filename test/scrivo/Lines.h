#pragma once

#include "Matchers.h"
#include "Scrivo/Polygon.h"

namespace Scrivo::test {

/// `fitLine` returns what it appended, so it is called without a prefix.
inline Stroke fitted(const Stroke& stroke) {
    Stroke out;
    const auto count = fitLine(out, stroke);
    EXPECT_EQ(count, static_cast<std::int64_t>(out.size()));
    return out;
}

inline Stroke line(const Point2D& from, const Point2D& to) {
    return outline({from, to});
}

}  // namespace Scrivo::test
