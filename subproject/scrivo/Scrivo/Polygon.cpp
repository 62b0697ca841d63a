#include "Scrivo/Polygon.h"

#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/Polygon.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <limits>
#include <optional>
#include <vector>

namespace Scrivo {

namespace {

using detail::Stroke;

/// Start value of a running maximum: the smallest 32-bit signed integer.
constexpr double LOWEST = -2147483648.0;

/// Finite stand-in for the slope of a vertical edge: of two verticals neither
/// is steeper, and its arc tangent is never asked for.
constexpr double VERTICAL_SLOPE = 2147483647.0;

std::int64_t sizeOf(const std::vector<Point2D>& stroke) {
    return static_cast<std::int64_t>(stroke.size());
}

/// Slope of the line through `a` and `b`.
double slope(const Point2D& a, const Point2D& b) {
    return a.x == b.x ? VERTICAL_SLOPE : (a.y - b.y) / (a.x - b.x);
}

/// Whether a ratio counts as 1: strictly between 0.95 and 1.05.
bool isNearlyOne(double ratio) {
    return 0.95 < ratio && ratio < 1.05;
}

// ---------------------------------------------------------------------------
// Straight segments
// ---------------------------------------------------------------------------

/// Appends NUM_POINT + 1 points, the i-th of them `at(i)`.
template <typename PointAt>
void appendSamples(std::vector<Point2D>& out, PointAt at) {
    for (std::int32_t i = 0; static_cast<double>(i) < NUM_POINT + 1.0; ++i) {
        const Point2D p = at(static_cast<double>(i));
        out.push_back({p.x, p.y, 0.0});
    }
}

/// The points of extreme coordinates, the earliest of equals.
struct Extremes {
    std::size_t maxX = 0;
    std::size_t minX = 0;
    std::size_t maxY = 0;
    std::size_t minY = 0;
};

/// The two points that span the longer extent of a stroke, height on a tie.
struct ExtremePair {
    Point2D low;
    Point2D high;
};

ExtremePair longerExtent(Stroke stroke, const Extremes& e) {
    const double extentX = detail::distance(stroke[e.maxX], stroke[e.minX]);
    const double extentY = detail::distance(stroke[e.maxY], stroke[e.minY]);
    if (extentX > extentY) {
        return {stroke[e.minX], stroke[e.maxX]};
    }
    return {stroke[e.minY], stroke[e.maxY]};
}

/// Sums for the least-squares line, and the extremes, of one pass.
struct LineSums {
    double x = 0.0;
    double y = 0.0;
    double xx = 0.0;
    double xy = 0.0;
    Extremes extremes;
};

LineSums sumUp(Stroke stroke) {
    LineSums s;
    double maxX = LOWEST;
    double minX = UNKNOWN_EXTENT;
    double maxY = LOWEST;
    double minY = UNKNOWN_EXTENT;
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        const Point2D& p = stroke[i];
        s.x += p.x;
        s.y += p.y;
        s.xx += p.x * p.x;
        s.xy += p.x * p.y;
        if (p.x > maxX) {
            maxX = p.x;
            s.extremes.maxX = i;
        }
        if (p.x < minX) {
            minX = p.x;
            s.extremes.minX = i;
        }
        if (p.y > maxY) {
            maxY = p.y;
            s.extremes.maxY = i;
        }
        if (p.y < minY) {
            minY = p.y;
            s.extremes.minY = i;
        }
    }
    return s;
}

/// Whether the chord is too steep for y as a function of x.
bool isSteep(Stroke stroke) {
    constexpr double STEEP = 20.0;
    const double dx = stroke.back().x - stroke.front().x;
    const double dy = stroke.back().y - stroke.front().y;
    // A chord exactly one unit wide is measured one unit further right. Nothing
    // in the geometry asks for it; drawings must not change.
    const double divisor = std::abs(dx) == 1.0 ? dx + 1.0 : dx;
    return std::abs(dy / divisor) > STEEP;
}

void appendFittedLine(std::vector<Point2D>& out, Stroke stroke, const LineSums& sums,
                      const ExtremePair& ends, std::int32_t steps) {
    const auto n = static_cast<double>(stroke.size());
    const double determinant = sums.x * sums.x - sums.xx * n;
    const double a = (sums.x * sums.y - n * sums.xy) / determinant;
    const double b = (sums.xy * sums.x - sums.xx * sums.y) / determinant;
    const Point2D onAxis{0.0, b, 0.0};
    const Point2D besideAxis{1.0, a + b, 0.0};
    const Point2D from = detail::projection(onAxis, besideAxis, ends.low);
    const Point2D to = detail::projection(onAxis, besideAxis, ends.high);
    const double step = (to.x - from.x) / steps;
    for (std::int32_t i = 0; i <= steps; ++i) {
        const double x = i * step + from.x;
        out.push_back({x, a * x + b, 0.0});
    }
}

void appendVertical(std::vector<Point2D>& out, double x, double fromY, double toY,
                    std::int32_t steps) {
    const double step = (toY - fromY) / steps;
    for (std::int32_t i = 0; i <= steps; ++i) {
        out.push_back({x, i * step + fromY, 0.0});
    }
}

std::int64_t appendFit(std::vector<Point2D>& out, Stroke stroke) {
    if (stroke.size() < 2) {
        return 0;
    }
    const LineSums sums = sumUp(stroke);
    const ExtremePair ends = longerExtent(stroke, sums.extremes);
    const auto steps = static_cast<std::int32_t>(NUM_POINT);
    if (isSteep(stroke)) {
        const double meanX = sums.x / static_cast<double>(stroke.size());
        appendVertical(out, meanX, ends.low.y, ends.high.y, steps);
    } else {
        appendFittedLine(out, stroke, sums, ends, steps);
    }
    return steps + 1;
}

// ---------------------------------------------------------------------------
// The test for a straight stroke
// ---------------------------------------------------------------------------

/// chord / path above which a stroke is straight without a further look.
constexpr double STRAIGHT_RATIO = 0.98;
/// chord / path below which it is not.
constexpr double BENT_RATIO = 0.75;

Extremes extremesOf(Stroke stroke) {
    Extremes e;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        const Point2D& p = stroke[i];
        if (p.x > stroke[e.maxX].x) {
            e.maxX = i;
        }
        if (p.x < stroke[e.minX].x) {
            e.minX = i;
        }
        if (p.y > stroke[e.maxY].y) {
            e.maxY = i;
        }
        if (p.y < stroke[e.minY].y) {
            e.minY = i;
        }
    }
    return e;
}

