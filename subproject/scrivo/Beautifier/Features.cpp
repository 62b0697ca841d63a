#include "Beautifier/Features.h"

#include <algorithm>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

constexpr double PI = std::numbers::pi;

// Shares are taken between what no hand can improve on and what no figure has.
constexpr double LEAST_SHARE = 0.003;
constexpr double MOST_SHARE = 2.0;

// Bends beyond two full turns are a scribble, however many.
constexpr double MOST_TURNS = 4.0 * PI;

// A gap as wide as the shortest side is a missing side.
constexpr double MOST_GAP = 1.5;

// Ends of a closed figure that overshoot stray less than this share of the size.
constexpr double OVERSHOOT = 0.12;

double share(double part, double whole) {
    // The order of arguments makes LEAST_SHARE of 0 / 0.
    return std::log(std::min(std::max(LEAST_SHARE, part / whole), MOST_SHARE));
}

Vec at(const Fine& fine, int i) {
    return fine[static_cast<std::size_t>(i)];
}

/// Sums over the bends between successive chords.
struct Bends {
    double absolute = 0.0;
    double sum = 0.0;
    double sharpest = 0.0;

    void add(double bend) {
        absolute += std::abs(bend);
        sum += bend;
        sharpest = std::max(sharpest, std::abs(bend));
    }
};

/// Bends between chords of two steps along the points.
Bends bendsOf(const Coarse& points) {
    Bends bends;
    Vec before = points[2] - points[0];
    for (std::size_t i = 4; i < points.size(); i += 2) {
        const Vec chord = points[i] - points[i - 2];
        bends.add(turn(before, chord));
        before = chord;
    }
    return bends;
}

/// Bends between chords of four fine steps, taken every `step` points and away
/// from the closure, where ends that do not quite meet bend anyhow.
Bends innerBends(const Fine& fine, const Closure& closure, int step) {
    constexpr int CHORD = 4;
    Bends bends;
    for (int i = closure.first + 2 * CHORD; i + 2 * CHORD <= closure.last; i += step) {
        bends.add(turn(at(fine, i) - at(fine, i - CHORD), at(fine, i + CHORD) - at(fine, i)));
    }
    return bends;
}

/// Path within a small disc about `end`, in radii: 1 for a straight end, more
/// for arrow heads and scribbled dots.
double knotAt(const Evidence& e, Vec end) {
    constexpr double RADIUS = 0.08;
    constexpr double MOST = 10.0;
    const double radius = RADIUS * e.size;
    const auto inside =
        std::count_if(e.fine.begin(), e.fine.end(), [&](Vec p) { return norm(p - end) < radius; });
    const double path = static_cast<double>(inside) * e.length / (FINE - 1);
    return std::log(std::clamp(path / radius, 1.0, MOST));
}

void openFeatures(const Evidence& e, const Bends& bends, Features& f) {
    double low = 0.0;
    double high = 0.0;
    double worst = 0.0;
    for (const Vec& p : e.points) {
        const Vec d = p - e.line.centre;
        low = std::min(low, dot(d, e.line.along));
        high = std::max(high, dot(d, e.line.along));
        worst = std::max(worst, std::abs(cross(e.line.along, d)));
    }
    f[LINE_RMS] = share(e.polylines[0].rms, e.size);
    f[LINE_WORST] = share(worst, e.size);
    f[DETOUR] = share(e.length - (high - low), high - low);
    f[TURNING] = std::min(bends.absolute, MOST_TURNS);
    f[BOW] = std::abs(bends.sum);
    f[KNOT] = std::max(knotAt(e, e.fine.front()), knotAt(e, e.fine.back()));
    f[TWO_RMS] = share(e.polylines[1].rms, e.size);
    f[TWO_OVER_ONE] = std::exp(f[TWO_RMS] - f[LINE_RMS]);
    f[THREE_RMS] = share(e.polylines[2].rms, e.size);
    f[FOUR_RMS] = share(e.polylines[3].rms, e.size);
}

void legFeatures(const Evidence& e, const Bends& bends, Features& f) {
    const Vec vertex = e.vertex.at[0];
    const Vec a = e.points.front() - vertex;
    const Vec b = e.points.back() - vertex;
    const Vec ink = e.points[static_cast<std::size_t>(e.polylines[1].knots[1])];
    const double legs = norm(e.points.front() - ink) + norm(e.points.back() - ink);
    const double opening = std::abs(turn(a, b));
    f[LEG_WORST] = share(e.vertex.worst, e.size);
    f[LEG_RATIO] = share(std::min(norm(a), norm(b)), std::max(norm(a), norm(b)));
    f[LEG_DETOUR] = share(e.length - legs, e.size);
    f[LEG_TURNING] = std::min(std::abs(bends.absolute - (PI - opening)), MOST_TURNS);
    f[OPENING] = opening;
}

