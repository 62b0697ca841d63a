#include "Beautifier/Features.h"

#include <algorithm>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

constexpr double FLOOR = 0.003;
constexpr double PI = std::numbers::pi;
// Bends beyond two full turns are a scribble, however many.
constexpr double MOST_TURNS = 4.0 * PI;
// A gap as wide as the shortest side is a missing side.
constexpr double MOST_GAP = 1.5;

double logShare(double part, double whole) { return std::log(std::max(FLOOR, part / whole)); }

/// Bends between chords of two steps along the points.
struct Bends {
    double absolute = 0.0;
    double sum = 0.0;
};

Bends bendsOf(const Coarse& points, bool closed) {
    Bends bends;
    Vec before = closed ? points[COARSE - 1] - points[COARSE - 3] : points[2] - points[0];
    for (std::size_t i = closed ? 2 : 4; i < points.size(); i += 2) {
        const Vec chord = points[i] - points[i - 2];
        const double bend = turn(before, chord);
        bends.absolute += std::abs(bend);
        bends.sum += bend;
        before = chord;
    }
    return bends;
}

/// Sum of absolute bends between chords of three steps of the fine outline,
/// over the first and the last eighth.
double hooksOf(const Fine& fine) {
    constexpr std::size_t CHORD = 3;
    constexpr std::size_t REACH = 12;
    double sum = 0.0;
    for (std::size_t i = CHORD; i + CHORD <= REACH; i += CHORD) {
        const std::size_t k = fine.size() - 1 - i;
        sum += std::abs(turn(fine[i] - fine[i - CHORD], fine[i + CHORD] - fine[i]));
        sum += std::abs(turn(fine[k] - fine[k - CHORD], fine[k + CHORD] - fine[k]));
    }
    return sum;
}

double knotOf(const Fine& fine, Vec end, const Evidence& e) {
    constexpr double RADIUS = 0.08;
    int inside = 0;
    for (const Vec& p : fine) {
        inside += norm(p - end) < RADIUS * e.size ? 1 : 0;
    }
    return std::log(std::clamp(inside * e.length / (FINE - 1) / (RADIUS * e.size), 1.0, 10.0));
}

double sharpestOf(const Fine& fine, const Closure& closure) {
    constexpr int CHORD = 4;
    double sharpest = 0.0;
    for (int i = closure.first + 2 * CHORD; i + 2 * CHORD <= closure.last; ++i) {
        const auto at = [&](int k) { return fine[static_cast<std::size_t>(k)]; };
        sharpest = std::max(sharpest, std::abs(turn(at(i) - at(i - CHORD), at(i + CHORD) - at(i))));
    }
    return sharpest;
}

/// Largest distance of a trimmed point from the loop.
double counterBendsOf(const Fine& fine, const Closure& closure) {
    constexpr int CHORD = 4;
    double absolute = 0.0;
    double sum = 0.0;
    for (int i = closure.first + 2 * CHORD; i + 2 * CHORD <= closure.last; i += CHORD) {
        const auto at = [&](int k) { return fine[static_cast<std::size_t>(k)]; };
        const double bend = turn(at(i) - at(i - CHORD), at(i + CHORD) - at(i));
        absolute += std::abs(bend);
        sum += bend;
    }
    return std::min(0.5 * (absolute - std::abs(sum)), 4.0);
}

double tailOf(const Fine& fine, const ClosedEvidence& closed) {
    double tail = 0.0;
    for (int i = 0; i < FINE; ++i) {
        if (i < closed.closure.first || i > closed.closure.last) {
            double nearest = 2.0;
            for (const Vec& p : closed.loop) {
                nearest = std::min(nearest, dot(p - fine[static_cast<std::size_t>(i)], p - fine[static_cast<std::size_t>(i)]));
            }
            tail = std::max(tail, nearest);
        }
    }
    return std::sqrt(tail);
}

void lineFeatures(const Evidence& e, Features& f) {
    double low = 0.0;
    double high = 0.0;
    double worst = 0.0;
    for (const Vec& p : e.points) {
        const Vec d = p - e.line.centre;
        low = std::min(low, dot(d, e.line.along));
        high = std::max(high, dot(d, e.line.along));
        worst = std::max(worst, std::abs(cross(e.line.along, d)));
    }
    const Bends bends = bendsOf(e.points, false);
    f[LINE_RMS] = logShare(e.polylines[0].rms, e.size);
    f[LINE_WORST] = logShare(worst, e.size);
    f[DETOUR] = logShare(e.length - (high - low), high - low);
    f[DETOUR_SHARE] = std::min((e.length - (high - low)) / (high - low), 2.0);
    f[HOOKS] = std::min(hooksOf(e.fine), MOST_TURNS);
    f[KNOT] = std::max(knotOf(e.fine, e.fine.front(), e), knotOf(e.fine, e.fine.back(), e));
    f[TURNING] = std::min(bends.absolute, MOST_TURNS);
    f[BOW] = std::abs(bends.sum);
}