double pathLength(Stroke stroke) {
    double length = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        length += detail::distance(stroke[i - 1], stroke[i]);
    }
    return length;
}

/// Width of the band about the line through `a` and `b` that holds all points.
double bandWidth(Stroke stroke, const Point2D& a, const Point2D& b) {
    double largest = LOWEST;
    double smallest = UNKNOWN_EXTENT;
    for (const Point2D& p : stroke) {
        const double offset = detail::distance(p, detail::projection(a, b, p));
        const double signedOffset = detail::direction(a, b, p) < 0.0 ? offset : -offset;
        if (signedOffset > largest) {
            largest = signedOffset;
        }
        if (signedOffset < smallest) {
            smallest = signedOffset;
        }
    }
    return std::abs(largest - smallest);
}

// ---------------------------------------------------------------------------
// Straight lines: snapping and straightening
// ---------------------------------------------------------------------------

/// |cosine| from which two directions count as parallel.
constexpr double PARALLEL_COSINE = 0.87;
/// |slope| above which a line becomes vertical.
constexpr double UPRIGHT_SLOPE = 11.5;

struct Segment {
    Point2D first;
    Point2D last;
};

void appendSegment(std::vector<Point2D>& out, const Segment& s) {
    appendSamples(out, [&](double i) {
        const double t = i / NUM_POINT;
        return Point2D{s.first.x + t * (s.last.x - s.first.x),
                       s.first.y + t * (s.last.y - s.first.y)};
    });
}

/// The up to three anchors nearest to the line, nearest first.
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

