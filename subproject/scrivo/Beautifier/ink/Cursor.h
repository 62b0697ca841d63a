#pragma once

#include "Beautifier/ink/Frame.h"

#include <cstddef>

namespace Scrivo::beautifier {

/// Samples nearer to each other than this share of the size are one sample: a
/// resting pen.
inline constexpr double SAME_POINT = 1e-9;

/// Walks the distinct samples of a stroke in the frame's units.
class Cursor {
public:
    Cursor(const Ink& ink, const Frame& frame) : m_ink(ink), m_frame(frame) {}

    /// Moves to the next sample that differs from the current one.
    bool next(Vec& point) {
        while (m_index < m_ink.samples.size()) {
            const Vec candidate = at(m_index++);
            if (m_started && norm(candidate - m_last) <= SAME_POINT) {
                continue;
            }
            m_started = true;
            point = m_last = candidate;
            return true;
        }
        return false;
    }

private:
    Vec at(std::size_t i) const {
        const Vec p = m_ink.at(m_ink.samples[i]);
        return {(p.x - m_frame.centre.x) / m_frame.extent,
                (p.y - m_frame.centre.y) / m_frame.extent};
    }

    const Ink& m_ink;
    const Frame& m_frame;
    std::size_t m_index = 0;
    bool m_started = false;
    Vec m_last;
};

}  // namespace Scrivo::beautifier
