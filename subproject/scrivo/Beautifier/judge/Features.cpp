#include "Beautifier/judge/Features.h"

#include "Beautifier/fit/Share.h"

#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Ends that merely overshoot the closure stray less than this share of the size.
constexpr double SHORT_TAIL = 0.12;

// Upper bound of ROUGHNESS.
constexpr double MAX_ROUGHNESS = 1.5;

/// Path within a small disc about `end`, in radii: 1 for a straight end, more
/// for arrow heads and scribbled dots.
double knotAt(const Evidence& e, double length, Vec end) {
    constexpr double RADIUS = 0.08;
    constexpr double MAX_KNOT = 10.0;
    const double radius = RADIUS * e.size;
    const auto inside = std::count_if(e.outline.begin(), e.outline.end(),
                                      [&](Vec p) { return norm(p - end) < radius; });
    const double path = static_cast<double>(inside) * length / (FINE - 1);
    return std::log(std::clamp(path / radius, 1.0, MAX_KNOT));
}

/// Largest distance of a trimmed point from the loop.
double tailOf(const Fine& fine, const ClosedEvidence& closed) {
    double tail = 0.0;
    for (int i = 0; i < FINE; ++i) {
        if (i >= closed.closure.first && i <= closed.closure.last) {
            continue;
        }
        const Vec p = fine[static_cast<std::size_t>(i)];
        double nearest = dot(closed.loop[0] - p, closed.loop[0] - p);
        for (const Vec& q : closed.loop) {
            nearest = std::min(nearest, dot(q - p, q - p));
        }
        tail = std::max(tail, nearest);
    }
    return std::sqrt(tail);
}

/// Bend between the ends of what the closure leaves.
double closureBend(const Fine& fine, const Closure& c) {
    constexpr int CLOSURE_CHORD = 5;
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    return std::abs(
        turn(at(c.last) - at(c.last - CLOSURE_CHORD), at(c.first + CLOSURE_CHORD) - at(c.first)));
}

void measureStroke(const Evidence& e, Features& f) {
    f["TURNING"_f] = std::min(e.bends.absolute, MAX_TURNING);
    f["BOW"_f] = std::abs(e.bends.sum);
    const double length = lengthBetween(e.outline, 0, FINE - 1);
    f["KNOT"_f] =
        std::max(knotAt(e, length, e.outline.front()), knotAt(e, length, e.outline.back()));
    f["TWO_RMS"_f] = share(e.polylines[1].rms, e.size);
    f["THREE_RMS"_f] = share(e.polylines[2].rms, e.size);
    f["FOUR_RMS"_f] = share(e.polylines[3].rms, e.size);
    f["THREE_OVER_TWO"_f] = f["THREE_RMS"_f] - f["TWO_RMS"_f];
    f["ROUGHNESS"_f] = std::clamp(std::log(e.roughness), 0.0, MAX_ROUGHNESS);
    f["RETRACED"_f] = e.retraced;
    f["OVERLAP"_f] = e.overlap;
    f["HOOK"_f] = e.hook;
    f["SPARSE"_f] = std::log(MANY_PIECES / std::clamp(e.pieces, 1.0, MANY_PIECES));
}

void measureLoop(const Evidence& e, const ClosedEvidence& c, Features& f) {
    const Bends apart = innerBends(e.fine, c.closure);
    const double tail = share(tailOf(e.fine, c), e.size);
    f["CLOSURE_BEND"_f] = closureBend(e.fine, c.closure);
    f["GAP"_f] = share(c.closure.gap, e.size);
    f["TRIMMED"_f] = c.closure.trimmed;
    f["TAIL"_f] = tail;
    f["LONG_TAIL"_f] = std::max(0.0, std::exp(tail) - SHORT_TAIL);
    f["COUNTER_BENDS"_f] = std::min(0.5 * (apart.absolute - std::abs(apart.sum)), std::numbers::pi);
    f["SHARPEST_BEND"_f] = sharpestBend(e.fine, c.closure);
    f["POLYGON3_RMS"_f] = share(c.polygons[2].rms, e.size);
    f["POLYGON4_RMS"_f] = share(c.polygons[3].rms, e.size);
    f["POLYGON5_RMS"_f] = share(c.polygons[4].rms, e.size);
    f["POLYGON6_RMS"_f] = share(c.polygons[5].rms, e.size);
    f["FOUR_OVER_THREE"_f] = std::exp(f["POLYGON4_RMS"_f] - f["POLYGON3_RMS"_f]);
}

/// Where the features of a family begin.
std::size_t offsetOf(FigureFamily family) {
    std::size_t offset = STROKE_FEATURES.size();
    for (const Family& f : families()) {
        if (f.family == family) {
            break;
        }
        offset += f.features.size();
    }
    return offset;
}

}  // namespace

Features featuresOf(const Evidence& e) {
    Features f{};
    measureStroke(e, f);
    if (e.closed) {
        measureLoop(e, *e.closed, f);
    }
    std::span<double> rest = std::span(f).subspan(STROKE_FEATURES.size());
    for (const Family& family : families()) {
        if (!family.closed || e.closed) {
            family.measure(e, rest);
        }
        rest = rest.subspan(family.features.size());
    }
    return f;
}

std::span<const double> ownFeatures(const Features& features, FigureFamily family) {
    const Family* const entry = findFamily(family);
    return std::span(features).subspan(offsetOf(family), entry->features.size());
}

}  // namespace Scrivo::beautifier