/// Lets the segment's ends snap to the feet of nearby anchors and ranks the
/// anchors that lie beside the segment. A snapped end stays for the anchors
/// that follow.
Ranking snapToAnchors(Segment& s, Stroke anchors) {
    Ranking candidates;
    for (const Point2D& anchor : anchors) {
        const Point2D foot = detail::projection(s.first, s.last, anchor);
        const double offset = detail::distance(anchor, foot);
        // An upright segment leans by a unit, so that the parameter below is
        // defined; for any anchor, even one that is out of reach.
        if (s.last.x - s.first.x == 0.0) {
            s.first.x += 1.0;
        }
        if (!(offset < NEAR)) {
            continue;
        }
        const double t = (foot.x - s.first.x) / (s.last.x - s.first.x);
        if (detail::distance(s.first, foot) < NEAR) {
            s.first = foot;
        } else if (detail::distance(s.last, foot) < NEAR) {
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
/// a tie; none when all of them lean too much.
std::optional<AnchorPair> parallelPair(const Ranking& candidates, const Segment& s) {
    const Point2D along = detail::difference(s.first, s.last);
    std::optional<AnchorPair> best;
    double bestCosine = 0.0;
    for (std::size_t i = 0; i < candidates.count(); ++i) {
        for (std::size_t j = i + 1; j < candidates.count(); ++j) {
            const Point2D& a = candidates[i];
            const Point2D& b = candidates[j];
            const double cosine = detail::cosine(detail::difference(a, b), along);
            if (std::abs(cosine) >= PARALLEL_COSINE && std::abs(cosine) > bestCosine) {
                bestCosine = std::abs(cosine);
                best = cosine > 0.0 ? AnchorPair{a, b} : AnchorPair{b, a};
            }
        }
    }
    return best;
}

/// The place on the line through the pair that lies as far from `anchor` as
/// `end` does, on the same side; the anchor itself when that is near.
Point2D placedEnd(const Point2D& end, const Point2D& anchor, const AnchorPair& pair) {
    const Point2D along = detail::difference(pair.near, pair.far);
    const Point2D offset = detail::difference(anchor, end);
    const double side = offset.x * along.x + offset.y * along.y < 0.0 ? -1.0 : 1.0;
    const double length = std::sqrt(along.x * along.x + along.y * along.y);
    const double reach = side * detail::distance(anchor, end) / length;
    const Point2D placed{anchor.x + reach * along.x, anchor.y + reach * along.y, 0.0};
    return detail::distance(placed, anchor) < 2 * NEAR ? anchor : placed;
}

/// Lays a segment along the line through two anchors.
///
/// Each end is measured from the anchor on its own side: a line drawn from one
/// mark to another ends on both of them, and one drawn past them keeps its
/// length beyond. Anchors that lie close together say little about where an end
/// belongs; should the ends change places, they land on the anchors, so that
/// the segment keeps its direction of travel.
Segment laidAlong(const AnchorPair& pair, const Segment& s) {
    const Segment laid{placedEnd(s.first, pair.near, pair), placedEnd(s.last, pair.far, pair)};
    const Point2D along = detail::difference(pair.near, pair.far);
    const Point2D travel = detail::difference(laid.first, laid.last);
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
    if (detail::distance(result.first, anchor) < 2 * NEAR) {
        result.first = anchor;
    } else if (detail::distance(result.last, anchor) < 2 * NEAR) {
        result.last = anchor;
    }
    return result;
}

/// The vertical through `anchor`, of an exactly vertical segment.
Segment uprightThrough(const Point2D& anchor, const Segment& s) {
    // Part of the output of this branch, which hosts may capture.
    std::cout << "hori line " << std::endl;
    Segment result{{anchor.x, s.first.y, 0.0}, {anchor.x, s.last.y, 0.0}};
    if (std::abs(anchor.y - s.first.y) < 2 * NEAR) {
        result.first.y = anchor.y;
    } else if (std::abs(anchor.y - s.last.y) < 2 * NEAR) {
        result.last.y = anchor.y;
    }
    return result;
}

/// Brings a segment to one anchor: an end onto it, else its line through it.
Segment broughtTo(const Point2D& anchor, const Segment& s) {
    if (detail::distance(anchor, s.first) < NEAR) {
        return {anchor, translated(s.last, s.first, anchor)};
    }
    if (detail::distance(anchor, s.last) < NEAR) {
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
        s.last = detail::rotationLine(s.first, s.last, std::atan(k));
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

// ---------------------------------------------------------------------------
// Angles
// ---------------------------------------------------------------------------

bool isStraightLeg(double chord, double path) {
    return !(chord / path < RATIO_LINE);
}

bool hasStraightLegs(Stroke stroke, const Point2D& corner) {
    const double first = detail::distance(stroke.front(), corner);
    const double second = detail::distance(stroke.back(), corner);
    if (second > 2 * first || first > 2 * second) {
        return false;
    }
    double path = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        path += detail::distance(stroke[i], stroke[i - 1]);
        if (stroke[i].x == corner.x && stroke[i].y == corner.y) {
            // A pen that rests on the corner leaves it several times; the
            // second leg counts from the last of them.
            if (!isStraightLeg(first, path)) {
                return false;
            }
            path = 0.0;
        }
    }
    // No path behind the corner gives NaN, which is no reason to reject.
    return stroke.size() < 2 || isStraightLeg(second, path);
}

/// Slope by which a figure with a nearly level leg has to be turned. 0 when a
/// leg is level already or none is nearly so; the first leg goes first.
double legToLevel(const Point2D& first, const Point2D& corner, const Point2D& last) {
    const double k1 = slope(first, corner);
    const double k2 = slope(last, corner);
    if (k1 == 0.0 || k2 == 0.0) {
        return 0.0;
    }
    if (std::abs(k1) < ROTATION_THRESHOLD) {
        return k1;
    }
    return std::abs(k2) < ROTATION_THRESHOLD ? k2 : 0.0;
}

// ---------------------------------------------------------------------------
// Triangles
// ---------------------------------------------------------------------------

/// Width or height, in drawing-area units, of an edge that counts as upright or
/// level when a corner is placed beside it.
constexpr double FLAT = 2.0;

/// The two mirror positions that a corner may go to.
struct Mirrored {
    Point2D p;
    Point2D q;
};

/// The nearer one to `old`; `q` on a tie.
Point2D nearer(const Mirrored& m, const Point2D& old) {
    return detail::distance(m.p, old) < detail::distance(m.q, old) ? m.p : m.q;
}

/// The points at `length` from `origin` on a line of slope `m` through it.
Mirrored alongSlope(const Point2D& origin, double m, double length) {
    const double h = length / std::sqrt(m * m + 1);
    return {{origin.x + h, origin.y + m * h, 0.0}, {origin.x - h, origin.y - m * h, 0.0}};
}

Mirrored aboveAndBelow(const Point2D& origin, double length) {
    return {{origin.x, origin.y + length, 0.0}, {origin.x, origin.y - length, 0.0}};
}

/// Slope of the perpendicular to the line through `a` and `b`.
double perpendicularSlope(const Point2D& a, const Point2D& b) {
    return (a.x - b.x) / (b.y - a.y);
}

/// Lengths of a triangle's sides, named by the corners that they join.
struct Sides {
    double s01;
    double s12;
    double s02;
};

Sides sidesOf(const std::vector<Point2D>& c) {
    return {detail::distance(c[0], c[1]), detail::distance(c[1], c[2]),
            detail::distance(c[2], c[0])};
}

/// sqrt(a^2 + b^2) / c: 1 when a and b meet at a right angle opposite to c.
double pythagorasRatio(double a, double b, double c) {
    return std::sqrt(a * a + b * b) / c;
}

void reorder(std::vector<Point2D>& c, std::size_t i, std::size_t j, std::size_t k) {
    const std::array<Point2D, 3> old{c[0], c[1], c[2]};
    c[0] = old[i];
    c[1] = old[j];
    c[2] = old[k];
}

/// Whether the corners run counter-clockwise, the y axis pointing up.
bool isCounterClockwise(const std::vector<Point2D>& c) {
    return detail::direction(c[0], c[1], c[2]) > 0;
}

void makeEquilateral(std::vector<Point2D>& c, double side) {
    constexpr double HALF_SQRT_3 = 0.8660254037844386;
    constexpr double SQRT_3 = 1.7320508075688772;
    const Point2D middle{(c[0].x + c[1].x) * 0.5, (c[0].y + c[1].y) * 0.5, 0.0};
    Mirrored apex;
    if (c[0].y != c[1].y) {
        apex = alongSlope(middle, perpendicularSlope(c[0], c[1]), side * HALF_SQRT_3);
    } else {
        apex = aboveAndBelow(middle, side * SQRT_3 * 0.5);
    }
    // The position of smaller coordinates has to be strictly nearer.
    c[2] = detail::distance(apex.p, c[2]) > detail::distance(apex.q, c[2]) ? apex.q : apex.p;
}

/// Brings the corner between two nearly equal sides to the middle.
void centreIsoscelesApex(std::vector<Point2D>& c, const Sides& s) {
    if (isNearlyOne(s.s12 / s.s02)) {
        isCounterClockwise(c) ? reorder(c, 1, 2, 0) : reorder(c, 0, 2, 1);
    } else if (isNearlyOne(s.s01 / s.s02)) {
        isCounterClockwise(c) ? reorder(c, 1, 0, 2) : reorder(c, 2, 0, 1);
    }
}

/// Brings the corner of a nearly right angle to the middle.
void centreRightAngle(std::vector<Point2D>& c, const Sides& s) {
    if (isNearlyOne(pythagorasRatio(s.s12, s.s02, s.s01))) {
        isCounterClockwise(c) ? reorder(c, 1, 2, 0) : reorder(c, 0, 2, 1);
    } else if (isNearlyOne(pythagorasRatio(s.s02, s.s01, s.s12))) {
        isCounterClockwise(c) ? reorder(c, 2, 0, 1) : reorder(c, 1, 0, 2);
    }
}

/// Corner 2 stays on its line through corner 1, as far away as corner 0.
void makeIsosceles(std::vector<Point2D>& c, double leg) {
    const bool isUpright = std::abs(c[2].x - c[1].x) < FLAT;
    const Mirrored places = isUpright
                                ? aboveAndBelow(c[1], leg)
                                : alongSlope(c[1], (c[2].y - c[1].y) / (c[2].x - c[1].x), leg);
    c[2] = nearer(places, c[2]);
}

/// Corner 2 goes to `length` from corner 1, at a right angle to corner 0. The
/// side to corner 0 counts as level up to a height of `flat`.
void makeRightAngled(std::vector<Point2D>& c, double length, double flat) {
    const bool isLevel = std::abs(c[0].y - c[1].y) <= flat;
    const Mirrored places = isLevel ? aboveAndBelow(c[1], length)
                                    : alongSlope(c[1], perpendicularSlope(c[0], c[1]), length);
    c[2] = nearer(places, c[2]);
}

// ---------------------------------------------------------------------------
// Quadrangles
// ---------------------------------------------------------------------------

/// Cosine above which opposite sides count as parallel.
constexpr double PARALLEL_SIDES = 0.95;
/// |cosine| below which adjacent sides count as perpendicular.
constexpr double RIGHT_ANGLE_COSINE = 0.08;
/// Drawing-area units by which an edge may lean and still count as level or
/// upright.
constexpr double LEAN = 1.0;

/// A vector of the same direction and length 1.
Point2D normalized(const Point2D& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y);
    return {v.x / length, v.y / length, 0.0};
}

Point2D moved(const Point2D& p, const Point2D& along, double length) {
    return {p.x + length * along.x, p.y + length * along.y, 0.0};
}

/// The sum of two opposite sides: twice the midline between the other two.
Point2D midline(const Point2D& from, const Point2D& to, const Point2D& from2, const Point2D& to2) {
    return {(to.x - from.x) + (to2.x - from2.x), (to.y - from.y) + (to2.y - from2.y), 0.0};
}

/// Both midlines of a quadrangle: along its sides 0-1 and 3-2, and along 0-3
/// and 1-2. Their cross product is twice the signed double area, so whatever
/// is built along them runs the way in which the corners were drawn.
struct Midlines {
    Point2D a;
    Point2D b;

    explicit Midlines(const std::vector<Point2D>& q)
        : a(midline(q[0], q[1], q[3], q[2])), b(midline(q[0], q[3], q[1], q[2])) {}

    /// 1 when b lies counter-clockwise of a, the y axis pointing up.
    [[nodiscard]] double turn() const { return a.x * b.y - a.y * b.x < 0.0 ? -1.0 : 1.0; }
};

/// Rebuilds a parallelogram from its first corner, with sides of length `dA`
/// along `a` and `dB` along `b`.
void rebuild(std::vector<Point2D>& q, const Point2D& a, double dA, const Point2D& b, double dB) {
    q[1] = moved(q[0], a, dA);
    q[3] = moved(q[0], b, dB);
    q[2] = moved(q[1], b, dB);
}

void makeParallelogram(std::vector<Point2D>& q, double dA, double dB) {
    const Midlines midlines(q);
    rebuild(q, normalized(midlines.a), dA, normalized(midlines.b), dB);
}

/// A level rectangle, each corner on the side of the first on which it was
/// drawn. Moved corners keep their forces.
void makeLevelRectangle(std::vector<Point2D>& q, double dA, double dB) {
    const Point2D origin = q[0];
    q[1].x = q[1].x <= origin.x ? origin.x - dA : origin.x + dA;
    q[1].y = origin.y;
    q[2].x = q[1].x;
    q[2].y = origin.y <= q[2].y ? origin.y + dB : origin.y - dB;
    q[3].x = origin.x;
    q[3].y = q[2].y;
}

/// Direction of the side 0-1 of the rectangle: upright when drawn so, else the
/// mean of all four sides' directions, each counted with its length, the sides
/// 0-3 and 1-2 after a quarter turn. So the figure turns as little as it can,
/// and a drawing whose angles are right already does not turn at all.
Point2D rectangleDirection(const std::vector<Point2D>& q, const Midlines& m) {
    if (std::abs(q[1].x - q[0].x) < LEAN) {
        return {0.0, q[1].y < q[0].y ? -1.0 : 1.0, 0.0};
    }
    const double turn = m.turn();
    return normalized({m.a.x + turn * m.b.y, m.a.y - turn * m.b.x, 0.0});
}

void makeTurnedRectangle(std::vector<Point2D>& q, double dA, double dB) {
    const Midlines midlines(q);
    const Point2D a = rectangleDirection(q, midlines);
    const double turn = midlines.turn();
    rebuild(q, a, dA, {-turn * a.y, turn * a.x, 0.0}, dB);
}

void makeFullyParallel(std::vector<Point2D>& q) {
    double dA = detail::distance(q[0], q[1]);
    double dB = detail::distance(q[0], q[3]);
    if (isNearlyOne(dA / dB)) {
        dA = dB = (dA + dB) * 0.5;
    }
    const double cosine =
        detail::cosine(detail::difference(q[1], q[0]), detail::difference(q[3], q[0]));
    if (std::abs(cosine) >= RIGHT_ANGLE_COSINE) {
        makeParallelogram(q, dA, dB);
    } else if (std::abs(q[1].y - q[0].y) < LEAN) {
        makeLevelRectangle(q, dA, dB);
    } else {
        makeTurnedRectangle(q, dA, dB);
    }
}

/// The third corner moves onto the parallel to 0-1 through its neighbour 3.
void alignToFirstSide(std::vector<Point2D>& q) {
    const double length = detail::distance(q[3], q[2]);
    if (q[0].x == q[1].x) {
        q[2].x = q[3].x;
        q[2].y = q[0].y <= q[1].y ? q[3].y + length : q[3].y - length;
    } else {
        q[2] = nearer(alongSlope(q[3], slope(q[1], q[0]), length), q[2]);
    }
}

/// The third corner moves onto the parallel to 0-3 through its neighbour 1.
void alignToLastSide(std::vector<Point2D>& q) {
    const double length = detail::distance(q[1], q[2]);
    if (q[0].x == q[3].x) {
        q[2].x = q[1].x;
        q[2].y = q[3].y <= q[0].y ? q[1].y - length : q[1].y + length;
    } else {
        q[2] = nearer(alongSlope(q[1], slope(q[3], q[0]), length), q[2]);
    }
}

// ---------------------------------------------------------------------------
// Polygons
// ---------------------------------------------------------------------------

/// The corners of a closed outline in drawing order; the last one stands for
/// the place where the pen started and stopped.
std::vector<Point2D> closedCorners(Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) <= LIMIT) {
        return {};
    }
    auto corners = detail::findCorners(stroke, std::numeric_limits<std::size_t>::max());
    const Point2D& first = stroke.front();
    const Point2D& last = stroke.back();
    corners.push_back({(last.x + first.x) * 0.5, (last.y + first.y) * 0.5, 0.0});
    return corners;
}

void appendOutline(std::vector<Point2D>& out, const std::vector<Point2D>& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        drawLine(out, corners[i], corners[(i + 1) % corners.size()]);
    }
}

}  // namespace

