#pragma once

#include "Strokes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>

namespace Scrivo::test {

/// Seeded random numbers, the same on every platform. SCRIVO_TEST_SEED sets another
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
