#include "Scrivo/detail/LineSnapping.h"

#include "Scrivo/detail/Console.h"
#include "Scrivo/detail/Edges.h"
#include "Scrivo/detail/Sampling.h"
#include "Scrivo/detail/StraightLine.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Scrivo::detail {

namespace {

/// |cosine| from which two directions count as parallel.
constexpr double PARALLEL_COSINE = 0.87;
/// |slope| above which a line becomes vertical.
constexpr double UPRIGHT_SLOPE = 11.5;

struct Segment {
    Point2D first;
    Point2D last;
};

/// Interpolates by shares of the length, unlike `appendEdge`: last bits differ.
void appendByShares(std::vector<Point2D>& out, const Segment& s) {
    appendSamples(out, [&](double i) {
        const double t = i / NUM_POINT;
        return Point2D{s.first.x + t * (s.last.x - s.first.x),
                       s.first.y + t * (s.last.y - s.first.y)};
    });
}

/// Up to three anchors: those nearest to the line, nearest first.
class Ranking {
public:
    [[nodiscard]] std::size_t count() const { return m_count; }
    const Point2D& operator[](std::size_t i) const { return m_slots[i].anchor; }

    /// On a tie the later anchor takes the first or second place, the earlier
    /// one keeps the third. Pinned by LineRedraw.TiedAnchors.
    void enter(double distance, const Point2D& anchor) {
        if (distance <= m_slots[0].distance) {
            insertAt(0, {distance, anchor});
        } else if (distance <= m_slots[1].distance) {
            insertAt(1, {distance, anchor});
        } else if (distance < m_slots[2].distance) {
            insertAt(2, {distance, anchor});
        }
    }

private:
    struct Slot {
        double distance = UNKNOWN_EXTENT;
        Point2D anchor;
    };

    void insertAt(std::size_t place, const Slot& slot) {
        for (std::size_t i = m_slots.size() - 1; i > place; --i) {
            m_slots[i] = m_slots[i - 1];
        }
        m_slots[place] = slot;
        if (m_count < m_slots.size()) {
            ++m_count;
        }
    }