namespace detail {

bool isStrictLine(Stroke stroke) {
    const double ratio = distance(stroke.front(), stroke.back()) / pathLength(stroke);
    if (ratio > STRAIGHT_RATIO) {
        return true;
    }
    if (ratio < BENT_RATIO) {
        return false;
    }
    const ExtremePair ends = longerExtent(stroke, extremesOf(stroke));
    const double extent = distance(ends.low, ends.high);
    return bandWidth(stroke, ends.high, ends.low) / extent < threshold(0.0, extent);
}

std::int64_t reDrawLine(std::vector<Point2D>& out, Stroke stroke, Stroke anchors) {
    std::vector<Point2D> fitted;
    if (appendFit(fitted, stroke) == 0) {
        return 0;
    }
    Segment segment{fitted.front(), fitted.back()};
    const Ranking candidates = snapToAnchors(segment, anchors);
    if (candidates.count() == 0) {
        appendStraightened(out, segment);
    } else if (const auto pair = parallelPair(candidates, segment)) {
        appendSegment(out, laidAlong(*pair, segment));
    } else {
        appendSegment(out, broughtTo(candidates[0], segment));
    }
    return sizeOf(out);
}

std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke) {
    const auto corners = findCorners(stroke, 1);
    if (corners.size() != 1 || !hasStraightLegs(stroke, corners.front())) {
        return 0;
    }
    const Point2D& corner = corners.front();
    Point2D first = stroke.front();
    Point2D last = stroke.back();
    const double k = legToLevel(first, corner, last);
    if (k != 0.0) {
        const double angle = std::atan(k);
        first = rotationLine(corner, first, angle);
        last = rotationLine(corner, last, angle);
    }
    drawLine(out, first, corner);
    drawLine(out, corner, last);
    return sizeOf(out);
}

