#include "Beautifier/ink/Resampling.h"

#include "Beautifier/ink/Tremor.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

/// Bends between which the curve fades into straight pieces, in radians.
struct BendLimits {
    double smooth = 0.0;
    double sharp = 0.0;
};

// A right angle stays a corner, a decagon of samples becomes round.
constexpr BendLimits AMONG_STRAIGHT{0.79, 1.13};

// For strokes that bend at every sample, such as a slim ellipse of seven. The corners
// of a triangle bend more, and so do those of a square on average.
constexpr BendLimits AMONG_BENT{1.95, 2.2};
constexpr double CORNER_BEND = 2.2;

// For round strokes: only where the pen turns back, there is a corner.
constexpr BendLimits ALL_ROUND{2.2, 2.7};
constexpr double SQUARE_CORNERS = 1.53;

// Strokes of more samples are joined by straight pieces: their curves are dense enough.
constexpr std::size_t FEW_SAMPLES = 27;

/// How a stroke of few samples is to be joined: as a curve when its bends are
/// spread over all samples and none of them is a corner.
BendLimits limitsOf(const Track& track) {
    if (track.size() > FEW_SAMPLES) {
        return AMONG_STRAIGHT;
    }
    double sum = 0.0;
    double squares = 0.0;
    int bends = 0;
    for (std::size_t i = 2; i < track.size(); ++i) {
        const double bend =
            std::abs(turn(track[i - 1].at - track[i - 2].at, track[i].at - track[i - 1].at));
        if (bend > CORNER_BEND) {
            return AMONG_STRAIGHT;
        }
        sum += bend;
        squares += bend * bend;
        ++bends;
    }
    // 1 when all bends are alike, 1 / bends when there is a single one.
    const bool isCurved = bends >= 4 && squares > 0.0 && sum < SQUARE_CORNERS * bends;
    const double spread = isCurved ? sum * sum / (bends * squares) : 0.0;
    const double t = std::clamp((spread - 0.55) / 0.2, 0.0, 1.0);
    return {(1.0 - t) * AMONG_STRAIGHT.smooth + t * AMONG_BENT.smooth,
            (1.0 - t) * AMONG_STRAIGHT.sharp + t * AMONG_BENT.sharp};
}

/// How much of a curve there is at a bend: from 1 for a smooth one to 0 for a corner.
double smoothnessOf(Vec before, Vec after, const BendLimits& limits) {
    // The tangent of 0.61: gentler bends are smooth by any limits.
    constexpr double GENTLE = 0.7;
    if (std::abs(cross(before, after)) <= GENTLE * dot(before, after)) {
        return 1.0;
    }
    const double bend = std::abs(turn(before, after));
    return std::clamp((limits.sharp - bend) / (limits.sharp - limits.smooth), 0.0, 1.0);
}

/// The curve at a sample between two others.
struct Knot {
    std::size_t sample = 0;
    Vec speed;  ///< of the centripetal Catmull-Rom curve
    double smooth = 0.0;
    double before = 0.0;  ///< parameter lengths of the pieces on either side
    double after = 0.0;

    /// Tangent times the parameter length of the piece with this `chord` and `length`.
    Vec tangent(Vec chord, double length) const {
        return smooth == 0.0 ? chord : smooth * length * speed + (1.0 - smooth) * chord;
    }
};

Knot knotAt(const Track& track, std::size_t i, const BendLimits& limits) {
    const Vec a = track[i - 1].at;
    const Vec b = track[i].at;
    const Vec c = track[i + 1].at;
    Knot knot{i, {}, smoothnessOf(b - a, c - b, limits)};
    if (knot.smooth > 0.0) {
        const double s = std::sqrt(track[i - 1].piece);
        const double t = std::sqrt(track[i].piece);
        knot.speed = (1.0 / s) * (b - a) - (1.0 / (s + t)) * (c - a) + (1.0 / t) * (c - b);
        knot.before = s;
        knot.after = t;
    }
    return knot;
}