void angleFeatures(const Evidence& e, Features& f) {
    const Vec vertex = e.vertex.at[0];
    const Vec a = e.points.front() - vertex;
    const Vec b = e.points.back() - vertex;
    const double shorter = std::min(norm(a), norm(b));
    const double longer = std::max(norm(a), norm(b));
    const double opening = std::abs(turn(a, b));
    f[TWO_RMS] = logShare(e.polylines[1].rms, e.size);
    f[THREE_RMS] = logShare(e.polylines[2].rms, e.size);
    f[FOUR_RMS] = logShare(e.polylines[3].rms, e.size);
    f[LEG_WORST] = logShare(e.vertex.worst, e.size);
    f[LEG_ROUND] = logShare(e.vertex.round, e.size);
    f[LEG_RATIO] = logShare(shorter, longer);
    const Vec knot = e.points[static_cast<std::size_t>(e.polylines[1].knots[1])];
    const double legs = norm(e.points.front() - knot) + norm(e.points.back() - knot);
    const Bends bends = bendsOf(e.points, false);
    f[LEG_TURNING] = std::min(std::abs(bends.absolute - (PI - opening)), MOST_TURNS);
    f[LEG_WINDING] = std::min(std::abs(std::abs(bends.sum) - (PI - opening)), MOST_TURNS);
    f[LEG_DETOUR] = logShare(e.length - legs, e.size);
    f[LEG_DETOUR_SHARE] = std::min((e.length - legs) / e.size, 1.0);
    f[OPENING] = opening;
    f[OPENING_SQUARE] = opening * opening;
    f[END_GAP] = logShare(norm(e.points.front() - e.points.back()), e.size);
}

struct CornerFeatures {
    double sides = 0.0;    ///< log of the shortest over the longest side
    double angle = 0.0;    ///< largest interior angle
    double gap = 0.0;      ///< over the shortest side
    double winding = 0.0;  ///< how far the bends at the corners miss one full turn
};

CornerFeatures cornerFeatures(const Corners& c, double gap) {
    CornerFeatures f;
    double shortest = 0.0;
    double longest = 0.0;
    double bends = 0.0;
    for (int i = 0; i < c.count; ++i) {
        const auto at = [&](int k) { return c.at[static_cast<std::size_t>(k % c.count)]; };
        const Vec side = at(i + 1) - at(i);
        const Vec next = at(i + 2) - at(i + 1);
        shortest = i == 0 ? norm(side) : std::min(shortest, norm(side));
        longest = std::max(longest, norm(side));
        f.angle = std::max(f.angle, PI - std::abs(turn(side, next)));
        bends += turn(side, next);
    }
    f.sides = logShare(shortest, longest);
    f.gap = std::min(MOST_GAP, gap / shortest);
    f.winding = std::abs(std::abs(bends) - 2.0 * PI);
    return f;
}

void closedFeatures(const Fine& fine, const ClosedEvidence& c, double size, Features& f) {
    const Bends bends = bendsOf(c.loop, true);
    f[GAP] = logShare(c.closure.gap, size);
    f[GAP_SHARE] = c.closure.gap / size;
    f[LOOP_SHARPEST] = sharpestOf(fine, c.closure);
    f[TAIL] = logShare(tailOf(fine, c), size);
    f[COUNTER_BENDS] = counterBendsOf(fine, c.closure);
    f[TRIMMED] = c.closure.trimmed;
    f[LOOP_TURNING] = std::clamp(bends.absolute - 2.0 * PI, 0.0, MOST_TURNS);
    f[LOOP_WINDING] = std::abs(std::abs(bends.sum) - 2.0 * PI);
    f[POLYGON3_RMS] = logShare(c.polygons[2].rms, size);
    f[POLYGON4_RMS] = logShare(c.polygons[3].rms, size);
    f[POLYGON5_RMS] = logShare(c.polygons[4].rms, size);
    f[POLYGON6_RMS] = logShare(c.polygons[5].rms, size);
    f[ELLIPSE_RMS] = c.ellipse.found ? logShare(c.ellipse.rms, size) : 0.0;
    f[ELLIPSE_WORST] = c.ellipse.found ? logShare(c.ellipse.worst, size) : 0.0;
    f[ELLIPSE_RATIO] = c.ellipse.found ? logShare(c.ellipse.b, c.ellipse.a) : std::log(FLOOR);
    f[ELLIPSE_GAP] = c.ellipse.found ? std::min(0.5 * c.closure.gap / c.ellipse.b, MOST_GAP) : 1.0;
    f[TRIANGLE_WORST] = logShare(c.triangle.worst, size);
    f[TRIANGLE_ROUND] = logShare(c.triangle.round, size);
    const CornerFeatures triangle = cornerFeatures(c.triangle, c.closure.gap);
    f[TRIANGLE_SIDE] = triangle.sides;
    f[TRIANGLE_ANGLE] = triangle.angle;
    f[TRIANGLE_GAP] = triangle.gap;
    f[TRIANGLE_WINDING] = triangle.winding;
    f[QUADRANGLE_WORST] = logShare(c.quadrangle.worst, size);
    f[QUADRANGLE_ROUND] = logShare(c.quadrangle.round, size);
    const CornerFeatures quadrangle = cornerFeatures(c.quadrangle, c.closure.gap);
    f[QUADRANGLE_SIDE] = quadrangle.sides;
    f[QUADRANGLE_ANGLE] = quadrangle.angle;
    f[QUADRANGLE_GAP] = quadrangle.gap;
    f[QUADRANGLE_WINDING] = quadrangle.winding;
}

}  // namespace

Features featuresOf(const Evidence& e) {
    Features f{};
    lineFeatures(e, f);
    angleFeatures(e, f);
    if (e.closed) {
        closedFeatures(e.fine, *e.closed, e.size, f);
    }
    return f;
}

const char* featureName(int feature) {
    static constexpr std::array<const char*, FEATURE_COUNT> NAMES{
#define SCRIVO_FEATURE(name) #name,
        SCRIVO_FEATURES(SCRIVO_FEATURE)
#undef SCRIVO_FEATURE
    };
    return NAMES[static_cast<std::size_t>(feature)];
}

}  // namespace Scrivo::beautifier