std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke) {
    if (static_cast<std::int64_t>(stroke.size()) < LIMIT) {
        return 0;
    }
    auto corners = closedCorners(stroke);
    const double length = arcLength(stroke, 0, static_cast<std::int64_t>(stroke.size()));
    const double average = length / static_cast<double>(corners.size() + 2);
    // A first segment longer than an average edge tells a stroke of a few far
    // points, whose corners are not to be trusted.
    const double firstSegment = distance(stroke[0], stroke[1]);
    if (corners.size() < 3 || firstSegment > average) {
        out.insert(out.end(), stroke.begin(), stroke.end());
        return sizeOf(out);
    }
    if (average > firstSegment && corners.size() == 3) {
        regularTrigon(corners);
        horiVertalTrigon(corners);
    } else if (average > firstSegment && corners.size() == 4) {
        regularQuadrangle(corners);
        horiVertalTrigon(corners);
    }
    appendOutline(out, corners);
    return sizeOf(out);
}

}  // namespace detail

std::int64_t fitLine(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return appendFit(out, stroke);
}

std::int64_t drawLine(std::vector<Point2D>& out, Point2D from, Point2D to) {
    const double stepX = (to.x - from.x) / NUM_POINT;
    const double stepY = (to.y - from.y) / NUM_POINT;
    appendSamples(out, [&](double t) { return Point2D{t * stepX + from.x, t * stepY + from.y}; });
    return sizeOf(out);
}

