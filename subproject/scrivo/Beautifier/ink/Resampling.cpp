#include "Beautifier/ink/Resampling.h"

#include "Beautifier/ink/Cursor.h"
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

// Strokes with more bends are joined by straight pieces: their curves are dense enough.
constexpr int FEW_SAMPLES = 24;

/// How a stroke of few samples is to be joined: as a curve when its bends are
/// spread over all samples and none of them is a corner.
BendLimits limitsOf(Cursor cursor) {
    Vec a;
    Vec b;
    Vec c;
    if (!cursor.next(a) || !cursor.next(b)) {
        return AMONG_STRAIGHT;
    }
    double sum = 0.0;
    double squares = 0.0;
    int bends = 0;
    for (; cursor.next(c); a = b, b = c) {
        const double bend = std::abs(turn(b - a, c - b));
        if (bend > CORNER_BEND || bends > FEW_SAMPLES) {
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

/// Catmull-Rom tangent at `b`, times the parameter length of the piece b-c;
/// `toNext` tells whether that piece follows or precedes.
Vec tangent(Vec a, Vec b, Vec c, bool toNext, const BendLimits& limits) {
    const double before = norm(b - a);
    const double after = norm(c - b);
    const Vec chord = toNext ? c - b : b - a;
    const double bend = std::abs(turn(b - a, c - b));
    const double smooth =
        std::clamp((limits.sharp - bend) / (limits.sharp - limits.smooth), 0.0, 1.0);
    if (smooth == 0.0) {
        return chord;
    }
    const double s = std::sqrt(before);
    const double t = std::sqrt(after);
    const Vec speed = (1.0 / s) * (b - a) - (1.0 / (s + t)) * (c - a) + (1.0 / t) * (c - b);
    return smooth * (toNext ? t : s) * speed + (1.0 - smooth) * chord;
}

/// Four successive samples; the piece in question runs from `b` to `c`.
struct Window {
    Vec a, b, c, d;
    bool hasA = false;
    bool hasD = false;

    /// Tangents at `b` and `c`; at an end of the stroke that of a parabola.
    void tangents(const BendLimits& limits, Vec& atB, Vec& atC) const {
        const Vec chord = c - b;
        atB = hasA ? tangent(a, b, c, true, limits) : chord;
        atC = hasD ? tangent(b, c, d, false, limits) : chord;
        if (!hasA && hasD) {
            atB = 2.0 * chord - atC;
        } else if (hasA && !hasD) {
            atC = 2.0 * chord - atB;
        }
    }
};

/// Cubic Hermite piece from `b` to `c` at parameter `t` in [0, 1].
Vec hermite(Vec b, Vec c, Vec atB, Vec atC, double t) {
    const double u = 1.0 - t;
    return (u * u * (1.0 + 2.0 * t)) * b + (t * t * (1.0 + 2.0 * u)) * c + (t * u * u) * atB -
           (t * t * u) * atC;
}

/// `FINE` points along the curve that joins the samples.
Fine joined(Cursor cursor, const Frame& frame, const BendLimits& limits) {
    Fine out;
    Window w;
    if (!cursor.next(w.b) || !cursor.next(w.c)) {
        return out;
    }
    w.hasD = cursor.next(w.d);
    const double step = frame.length / frame.extent / (FINE - 1);
    out[0] = w.b;
    int made = 1;
    double start = 0.0;  // arc length at w.b
    while (made < FINE) {
        const double piece = norm(w.c - w.b);
        const bool last = !w.hasD;
        if (made * step <= start + piece || last) {
            Vec atB = w.c - w.b;
            Vec atC = atB;
            if (piece > step) {
                w.tangents(limits, atB, atC);
            }
            for (; made < FINE && (made * step <= start + piece || last); ++made) {
                const double t = std::clamp((made * step - start) / piece, 0.0, 1.0);
                out[static_cast<std::size_t>(made)] = hermite(w.b, w.c, atB, atC, t);
            }
        }
        start += piece;
        w = {w.b, w.c, w.d, {}, true, false};
        w.hasD = cursor.next(w.d);
    }
    return out;
}

}  // namespace

Fine resample(const Ink& ink, const Frame& frame) {
    const Cursor cursor(ink, frame);
    const std::optional<Fine> calm = withoutTremor(cursor, frame.length / frame.extent);
    return calm ? *calm : joined(cursor, frame, limitsOf(cursor));
}

Fine resampleRound(const Ink& ink, const Frame& frame) {
    return joined(Cursor(ink, frame), frame, ALL_ROUND);
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
