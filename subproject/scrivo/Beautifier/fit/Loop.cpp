#include "Beautifier/fit/Loop.h"

#include <algorithm>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

constexpr int MAX_CUT = FINE / 4;  // steps that may be cut at either end
constexpr double CHARGE = 0.3;     // by which a unit of cut length must reduce the gap

Vec at(const Fine& fine, int i) {
    return fine[static_cast<std::size_t>(i)];
}

/// Stretches slim outlines to a ratio of three to one, so that their short sides get
/// enough points to be told apart from round ends.
Metric metricOf(const Fine& fine, const Closure& closure) {
    constexpr double SLIM = 1.0 / 3.0;
    constexpr double MAX_STRETCH = 8.0;
    Vec sum;
    for (int i = closure.first; i <= closure.last; ++i) {
        sum = sum + at(fine, i);
    }
    const Vec mean = (1.0 / (closure.last - closure.first + 1)) * sum;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (int i = closure.first; i <= closure.last; ++i) {
        const Vec d = at(fine, i) - mean;
        xx += d.x * d.x;
        xy += d.x * d.y;
        yy += d.y * d.y;
    }
    const double half = 0.5 * (xx - yy);
    const double spread = std::sqrt(half * half + xy * xy);
    const double longer = 0.5 * (xx + yy) + spread;
    const double shorter = std::max(longer - 2.0 * spread, 0.0);
    const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
    return {{std::cos(angle), std::sin(angle)},
            std::clamp(SLIM * std::sqrt(longer / shorter), 1.0, MAX_STRETCH)};
}

/// Index of the point farthest from the mean.
std::size_t farthest(const Coarse& points) {
    Vec centre;
    for (const Vec& p : points) {
        centre = centre + (1.0 / COARSE) * p;
    }
    std::size_t best = 0;
    double largest = norm(points[0] - centre);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double distance = norm(points[i] - centre);
        if (distance > largest) {
            largest = distance;
            best = i;
        }
    }
    return best;
}

bool crosses(Vec a, Vec b, Vec c, Vec d) {
    return cross(b - a, c - a) * cross(b - a, d - a) < 0.0 &&
           cross(d - c, a - c) * cross(d - c, b - c) < 0.0;
}

double pieceDistance(Vec a, Vec b, Vec c, Vec d) {
    if (crosses(a, b, c, d)) {
        return 0.0;
    }
    return std::min({distanceToPiece(a, c, d), distanceToPiece(b, c, d), distanceToPiece(c, a, b),
                     distanceToPiece(d, a, b)});
}

/// Smallest distance between the outline about `first` and the outline about `last`:
/// the remaining ends may cross between two points.
double exactGap(const Fine& fine, int first, int last) {
    double gap = norm(at(fine, first) - at(fine, last));
    for (int i = std::max(first - 1, 0); i <= first; ++i) {
        for (int k = last - 1; k <= std::min(last, FINE - 2); ++k) {
            gap = std::min(
                gap, pieceDistance(at(fine, i), at(fine, i + 1), at(fine, k), at(fine, k + 1)));
        }
    }
    return gap;
}

/// Sum of the bends between the tails, radians, without the bend at the closure.
double windingOf(const Fine& fine, const Closure& closure) {
    constexpr int CHORD = 4;
    double sum = 0.0;
    Vec before = at(fine, closure.first + CHORD) - at(fine, closure.first);
    for (int i = closure.first + CHORD; i + CHORD <= closure.last; i += CHORD) {
        const Vec chord = at(fine, i + CHORD) - at(fine, i);
        sum += turn(before, chord);
        before = chord;
    }
    return std::abs(sum);
}

constexpr int MAX_LAPS = 3;  // more of them are a scribble

/// Cuts an outline of several laps after the first one. The other laps count as
/// tails, not as trimmed.
void keepFirstLap(const Fine& fine, Closure& closure) {
    // The sum lacks the bend at the closure, less than a third of a turn.
    const double turns = windingOf(fine, closure) / (2.0 * std::numbers::pi);
    const int laps = static_cast<int>(std::floor(turns + 0.45));
    if (laps < 2 || laps > MAX_LAPS) {
        return;
    }
    const int steps = (closure.last - closure.first) / laps;
    const int reach = steps / 4;
    int end = closure.first + steps;
    for (int k = end - reach; k <= std::min(end + reach, closure.last); ++k) {
        const auto gap = [&](int i) { return norm(at(fine, closure.first) - at(fine, i)); };
        end = gap(k) < gap(end) ? k : end;
    }
    closure.last = end;
    closure.gap = exactGap(fine, closure.first, closure.last);
}

}  // namespace

double lengthBetween(const Fine& fine, int first, int last) {
    double sum = 0.0;
    for (int i = first; i < last; ++i) {
        sum += norm(at(fine, i + 1) - at(fine, i));
    }
    return sum;
}

Closure close(const Fine& fine) {
    constexpr double ROUNDING = 1e-6;
    const double step = lengthBetween(fine, 0, FINE - 1) / (FINE - 1);
    Closure best;
    best.gap = norm(at(fine, 0) - at(fine, FINE - 1));
    double bestCost = best.gap;
    for (int i = 0; i <= MAX_CUT; ++i) {
        for (int k = 0; k <= MAX_CUT; ++k) {
            const double charge = CHARGE * step * (i + k);
            if (charge >= bestCost) {
                break;
            }
            const Vec between = at(fine, i) - at(fine, FINE - 1 - k);
            // A root takes long; most gaps are too wide by more than rounding errors.
            const double most = (1.0 + ROUNDING) * (bestCost - charge);
            if (dot(between, between) > most * most) {
                continue;
            }
            const double gap = norm(between);
            if (gap + charge < bestCost) {
                bestCost = gap + charge;
                best = {i, FINE - 1 - k, FINE - 1 - k, gap,
                        static_cast<double>(i + k) / (FINE - 1)};
            }
        }
    }
    best.gap = exactGap(fine, best.first, best.last);
    keepFirstLap(fine, best);
    return best;
}

std::span<const Vec> lapsOf(const Fine& fine, const Closure& closure) {
    const auto first = static_cast<std::size_t>(closure.first);
    const auto end = static_cast<std::size_t>(closure.end);
    return std::span<const Vec>(fine).subspan(first, end - first + 1);
}

Coarse loop(const Fine& fine, const Closure& closure) {
    const Coarse open = resample(fine, closure.first, closure.last, metricOf(fine, closure));
    const std::size_t start = farthest(open);
    Coarse out;
    // Without the last point: where the ends meet it is the first one, and where a
    // gap remains the closing piece is a step longer.
    for (std::size_t i = 0; i + 1 < out.size(); ++i) {
        out[i] = open[(start + i) % LOOP];
    }
    out.back() = out.front();
    return out;
}

}  // namespace Scrivo::beautifier
