#include "Scrivo/detail/CornerScan.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Scrivo::detail {

namespace {

const Point2D& at(Stroke stroke, std::int64_t i) {
    return stroke[static_cast<std::size_t>(i)];
}

/// The sliding span. `last` is the index of the point that enters it next.
///
/// Its length is a float, rounded once an update. A double would round
/// differently, a span on the threshold would change sides, and the corner
/// would move by a point.
class Span {
public:
    explicit Span(Stroke stroke) : m_stroke(stroke), m_last(LIMIT) { addSegments(1, LIMIT); }

    [[nodiscard]] std::int64_t last() const { return m_last; }

    /// Whether a corner at index `i` would be within half a span of the end.
    [[nodiscard]] bool isNearEnd(std::int64_t i) const {
        return static_cast<double>(i) + LIMIT * 0.5 > static_cast<double>(m_stroke.size());
    }
    [[nodiscard]] static bool isNearStart(std::int64_t i) {
        return static_cast<double>(i) < LIMIT * 0.5;
    }

    /// Lets point `last` in and the oldest out; returns chord / path.
    double slide() {
        const double in = distance(at(m_stroke, m_last), at(m_stroke, m_last - 1));
        const double out = distance(at(m_stroke, m_last - LIMIT), at(m_stroke, m_last - LIMIT + 1));
        const double chord = distance(at(m_stroke, m_last), at(m_stroke, m_last + 1 - LIMIT));
        m_length = static_cast<float>(static_cast<double>(m_length) + in - out);
        return static_cast<float>(chord) / m_length;
    }

    void advance() { ++m_last; }

    /// Starts again behind the span, with the path from point `last` - 2 on.
    void restart() {
        m_length = 0.0F;
        const auto n = static_cast<std::int64_t>(m_stroke.size());
        const std::int64_t end = m_last + LIMIT - 2;
        const std::int64_t stop = end < n ? end : n;
        addSegments(m_last - 1, stop);
        m_last = stop;
    }

private:
    /// Adds the segments that end at the points `from` to `to` - 1.
    void addSegments(std::int64_t from, std::int64_t to) {
        for (std::int64_t j = from; j < to; ++j) {
            m_length = static_cast<float>(static_cast<double>(m_length) +
                                          distance(at(m_stroke, j - 1), at(m_stroke, j)));
        }
    }

    Stroke m_stroke;
    std::int64_t m_last;
    float m_length = 0.0F;
};

/// Where the span that ends before `last` bends most, or -1 when that is within
/// half a span of either end of the stroke.
std::int64_t cornerBefore(Stroke stroke, const Span& span) {
    const std::int64_t corner = farthestFromChord(stroke, span.last() - LIMIT, span.last() - 1);
    return Span::isNearStart(corner) || span.isNearEnd(corner) ? -1 : corner;
}

}  // namespace

std::int64_t farthestFromChord(Stroke stroke, std::int64_t from, std::int64_t to) {
    const auto base = static_cast<float>(distance(at(stroke, from), at(stroke, to)));
    float best = 0.0F;
    std::int64_t result = -1;
    for (std::int64_t i = from + 1; i < to; ++i) {
        const auto a = static_cast<float>(distance(at(stroke, from), at(stroke, i)));
        const auto b = static_cast<float>(distance(at(stroke, i), at(stroke, to)));
        const float detour = (b + a) / base;
        if (detour > best) {
            best = detour;
            result = i;
        }
    }
    return result;
}

std::vector<Point2D> findCorners(Stroke stroke, std::size_t atMost) {
    std::vector<Point2D> corners;
    const auto n = static_cast<std::int64_t>(stroke.size());
    if (n <= LIMIT) {
        return corners;
    }
    Span span(stroke);
    double previous = 1.0;
    while (span.last() < n && !span.isNearEnd(span.last())) {
        const double ratio = span.slide();
        const bool bendsMost = ratio >= previous && previous < RATIO_ANGLE;
        if (!bendsMost) {
            previous = ratio;
            span.advance();
            continue;
        }
        previous = 1.0;
        const std::int64_t corner = cornerBefore(stroke, span);
        if (corner < 0) {
            span.advance();
            continue;
        }
        corners.push_back(at(stroke, corner));
        if (corners.size() > atMost) {
            break;
        }
        span.restart();
    }
    return corners;
}

}  // namespace Scrivo::detail