double threshold(double /*unused*/, double length) {
    return (length / -1000.0) * 0.08 + 0.1;
}

Point2D distance2(std::vector<Point2D> stroke, Point2D a, Point2D b) {
    const auto isPlace = [](const Point2D& p) { return p.x < UNKNOWN_EXTENT; };
    Point2D nearest{UNKNOWN_EXTENT, UNKNOWN_EXTENT, 0.0};
    if (!isPlace(a)) {
        return nearest;
    }
    for (const Point2D& p : stroke) {
        const double toA = detail::distance(p, a);
        nearest.x = toA < nearest.x ? toA : nearest.x;
    }
    if (isPlace(b) && !stroke.empty()) {
        const double toB = detail::distance(stroke[2], b);
        nearest.y = toB < nearest.y ? toB : nearest.y;
    }
    return nearest;
}

bool isStrictLine(std::vector<Point2D> stroke) {
    return detail::isStrictLine(stroke);
}

std::int64_t reDrawLine(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                        std::vector<Point2D> anchors) {
    return detail::reDrawLine(out, stroke, anchors);
}

bool isAngle(std::vector<Point2D> stroke, Point2D corner) {
    return hasStraightLegs(stroke, corner);
}

std::int32_t findAngle(std::vector<Point2D> stroke, std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(detail::farthestFromChord(stroke, from, to));
}

