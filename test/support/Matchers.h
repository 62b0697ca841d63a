#pragma once

#include "Strokes.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>

/// Comparisons of strokes that name the first difference.
namespace Scrivo::test {

/// Whether two doubles have the same bits; all NaNs count as the same.
inline bool sameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline std::string toText(const Point2D& p) {
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "(%.17g, %.17g; %.17g)", p.x, p.y, p.force);
    return text.data();
}

template <typename Same>
testing::AssertionResult sameStrokes(const Stroke& actual, const Stroke& expected, Same same) {
    if (actual.size() != expected.size()) {
        return testing::AssertionFailure()
               << actual.size() << " points instead of " << expected.size();
    }
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (!same(actual[i], expected[i])) {
            return testing::AssertionFailure()
                   << "point " << i << " is " << toText(actual[i]) << " instead of "
                   << toText(expected[i]) << ", off by " << toText(actual[i] - expected[i]);
        }
    }
    return testing::AssertionSuccess();
}

inline testing::AssertionResult hasBitsOf(const Stroke& actual, const Stroke& expected) {
    return sameStrokes(actual, expected, [](const Point2D& a, const Point2D& b) {
        return sameBits(a.x, b.x) && sameBits(a.y, b.y) && sameBits(a.force, b.force);
    });
}

/// Coordinates within `tolerance` (NaN matches NaN), forces equal.
inline testing::AssertionResult isNear(const Stroke& actual, const Stroke& expected,
                                       double tolerance = 1e-9) {
    const auto near = [=](double a, double b) {
        return sameBits(a, b) || std::abs(a - b) <= tolerance;
    };
    return sameStrokes(actual, expected, [=](const Point2D& a, const Point2D& b) {
        return near(a.x, b.x) && near(a.y, b.y) && sameBits(a.force, b.force);
    });
}

inline testing::AssertionResult isNear(const Point2D& actual, const Point2D& expected,
                                       double tolerance = 1e-9) {
    return isNear(Stroke{actual}, Stroke{expected}, tolerance);
}

/// Whether a routine appends exactly `expected` to the contents of `out` and returns
/// the size (for an empty `expected`: appends nothing and returns 0).
template <typename Routine>
testing::AssertionResult appends(Routine routine, const Stroke& expected, double tolerance = 1e-9) {
    const Stroke before{{-1.0, -2.0, 0.3}, {QUIET_NAN, 7.0, 0.0}};
    Stroke out = before;
    const std::int64_t count = routine(out);
    const std::size_t size = expected.empty() ? 0 : before.size() + expected.size();
    if (count != static_cast<std::int64_t>(size)) {
        return testing::AssertionFailure() << "returned " << count << " instead of " << size;
    }
    const auto kept = hasBitsOf({out.begin(), out.begin() + 2}, before);
    return kept ? isNear(Stroke(out.begin() + 2, out.end()), expected, tolerance)
                : testing::AssertionFailure() << "previous contents: " << kept.message();
}

}  // namespace Scrivo::test
