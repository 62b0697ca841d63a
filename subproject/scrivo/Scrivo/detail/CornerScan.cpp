#include "Scrivo/detail/CornerScan.h"

#include <algorithm>
#include <limits>

namespace Scrivo::detail {

namespace {

constexpr std::size_t ALL = std::numeric_limits<std::size_t>::max();

const Point2D& at(Stroke stroke, std::int64_t i) {
    return stroke[static_cast<std::size_t>(i)];
}

/// The sliding span. `last` is the index of the point that enters it next.
///
/// Its length is a float. A double would round differently, and a ratio at the
/// threshold could move a corner by a point.
class Span {
public:
    Span(Stroke stroke, SpanRounding rounding)
        : m_stroke(stroke), m_rounding(rounding), m_last(LIMIT) {
        sumSegments(1, LIMIT);
    }

    [[nodiscard]] std::int64_t last() const { return m_last; }

    /// Whether a corner at index `i` would be within half a span of the end.
    [[nodiscard]] bool isNearEnd(std::int64_t i) const {
        return static_cast<double>(i) + LIMIT * 0.5 > static_cast<double>(m_stroke.size());
    }
    [[nodiscard]] static bool isNearStart(std::int64_t i) {
        return static_cast<double>(i) < LIMIT * 0.5;
    }

    /// Adds point `last` and drops the oldest one; returns chord / path.
    float slide() {
        const double in = segmentTo(m_last);
        const double out = segmentTo(m_last - LIMIT + 1);
        const double chord = singleDistance(at(m_stroke, m_last), at(m_stroke, m_last + 1 - LIMIT));
        if (m_rounding == SpanRounding::ONCE) {
            m_length = static_cast<float>(static_cast<double>(m_length) + in - out);
        } else {
            m_length += static_cast<float>(in);
            m_length -= static_cast<float>(out);
        }
        return static_cast<float>(chord) / m_length;
    }

    void advance() { ++m_last; }

    /// Restarts after the span, with the path from point `last` - 2 on.
    void restart() {
        const auto n = static_cast<std::int64_t>(m_stroke.size());
        const std::int64_t stop = std::min(m_last + LIMIT - 2, n);
        sumSegments(m_last - 1, stop);
        m_last = stop;
    }

private:
    /// Length of the segment that ends at point `i`.
    [[nodiscard]] double segmentTo(std::int64_t i) const {
        return singleDistance(at(m_stroke, i - 1), at(m_stroke, i));
    }

    /// The length becomes that of the segments that end at the points `from` to
    /// `to` - 1, rounded after each.
    void sumSegments(std::int64_t from, std::int64_t to) {
        m_length = 0.0F;
        for (std::int64_t i = from; i < to; ++i) {
            m_length += static_cast<float>(segmentTo(i));
        }
    }

    Stroke m_stroke;
    SpanRounding m_rounding;
    std::int64_t m_last;
    float m_length = 0.0F;
};

/// Where the span before `last` bends most, or -1 when that is within half a
/// span of either end of the stroke.
std::int64_t cornerBefore(Stroke stroke, const Span& span) {
    const std::int64_t corner = farthestFromChord(stroke, span.last() - LIMIT, span.last() - 1);
    return Span::isNearStart(corner) || span.isNearEnd(corner) ? -1 : corner;
}

}  // namespace

std::int64_t farthestFromChord(Stroke stroke, std::int64_t from, std::int64_t to) {
    const auto base = static_cast<float>(singleDistance(at(stroke, from), at(stroke, to)));
    float best = 0.0F;
    std::int64_t result = -1;
    for (std::int64_t i = from + 1; i < to; ++i) {
        const auto a = static_cast<float>(singleDistance(at(stroke, from), at(stroke, i)));
        const auto b = static_cast<float>(singleDistance(at(stroke, i), at(stroke, to)));
        const float detour = (b + a) / base;
        if (detour > best) {
            best = detour;
            result = i;
        }
    }
    return result;
}

std::vector<std::int64_t> scanCorners(Stroke stroke, SpanRounding rounding, std::size_t atMost) {
    std::vector<std::int64_t> corners;
    if (static_cast<std::int64_t>(stroke.size()) <= LIMIT) {
        return corners;
    }
    Span span(stroke, rounding);
    float previous = 1.0F;
    while (corners.size() <= atMost && !span.isNearEnd(span.last())) {
        const float ratio = span.slide();
        // Of the two, a ratio above the threshold is the one that can be predicted.
        const bool bendsMost = static_cast<double>(previous) < RATIO_ANGLE && ratio >= previous;
        if (!bendsMost) {
            previous = ratio;
            span.advance();
            continue;
        }
        previous = 1.0F;
        const std::int64_t corner = cornerBefore(stroke, span);
        if (corner < 0) {
            span.advance();
        } else {
            corners.push_back(corner);
            span.restart();
        }
    }
    return corners;
}

std::vector<Point2D> findCorners(Stroke stroke, std::size_t atMost) {
    std::vector<Point2D> corners;
    for (const std::int64_t i : scanCorners(stroke, SpanRounding::ONCE, atMost)) {
        corners.push_back(at(stroke, i));
    }
    return corners;
}

std::vector<std::int32_t> strokeCorners(Stroke stroke) {
    std::vector<std::int32_t> corners{0};
    for (const std::int64_t i : scanCorners(stroke, SpanRounding::TWICE, ALL)) {
        corners.push_back(static_cast<std::int32_t>(i));
    }
    const auto n = static_cast<std::int64_t>(stroke.size());
    if (n != LIMIT) {
        corners.push_back(static_cast<std::int32_t>(n - 1));
    }
    return corners;
}

}  // namespace Scrivo::detail
