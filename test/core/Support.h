#pragma once

#include "Scrivo/Scrivo.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

/// What the suites share: strokes to draw, matchers that name the first
/// difference, exact measures in double, and a seeded source of numbers.
namespace Scrivo::test {

using Stroke = std::vector<Point2D>;

inline constexpr double INF = std::numeric_limits<double>::infinity();
inline constexpr double QUIET_NAN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double PI = 3.141592653589793;

/// The neighbours of a double.
inline double above(double v) {
    return std::nextafter(v, INF);
}
inline double below(double v) {
    return std::nextafter(v, -INF);
}
/// The neighbours of a float: `distance` tells no closer lengths apart.
inline double floatAbove(float v) {
    return std::nextafter(v, std::numeric_limits<float>::infinity());
}
inline double floatBelow(float v) {
    return std::nextafter(v, -std::numeric_limits<float>::infinity());
}

inline Point2D operator+(const Point2D& a, const Point2D& b) {
    return {a.x + b.x, a.y + b.y, 0.0};
}
inline Point2D operator-(const Point2D& a, const Point2D& b) {
    return {a.x - b.x, a.y - b.y, 0.0};
}
inline Point2D operator*(double s, const Point2D& p) {
    return {s * p.x, s * p.y, 0.0};
}
inline double dot(const Point2D& u, const Point2D& v) {
    return u.x * v.x + u.y * v.y;
}
inline double cross(const Point2D& u, const Point2D& v) {
    return u.x * v.y - u.y * v.x;
}
/// In double, unlike the library's `distance`.
inline double length(const Point2D& v) {
    return std::hypot(v.x, v.y);
}
inline Point2D polar(double radius, double angle) {
    return {radius * std::cos(angle), radius * std::sin(angle), 0.0};
}

// ---------------------------------------------------------------------------
// Strokes
// ---------------------------------------------------------------------------

/// A stroke, what it is about, and what becomes of it.
template <typename Expected>
struct Case {
    const char* name;
    Stroke stroke;
    Expected expected;
};

/// `steps` even steps from each corner to the next; inner corners occur once.
inline Stroke chain(const Stroke& corners, int steps) {
    Stroke stroke{corners.front()};
    for (std::size_t i = 1; i < corners.size(); ++i) {
        for (int k = 1; k < steps; ++k) {
            const double t = static_cast<double>(k) / steps;
            stroke.push_back(corners[i - 1] + t * (corners[i] - corners[i - 1]));
        }
        stroke.push_back(corners[i]);
    }
    return stroke;
}

/// A chain that returns to its first corner.
inline Stroke closedChain(Stroke corners, int steps) {
    corners.push_back(corners.front());
    return chain(corners, steps);
}

/// A clean outline: 21 points an edge, inner corners twice.
inline Stroke outline(const Stroke& corners) {
    Stroke result;
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const Stroke edge = chain({corners[i - 1], corners[i]}, 20);
        result.insert(result.end(), edge.begin(), edge.end());
    }
    return result;
}

inline Stroke ellipse(Point2D centre, double rx, double ry, double turn, int steps) {
    Stroke stroke;
    for (int i = 0; i <= steps; ++i) {
        const double t = 2 * PI * (i % steps) / steps;
        stroke.push_back(centre + polar(rx * std::cos(t), turn) +
                         polar(ry * std::sin(t), turn + PI / 2));
    }
    return stroke;
}

template <typename Map>
Stroke mapped(Stroke stroke, Map map) {
    std::transform(stroke.begin(), stroke.end(), stroke.begin(), map);
    return stroke;
}

inline Stroke withForce(const Stroke& stroke, double force) {
    return mapped(stroke, [=](const Point2D& p) { return Point2D{p.x, p.y, force}; });
}

inline Stroke mirrored(const Stroke& stroke) {
    return mapped(stroke, [](const Point2D& p) { return Point2D{p.x, -p.y, p.force}; });
}

/// In fractions of an area of `width` by `height`.
inline Stroke fractions(const Stroke& stroke, double width, double height) {
    return mapped(stroke, [=](const Point2D& p) {
        return Point2D{p.x / width, p.y / height, p.force};
    });
}

// ---------------------------------------------------------------------------
// Matchers
// ---------------------------------------------------------------------------

/// Whether two doubles have the same bits; one NaN is like another.
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

/// Whether a routine appends exactly `expected` behind what `out` held, and
/// returns the size (0, and nothing appended, for an empty `expected`).
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
                : testing::AssertionFailure() << "what was there: " << kept.message();
}

// ---------------------------------------------------------------------------
// Random numbers
// ---------------------------------------------------------------------------

/// Seeded numbers, the same on every platform. SCRIVO_TEST_SEED sets another
/// seed; put `trace()` into SCOPED_TRACE so that a failure shows it.
class Random {
public:
    explicit Random(std::uint64_t seed = 20260101) : m_seed(seed) {
        if (const char* given = std::getenv("SCRIVO_TEST_SEED")) {
            m_seed = std::strtoull(given, nullptr, 10);
        }
        m_engine.seed(m_seed);
    }
    [[nodiscard]] std::string trace() const {
        return "SCRIVO_TEST_SEED=" + std::to_string(m_seed) + ", round " + std::to_string(m_round);
    }
    void nextRound() { ++m_round; }

    /// In [low, high).
    double in(double low, double high) {
        return low + (high - low) * static_cast<double>(m_engine() >> 11U) * 0x1p-53;
    }
    int below(int bound) { return static_cast<int>(in(0, bound)); }
    double oneOf(std::initializer_list<double> values) {
        return values.begin()[below(static_cast<int>(values.size()))];
    }
    Point2D& oneOf(Stroke& stroke) {
        return stroke[static_cast<std::size_t>(below(static_cast<int>(stroke.size())))];
    }
    Point2D jitter(double size) { return {in(-size, size), in(-size, size), 0.0}; }

private:
    std::uint64_t m_seed;
    std::mt19937_64 m_engine;
    int m_round = 0;
};

}  // namespace Scrivo::test
