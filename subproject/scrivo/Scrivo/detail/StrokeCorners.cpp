#include "Scrivo/detail/StrokeCorners.h"

#include "Scrivo/detail/CornerScan.h"

#include <algorithm>
#include <cstddef>

namespace Scrivo::detail {

namespace {

/// Points of the span.
constexpr std::int64_t SPAN = 10;
/// No corner lies closer to the ends of the stroke than this many points.
constexpr std::int64_t HALF_SPAN = 5;
/// chord / path below which a span may hold a corner.
constexpr double BENT = 0.95;

class Scan {
public:
    explicit Scan(Stroke stroke)
        : m_stroke(stroke), m_size(static_cast<std::int64_t>(stroke.size())) {}

    std::vector<std::int32_t> run() {
        std::int64_t i = SPAN;
        sumSegments(1, i);
        float previous = 1.0F;
        while (i + HALF_SPAN <= m_size) {
            const float ratio = slideTo(i);
            const bool bendsMost = static_cast<double>(previous) < BENT && ratio >= previous;
            if (!bendsMost) {
                previous = ratio;
                ++i;
                continue;
            }
            previous = 1.0F;
            const std::int64_t corner = farthestFromChord(m_stroke, i - SPAN, i - 1);
            if (corner < HALF_SPAN || m_size < corner + HALF_SPAN) {
                ++i;
                continue;
            }
            m_corners.push_back(static_cast<std::int32_t>(corner));
            const std::int64_t end = std::min(i + SPAN - 2, m_size);
            sumSegments(i - 1, end);
            i = end;
        }
        m_corners.push_back(static_cast<std::int32_t>(m_size - 1));
        return m_corners;
    }

private:
    [[nodiscard]] float segment(std::int64_t from, std::int64_t to) const {
        return static_cast<float>(distance(m_stroke[static_cast<std::size_t>(from)],
                                           m_stroke[static_cast<std::size_t>(to)]));
    }

    /// The span's length becomes that of the segments ending at `first` to
    /// `last` - 1.
    void sumSegments(std::int64_t first, std::int64_t last) {
        m_length = 0.0F;
        for (std::int64_t j = first; j < last; ++j) {
            m_length += segment(j - 1, j);
        }
    }

    /// Lets point `i` in and the oldest out; returns chord / path.
    float slideTo(std::int64_t i) {
        const float in = segment(i - 1, i);
        const float out = segment(i - SPAN, i - SPAN + 1);
        m_length = m_length + in - out;
        return segment(i - SPAN + 1, i) / m_length;
    }

    Stroke m_stroke;
    std::int64_t m_size;
    float m_length = 0.0F;
    std::vector<std::int32_t> m_corners{0};
};

}  // namespace

std::vector<std::int32_t> strokeCorners(Stroke stroke) {
    const auto n = static_cast<std::int64_t>(stroke.size());
    if (n < SPAN) {
        return {0, static_cast<std::int32_t>(n - 1)};
    }
    if (n == SPAN) {
        return {0};
    }
    return Scan(stroke).run();
}

}  // namespace Scrivo::detail