/// Largest distance of a trimmed point from the loop.
double tailOf(const Fine& fine, const ClosedEvidence& closed) {
    double tail = 0.0;
    for (int i = 0; i < FINE; ++i) {
        if (i >= closed.closure.first && i <= closed.closure.last) {
            continue;
        }
        double nearest = dot(closed.loop[0] - at(fine, i), closed.loop[0] - at(fine, i));
        for (const Vec& p : closed.loop) {
            nearest = std::min(nearest, dot(p - at(fine, i), p - at(fine, i)));
        }
        tail = std::max(tail, nearest);
    }
    return std::sqrt(tail);
}

struct PolygonFeatures {
    double side = 0.0;     ///< log of the shortest over the longest side
    double angle = 0.0;    ///< largest interior angle
    double gap = 0.0;      ///< over the shortest side
    double winding = 0.0;  ///< how far the bends at the corners miss one full turn
};

PolygonFeatures polygonFeatures(const Corners& c, double gap) {
    PolygonFeatures f;
    double shortest = MOST_SHARE;
    double longest = 0.0;
    Bends bends;
    const auto corner = [&](int k) { return c.at[static_cast<std::size_t>(k % c.count)]; };
    for (int i = 0; i < c.count; ++i) {
        const Vec side = corner(i + 1) - corner(i);
        const double bend = turn(side, corner(i + 2) - corner(i + 1));
        shortest = std::min(shortest, norm(side));
        longest = std::max(longest, norm(side));
        f.angle = std::max(f.angle, PI - std::abs(bend));
        bends.add(bend);
    }
    f.side = share(shortest, longest);
    f.gap = std::min(MOST_GAP, gap / shortest);
    f.winding = std::abs(std::abs(bends.sum) - 2.0 * PI);
    return f;
}

void loopFeatures(const Fine& fine, const ClosedEvidence& c, double size, Features& f) {
    const Bends apart = innerBends(fine, c.closure, 4);
    f[GAP] = share(c.closure.gap, size);
    f[TRIMMED] = c.closure.trimmed;
    f[TAIL] = share(tailOf(fine, c), size);
    f[LONG_TAIL] = std::max(0.0, std::exp(f[TAIL]) - OVERSHOOT);
    f[COUNTER_BENDS] = std::min(0.5 * (apart.absolute - std::abs(apart.sum)), PI);
    f[SHARPEST_BEND] = innerBends(fine, c.closure, 1).sharpest;
    f[POLYGON3_RMS] = share(c.polygons[2].rms, size);
    f[POLYGON4_RMS] = share(c.polygons[3].rms, size);
    f[FOUR_OVER_THREE] = std::exp(f[POLYGON4_RMS] - f[POLYGON3_RMS]);
    f[POLYGON5_RMS] = share(c.polygons[4].rms, size);
    f[POLYGON6_RMS] = share(c.polygons[5].rms, size);
}

void ellipseFeatures(const ClosedEvidence& c, double size, Features& f) {
    // Where there is no ellipse, the worst one.
    f[ELLIPSE_RMS] = c.ellipse.found ? share(c.ellipse.rms, size) : 0.0;
    f[ELLIPSE_WORST] = c.ellipse.found ? share(c.ellipse.worst, size) : 0.0;
    f[ELLIPSE_GAP] =
        c.ellipse.found ? std::min(MOST_GAP, 0.5 * c.closure.gap / c.ellipse.b) : MOST_GAP;
}

void cornerFeatures(const ClosedEvidence& c, double size, Features& f) {
    const PolygonFeatures triangle = polygonFeatures(c.triangle, c.closure.gap);
    f[TRIANGLE_WORST] = share(c.triangle.worst, size);
    f[TRIANGLE_SIDE] = triangle.side;
    f[TRIANGLE_ANGLE] = triangle.angle;
    f[TRIANGLE_GAP] = triangle.gap;
    const PolygonFeatures quadrangle = polygonFeatures(c.quadrangle, c.closure.gap);
    f[QUADRANGLE_WORST] = share(c.quadrangle.worst, size);
    f[QUADRANGLE_SIDE] = quadrangle.side;
    f[QUADRANGLE_ANGLE] = quadrangle.angle;
    f[QUADRANGLE_GAP] = quadrangle.gap;
    f[QUADRANGLE_WINDING] = quadrangle.winding;
}

}  // namespace

Features featuresOf(const Evidence& e) {
    Features f{};
    const Bends bends = bendsOf(e.points);
    openFeatures(e, bends, f);
    legFeatures(e, bends, f);
    if (e.closed) {
        loopFeatures(e.fine, *e.closed, e.size, f);
        ellipseFeatures(*e.closed, e.size, f);
        cornerFeatures(*e.closed, e.size, f);
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
