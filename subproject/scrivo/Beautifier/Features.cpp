#include "Beautifier/Features.h"

#include <algorithm>
#include <numbers>
#include <span>

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
        std::count_if(e.outline.begin(), e.outline.end(), [&](Vec p) { return norm(p - end) < radius; });
    const double path = static_cast<double>(inside) * lengthBetween(e.outline, 0, FINE - 1) / (FINE - 1);
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
    f[KNOT] = std::max(knotAt(e, e.outline.front()), knotAt(e, e.outline.back()));
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

// Ink further than this share of the size from a figure is not explained by it.
constexpr double FAR = 0.025;

double distanceToPiece(Vec p, Vec a, Vec b) {
    const Vec along = b - a;
    const double squared = dot(along, along);
    const double t = squared > 0.0 ? std::clamp(dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return norm(p - a - t * along);
}

/// Share of the points further than `FAR` of the size from the polyline through
/// `corners`.
double farShare(const Evidence& e, std::span<const Vec> corners) {
    const auto isFar = [&](Vec p) {
        for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
            if (distanceToPiece(p, corners[i], corners[i + 1]) <= FAR * e.size) {
                return false;
            }
        }
        return true;
    };
    return static_cast<double>(std::count_if(e.points.begin(), e.points.end(), isFar)) / COARSE;
}

/// The ink about a corner of a figure.
struct CornerInk {
    double distance = 0.0;  ///< of the nearest ink
    double bend = 0.0;      ///< of the ink next to it, radians
};

/// Looks at the ink about `corner`, `reach` fine steps in both directions.
CornerInk inkAt(const Fine& fine, Vec corner, int first, int last, int reach) {
    int nearest = first;
    for (int i = first; i <= last; ++i) {
        nearest = norm(at(fine, i) - corner) < norm(at(fine, nearest) - corner) ? i : nearest;
    }
    CornerInk ink{norm(at(fine, nearest) - corner), PI};
    const int before = nearest - reach;
    const int after = nearest + reach;
    // Corners where the ends meet are judged by the gap and the tails.
    if (before >= first && after <= last) {
        ink.bend = std::abs(turn(at(fine, before + reach / 2) - at(fine, before),
                                 at(fine, after) - at(fine, after - reach / 2)));
    }
    return ink;
}

void vertexFeatures(const Evidence& e, Features& f) {
    const Vec vertex = e.vertex.at[0];
    const std::array legs{e.points.front(), vertex, e.points.back()};
    const CornerInk ink = inkAt(e.fine, vertex, 0, FINE - 1, 6);
    f[ROUGHNESS] = std::clamp(std::log(e.roughness), 0.0, 1.5);
    f[RETRACED] = e.retraced;
    f[OVERLAP] = e.overlap;
    f[HOOK] = e.hook;
    f[THREE_OVER_TWO] = f[THREE_RMS] - f[TWO_RMS];
    f[VERTEX_INK] = share(ink.distance, e.size);
    f[VERTEX_BEND] = std::min(ink.bend / std::max(PI - f[OPENING], 0.1), 1.5);
    f[LEG_FAR] = farShare(e, legs);
}

/// Bend between the ends of what the closure leaves.
double closureBend(const Fine& fine, const Closure& c) {
    constexpr int CHORD = 5;
    return std::abs(turn(at(fine, c.last) - at(fine, c.last - CHORD),
                         at(fine, c.first + CHORD) - at(fine, c.first)));
}