/// Tangents at the ends of the pieces of a track, which must be asked for in ascending
/// order.
class Tangents {
public:
    Tangents(const Track& track, const BendLimits& limits) : m_track(track), m_limits(limits) {}

    /// Those of piece `i`; at an end of the stroke that of a parabola.
    void of(std::size_t i, Vec& atB, Vec& atC) {
        const bool hasA = i > 0;
        const bool hasD = i + 2 < m_track.size();
        const Vec chord = m_track[i + 1].at - m_track[i].at;
        if (hasA && m_knot.sample != i) {
            m_knot = knotAt(m_track, i, m_limits);
        }
        atB = hasA ? m_knot.tangent(chord, m_knot.after) : chord;
        if (hasD) {
            m_knot = knotAt(m_track, i + 1, m_limits);
        }
        atC = hasD ? m_knot.tangent(chord, m_knot.before) : chord;
        if (!hasA && hasD) {
            atB = 2.0 * chord - atC;
        } else if (hasA && !hasD) {
            atC = 2.0 * chord - atB;
        }
    }

private:
    const Track& m_track;
    BendLimits m_limits;
    Knot m_knot;  ///< the last one, where the next piece begins
};

/// Cubic Hermite piece from `b` to `c` at parameter `t` in [0, 1].
Vec hermite(Vec b, Vec c, Vec atB, Vec atC, double t) {
    const double u = 1.0 - t;
    return (u * u * (1.0 + 2.0 * t)) * b + (t * t * (1.0 + 2.0 * u)) * c + (t * u * u) * atB -
           (t * t * u) * atC;
}

/// `FINE` points along the curve that joins the samples.
Fine joined(const Track& track, double length, const BendLimits& limits) {
    Fine out;
    const double step = length / (FINE - 1);
    Tangents tangents(track, limits);
    out[0] = track.front().at;
    int made = 1;
    for (std::size_t i = 0; made < FINE; ++i) {
        const auto& [b, start, piece, integral] = track[i];
        const Vec c = track[i + 1].at;
        const bool last = i + 2 == track.size();
        if (made * step <= start + piece || last) {
            Vec atB = c - b;
            Vec atC = atB;
            if (piece > step) {
                tangents.of(i, atB, atC);
            }
            for (; made < FINE && (made * step <= start + piece || last); ++made) {
                const double t = std::clamp((made * step - start) / piece, 0.0, 1.0);
                out[static_cast<std::size_t>(made)] = hermite(b, c, atB, atC, t);
            }
        }
    }
    return out;
}

}  // namespace

Fine resample(const Track& track, const Frame& frame) {
    const double length = frame.length / frame.extent;
    const std::optional<Fine> calm = withoutTremor(track, length);
    return calm ? *calm : joined(track, length, limitsOf(track));
}

Fine resampleRound(const Track& track, const Frame& frame) {
    return joined(track, frame.length / frame.extent, ALL_ROUND);
}

Coarse coarse(const Fine& fine) {
    Coarse out;
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = fine[2 * i];
    }
    return out;
}

Coarse resample(const Fine& fine, int first, int last, const Metric& metric) {
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    double length = 0.0;
    for (int i = first; i < last; ++i) {
        length += metric.length(at(i + 1) - at(i));
    }
    Coarse out;
    out.front() = at(first);
    double start = 0.0;
    int i = first;
    for (int k = 1; k < COARSE; ++k) {
        const double target = length * k / (COARSE - 1);
        double piece = metric.length(at(i + 1) - at(i));
        while (i + 1 < last && start + piece < target) {
            start += piece;
            ++i;
            piece = metric.length(at(i + 1) - at(i));
        }
        const double t = piece > 0.0 ? std::min((target - start) / piece, 1.0) : 0.0;
        out[static_cast<std::size_t>(k)] = at(i) + t * (at(i + 1) - at(i));
    }
    return out;
}

}  // namespace Scrivo::beautifier