    std::array<Slot, 3> m_slots;
    std::size_t m_count = 0;
};

/// Snaps the segment's ends to the feet of nearby anchors and ranks the anchors
/// that lie beside the segment. Each anchor is compared with the segment as the
/// anchors before it left it.
Ranking snapToAnchors(Segment& s, Stroke anchors) {
    Ranking candidates;
    for (const Point2D& anchor : anchors) {
        const Point2D foot = projection(s.first, s.last, anchor);
        const double offset = singleDistance(anchor, foot);
        // A vertical segment is tilted by a unit, so that the parameter below is
        // defined. Any anchor does that, even one that is out of reach.
        if (s.last.x - s.first.x == 0.0) {
            s.first.x += 1.0;
        }
        if (!(offset < NEAR)) {
            continue;
        }
        const double t = (foot.x - s.first.x) / (s.last.x - s.first.x);
        if (singleDistance(s.first, foot) < NEAR) {
            s.first = foot;
        } else if (singleDistance(s.last, foot) < NEAR) {
            s.last = foot;
        } else if (t < 0.0 || t > 1.0) {
            continue;
        }
        candidates.enter(offset, anchor);
    }
    return candidates;
}

/// Two anchors whose connection is parallel to a segment; `near` is the one on
/// the side of the segment's first end.
struct AnchorPair {
    Point2D near;
    Point2D far;
};

/// The pair most nearly parallel to the segment, the pair of nearer anchors on
/// a tie; nothing when no pair is nearly parallel.
std::optional<AnchorPair> parallelPair(const Ranking& candidates, const Segment& s) {
    const Point2D along = difference(s.first, s.last);
    std::optional<AnchorPair> best;
    double bestCosine = 0.0;
    for (std::size_t i = 0; i < candidates.count(); ++i) {
        for (std::size_t j = i + 1; j < candidates.count(); ++j) {
            const Point2D& a = candidates[i];
            const Point2D& b = candidates[j];
            const double lean = cosine(difference(a, b), along);
            if (std::abs(lean) >= PARALLEL_COSINE && std::abs(lean) > bestCosine) {
                bestCosine = std::abs(lean);
                best = lean > 0.0 ? AnchorPair{a, b} : AnchorPair{b, a};
            }
        }
    }
    return best;
}

/// The point on the line through the pair at the distance of `end` from `anchor`, on
/// the same side; the anchor itself when that distance is small.
Point2D placedEnd(const Point2D& end, const Point2D& anchor, const AnchorPair& pair) {
    const Point2D along = difference(pair.near, pair.far);
    const Point2D offset = difference(anchor, end);
    const double side = offset.x * along.x + offset.y * along.y < 0.0 ? -1.0 : 1.0;
    const double length = std::sqrt(along.x * along.x + along.y * along.y);
    const double reach = side * singleDistance(anchor, end) / length;
    const Point2D placed{anchor.x + reach * along.x, anchor.y + reach * along.y, 0.0};
    return singleDistance(placed, anchor) < 2 * NEAR ? anchor : placed;
}

/// Lays a segment along the line through two anchors.
///
/// Each end is measured from the anchor on its own side: a line drawn from one
/// mark to another ends on both of them, and one drawn past them keeps its
/// length beyond. Anchors close together determine the ends poorly: if the ends
/// would be swapped, they are put on the anchors, so that the segment keeps its
/// direction.
Segment laidAlong(const AnchorPair& pair, const Segment& s) {
    const Segment laid{placedEnd(s.first, pair.near, pair), placedEnd(s.last, pair.far, pair)};
    const Point2D along = difference(pair.near, pair.far);
    const Point2D travel = difference(laid.first, laid.last);
    if (travel.x * along.x + travel.y * along.y > 0.0) {
        return laid;
    }
    return {pair.near, pair.far};
}

Point2D translated(const Point2D& p, const Point2D& from, const Point2D& to) {
    return {p.x + (to.x - from.x), p.y + (to.y - from.y), 0.0};
}

/// The parallel to a segment that is not vertical, through `anchor`.
Segment parallelThrough(const Point2D& anchor, const Segment& s) {
    const double k = (s.last.y - s.first.y) / (s.last.x - s.first.x);
    const auto foot = [&](const Point2D& end) {
        const double x = (end.y * k + end.x + anchor.x * (k * k) - k * anchor.y) / (k * k + 1);
        return Point2D{x, k * x + anchor.y - k * anchor.x, 0.0};
    };
    Segment result{foot(s.first), foot(s.last)};
    if (singleDistance(result.first, anchor) < 2 * NEAR) {
        result.first = anchor;
    } else if (singleDistance(result.last, anchor) < 2 * NEAR) {
        result.last = anchor;
    }
    return result;
}

/// The vertical through `anchor`, of an exactly vertical segment.
Segment uprightThrough(const Point2D& anchor, const Segment& s) {
    // Hosts may capture this output: it is part of the interface.
    printLine("hori line ");
    Segment result{{anchor.x, s.first.y, 0.0}, {anchor.x, s.last.y, 0.0}};
    if (std::abs(anchor.y - s.first.y) < 2 * NEAR) {
        result.first.y = anchor.y;
    } else if (std::abs(anchor.y - s.last.y) < 2 * NEAR) {
        result.last.y = anchor.y;
    }
    return result;
}

/// Moves a segment to one anchor: a nearby end onto it, or else the whole line so
/// that it passes through it.
Segment movedTo(const Point2D& anchor, const Segment& s) {
    if (singleDistance(anchor, s.first) < NEAR) {
        return {anchor, translated(s.last, s.first, anchor)};
    }
    if (singleDistance(anchor, s.last) < NEAR) {
        return {anchor, translated(s.first, s.last, anchor)};
    }
    return s.first.x != s.last.x ? parallelThrough(anchor, s) : uprightThrough(anchor, s);
}

/// Appends a segment without anchors, level or upright when nearly so.
void appendStraightened(std::vector<Point2D>& out, Segment s) {
    const auto xAt = [&](double i) { return i * (s.last.x - s.first.x) / NUM_POINT + s.first.x; };
    const auto yAt = [&](double i) { return i * (s.last.y - s.first.y) / NUM_POINT + s.first.y; };
    const double k = slope(s.last, s.first);
    if (std::abs(k) < ROTATION_THRESHOLD) {
        s.last = rotatedClockwise(s.last, s.first, std::atan(k));
        appendSamples(out, [&](double i) { return Point2D{xAt(i), s.first.y}; });
    } else if (std::abs(k) > UPRIGHT_SLOPE) {
        appendSamples(out, [&](double i) { return Point2D{s.first.x, yAt(i)}; });
    } else {
        appendSamples(out, [&](double i) {
            const double x = xAt(i);
            return Point2D{x, (x - s.first.x) * k + s.first.y};
        });
    }
}

}  // namespace

std::int64_t reDrawLine(std::vector<Point2D>& out, Stroke stroke, Stroke anchors) {
    std::vector<Point2D> fitted;
    if (fitLine(fitted, stroke) == 0) {
        return 0;
    }
    Segment segment{fitted.front(), fitted.back()};
    const Ranking candidates = snapToAnchors(segment, anchors);
    if (candidates.count() == 0) {
        appendStraightened(out, segment);
    } else if (const auto pair = parallelPair(candidates, segment)) {
        appendByShares(out, laidAlong(*pair, segment));
    } else {
        appendByShares(out, movedTo(candidates[0], segment));
    }
    return sizeOf(out);
}

}  // namespace Scrivo::detail