/// How the ink lies along the ellipse, not only how near to it.
void alongFeatures(const Evidence& e, const ClosedEvidence& c, Features& f) {
    f[CLOSURE_BEND] = closureBend(e.fine, c.closure);
    f[ELLIPSE_OVER_FOUR] = f[ELLIPSE_RMS] - f[POLYGON4_RMS];
    f[ELLIPSE_OVER_SIX] = f[ELLIPSE_RMS] - f[POLYGON6_RMS];
    if (!c.ellipse.found) {
        f[ELLIPSE_FAR] = 1.0;
        f[ELLIPSE_ALONG] = PI / 4.0;
        return;
    }
    int far = 0;
    double squares = 0.0;
    int count = 0;
    for (int i = 2; i + 2 < FINE; i += 2) {
        const EllipsePoint p = pointOn(c.ellipse, at(e.fine, i));
        far += std::abs(p.distance) > FAR * e.size ? 1 : 0;
        if (i - 2 >= c.closure.first && i + 2 <= c.closure.last) {
            const double slope = std::abs(turn(p.outwards, at(e.fine, i + 2) - at(e.fine, i - 2)));
            squares += (slope - PI / 2.0) * (slope - PI / 2.0);
            ++count;
        }
    }
    f[ELLIPSE_FAR] = static_cast<double>(far) / COARSE;
    f[ELLIPSE_ALONG] = std::min(std::sqrt(squares / count), PI / 4.0);
    f[ELLIPSE_LENGTH] = std::log(std::clamp(e.length / circumference(c.ellipse), 0.1, 5.0));
}

/// How the ink lies along a polygon: at its corners, and how much of it.
struct PolygonInk {
    double corner = 0.0;  ///< largest distance of a corner from the ink
    double bend = 1.5;    ///< least share of a corner's bend that the ink makes there
    double length = 0.0;  ///< log of the path over the perimeter
    double far = 0.0;     ///< share of the ink away from it
};

PolygonInk polygonInk(const Evidence& e, const ClosedEvidence& c, const Corners& corners) {
    PolygonInk f;
    std::array<Vec, MAX_PIECES + 1> path{};
    const auto corner = [&](int k) { return corners.at[static_cast<std::size_t>(k % corners.count)]; };
    double perimeter = 0.0;
    for (int i = 0; i < corners.count; ++i) {
        perimeter += norm(corner(i + 1) - corner(i));
    }
    for (int i = 0; i < corners.count; ++i) {
        const double bend = std::abs(turn(corner(i) - corner(i + corners.count - 1), corner(i + 1) - corner(i)));
        const CornerInk ink = inkAt(e.fine, corner(i), c.closure.first, c.closure.last, 4);
        f.corner = std::max(f.corner, ink.distance);
        f.bend = std::min(f.bend, ink.bend / std::max(bend, 0.1));
        path[static_cast<std::size_t>(i)] = corner(i);
    }
    path[static_cast<std::size_t>(corners.count)] = corner(0);
    f.length = std::log(std::clamp(e.length / perimeter, 0.1, 5.0));
    f.far = farShare(e, std::span(path).first(static_cast<std::size_t>(corners.count) + 1));
    return f;
}

void polygonInkFeatures(const Evidence& e, const ClosedEvidence& c, Features& f) {
    const PolygonInk triangle = polygonInk(e, c, c.triangle);
    f[TRIANGLE_CORNER] = share(triangle.corner, e.size);
    f[TRIANGLE_BEND] = triangle.bend;
    f[TRIANGLE_LENGTH] = triangle.length;
    f[TRIANGLE_FAR] = triangle.far;
    const PolygonInk quadrangle = polygonInk(e, c, c.quadrangle);
    f[QUADRANGLE_CORNER] = share(quadrangle.corner, e.size);
    f[QUADRANGLE_BEND] = quadrangle.bend;
    f[QUADRANGLE_LENGTH] = quadrangle.length;
    f[QUADRANGLE_FAR] = quadrangle.far;
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
    vertexFeatures(e, f);
    if (e.closed) {
        loopFeatures(e.fine, *e.closed, e.size, f);
        ellipseFeatures(*e.closed, e.size, f);
        cornerFeatures(*e.closed, e.size, f);
        alongFeatures(e, *e.closed, f);
        polygonInkFeatures(e, *e.closed, f);
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