std::int64_t reDrawAngle(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawAngle(out, stroke);
}

std::int64_t regularTrigon(std::vector<Point2D>& corners) {
    Sides s = sidesOf(corners);
    if (isNearlyOne(s.s12 / s.s02) && isNearlyOne(s.s01 / s.s02) && isNearlyOne(s.s01 / s.s12)) {
        makeEquilateral(corners, s.s01);
        return 0;
    }
    centreIsoscelesApex(corners, s);
    s = sidesOf(corners);
    if (isNearlyOne(s.s01 / s.s12)) {
        if (isNearlyOne(pythagorasRatio(s.s12, s.s01, s.s02))) {
            makeRightAngled(corners, s.s01, FLAT);
        } else {
            makeIsosceles(corners, s.s01);
        }
        return 0;
    }
    centreRightAngle(corners, s);
    s = sidesOf(corners);
    if (isNearlyOne(pythagorasRatio(s.s12, s.s01, s.s02))) {
        makeRightAngled(corners, s.s12, 0.0);
    }
    return 0;
}

void horiVertalTrigon(std::vector<Point2D>& corners) {
    const std::size_t m = corners.size();
    std::optional<std::size_t> lowest;
    double maxY = LOWEST;
    for (std::size_t i = 0; i < m; ++i) {
        if (corners[i].y > maxY) {
            maxY = corners[i].y;
            lowest = i;
        }
    }
    if (!lowest) {
        return;
    }
    const Point2D pivot = corners[*lowest];
    const double next = slope(pivot, corners[(*lowest + 1) % m]);
    const double previous = slope(pivot, corners[(*lowest + m - 1) % m]);
    double angle = 0.0;
    if (std::abs(previous) > std::abs(next) && std::abs(next) < ROTATION_THRESHOLD) {
        angle = std::atan(next);
    } else if (std::abs(next) > std::abs(previous) && std::abs(previous) < ROTATION_THRESHOLD) {
        angle = std::atan(previous);
    } else {
        return;
    }
    for (std::size_t j = 1; j < m; ++j) {
        Point2D& corner = corners[(*lowest + j) % m];
        corner = detail::rotationLine(pivot, corner, angle);
    }
}

void regularQuadrangle(std::vector<Point2D>& corners) {
    auto& q = corners;
    const bool firstPair = detail::cosine(detail::difference(q[1], q[0]),
                                          detail::difference(q[2], q[3])) > PARALLEL_SIDES;
    const bool secondPair = detail::cosine(detail::difference(q[2], q[1]),
                                           detail::difference(q[3], q[0])) > PARALLEL_SIDES;
    if (firstPair && secondPair) {
        makeFullyParallel(q);
    } else if (firstPair) {
        alignToFirstSide(q);
    } else if (secondPair) {
        alignToLastSide(q);
    }
}

std::int64_t reDrawPolygon(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawPolygon(out, stroke);
}

}  // namespace Scrivo
