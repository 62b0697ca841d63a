#include "Beautifier/figures/Anchors.h"

#include "Beautifier/figures/LineSnap.h"
#include "Beautifier/ink/Resampling.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

namespace {

// Smaller strokes, drawing-area units, are dots and letters. Only their centres are
// anchors: underlines must not snap to the letters above them.
constexpr double MIN_CORNERED = 20.0;

// A stroke is closed when its ends lie within this share of its size.
constexpr double CLOSED = 0.15;

// A corner bends by at least this, radians, within four points of the even outline.
constexpr double MIN_BEND = 0.7;
constexpr int NEAR_STEPS = 2;
constexpr int FAR_STEPS = 6;

/// Collects the anchors within reach of a line.
class Collector {
public:
    Collector(const Segment& line, const std::set<AnchorSort>& sorts)
        : m_line(line), m_sorts(sorts) {}

    bool wants(AnchorSort sort) const { return m_sorts.count(sort) > 0; }
    void add(Vec anchor) {
        if (isInReach(m_line, anchor)) {
            m_anchors.push_back(anchor);
        }
    }
    /// Whether a point in the stroke's box can be within reach at all.
    bool mayReach(const Frame& frame) const {
        const auto clearance = [&](Vec end) {
            return norm(end - frame.centre) - 0.5 * frame.diagonal;
        };
        return std::min(clearance(m_line.from), clearance(m_line.to)) < reachOf(m_line);
    }
    std::vector<Vec> take() { return std::move(m_anchors); }

private:
    const Segment& m_line;
    const std::set<AnchorSort>& m_sorts;
    std::vector<Vec> m_anchors;
};

Vec centroid(const Ink& ink) {
    Vec sum;
    for (const Point2D& p : ink.samples) {
        sum = sum + ink.at(p);
    }
    return (1.0 / static_cast<double>(ink.samples.size())) * sum;
}

/// An even outline; indices of a closed one wrap around.
class Walk {
public:
    Walk(const Fine& fine, bool closed) : m_fine(fine), m_closed(closed) {}

    Vec at(int i) const {
        constexpr int LAPS = FINE - 1;
        return m_fine[static_cast<std::size_t>(m_closed ? (i + LAPS) % LAPS : i)];
    }
    int first() const { return m_closed ? 0 : FAR_STEPS; }
    int last() const { return m_closed ? FINE - 2 : FINE - 1 - FAR_STEPS; }
    double bend(int i) const {
        return std::abs(turn(at(i) - at(i - NEAR_STEPS), at(i + NEAR_STEPS) - at(i)));
    }
    bool isCorner(int i) const {
        const double here = bend(i);
        if (here < MIN_BEND) {
            return false;
        }
        for (int k = 1; k <= NEAR_STEPS; ++k) {
            const bool before = i - k >= first() || m_closed;
            const bool after = i + k <= last() || m_closed;
            if ((before && bend(i - k) >= here) || (after && bend(i + k) > here)) {
                return false;
            }
        }
        return true;
    }
    /// Where the outlines before and after point `i` would meet if extended.
    Vec corner(int i) const {
        const Vec a = at(i - FAR_STEPS);
        const Vec along = at(i - NEAR_STEPS) - a;
        const Vec b = at(i + FAR_STEPS);
        const Vec other = at(i + NEAR_STEPS) - b;
        const Vec p = intersection(a, along, b, other);
        const double most = norm(at(i + NEAR_STEPS) - at(i - NEAR_STEPS));
        return norm(p - at(i)) <= most ? p : at(i);
    }

private:
    const Fine& m_fine;
    bool m_closed;
};

void addCorners(Collector& anchors, const Ink& ink, const Frame& frame, bool closed) {
    const Fine fine = resample(trackOf(ink, frame), frame);
    const Walk walk(fine, closed);
    for (int i = walk.first(); i <= walk.last(); ++i) {
        if (walk.isCorner(i)) {
            anchors.add(frame.centre + frame.extent * walk.corner(i));
        }
    }
}

void addAnchors(Collector& anchors, const Ink& ink) {
    const Frame frame = measure(ink);
    if (!frame.measurable) {
        return;
    }
    if (anchors.wants(AnchorSort::CENTRE)) {
        anchors.add(centroid(ink));
    }
    if (frame.extent < MIN_CORNERED || !anchors.mayReach(frame)) {
        return;
    }
    const Vec first = ink.at(ink.samples.front());
    const Vec last = ink.at(ink.samples.back());
    const bool closed = norm(last - first) < CLOSED * frame.extent;
    if (anchors.wants(AnchorSort::END) && !closed) {
        anchors.add(first);
        anchors.add(last);
    }
    if (anchors.wants(AnchorSort::CORNER)) {
        addCorners(anchors, ink, frame, closed);
    }
}

}  // namespace

std::vector<Vec> anchorsNear(const Segment& line, const Surroundings& around,
                             const std::set<AnchorSort>& sorts) {
    Collector anchors(line, sorts);
    for (const std::vector<Point2D>& stroke : around.strokes) {
        addAnchors(anchors, {stroke, around.width, around.height});
    }
    return anchors.take();
}

}  // namespace Scrivo::beautifier
