#include "Beautifier/fit/Polyline.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// A piece spans at least three steps, so that a rounded corner is not an edge.
constexpr int MIN_STEPS = 3;

using Row = std::array<double, COARSE>;
using Bests = std::array<Row, MAX_PIECES>;  ///< costs of 1, 2, ... pieces, by last point

std::size_t index(int i) {
    return static_cast<std::size_t>(i);
}

/// Costs of all pieces, by first point and number of steps.
class Costs {
public:
    /// `closed`: pieces may go through the start, of up to once around.
    Costs(const Scatter& scatter, bool closed) : m_closed(closed) {
        std::array<double, COARSE + LOOP> squares{};
        for (int row = 0; row < (closed ? LOOP : COARSE); ++row) {
            const int last = closed ? row + LOOP : row;
            const int longest = std::min(last, LOOP);
            scatter.squares(last, last - longest, last - MIN_STEPS, squares);
            for (int steps = MIN_STEPS; steps <= longest; ++steps) {
                m_costs[rowOf(last - steps)][index(steps)] = squares[index(last - steps)];
            }
        }
    }

    const Row& from(int first) const { return m_costs[rowOf(first)]; }

private:
    std::size_t rowOf(int first) const { return index(m_closed ? first % LOOP : first); }

    bool m_closed;
    std::array<Row, COARSE> m_costs;
};

/// Where the last piece of the best polyline of `pieces` pieces to point `last` begins.
int lastKnot(const Costs& costs, const Bests& bests, int pieces, int last, int start) {
    const Row& best = bests[index(pieces - 2)];
    int knot = 0;
    double smallest = INF;
    for (int i = (pieces - 1) * MIN_STEPS; i + MIN_STEPS <= last; ++i) {
        const double sum = best[index(i)] + costs.from(start + i)[index(last - i)];
        if (sum < smallest) {
            smallest = sum;
            knot = i;
        }
    }
    return knot;
}

PolylineFit trace(const Costs& costs, const Bests& bests, int pieces, int start) {
    PolylineFit fit;
    fit.pieces = pieces;
    fit.rms = std::sqrt(bests[index(pieces - 1)].back() / COARSE);
    int knot = COARSE - 1;
    for (int k = pieces; k > 1; --k) {
        fit.knots[index(k)] = knot + start;
        knot = lastKnot(costs, bests, k, knot, start);
    }
    fit.knots[1] = knot + start;
    fit.knots[0] = start;
    return fit;
}

/// Costs of the best polylines with one more piece than those in `best`, of which there
/// are `pieces`. All ends of a piece are handled in a row, for vector instructions.
Row extend(const Row& best, int pieces, const Costs& costs, int start) {
    Row next;
    next.fill(INF);
    for (int i = pieces * MIN_STEPS; i + MIN_STEPS < COARSE; ++i) {
        const double before = best[index(i)];
        const double* piece = costs.from(start + i).data() + MIN_STEPS;
        double* end = next.data() + i + MIN_STEPS;
        const int ends = COARSE - i - MIN_STEPS;
        for (int k = 0; k < ends; ++k) {
            const double sum = before + piece[k];
            end[k] = sum < end[k] ? sum : end[k];
        }
    }
    return next;
}

/// Best polylines over `COARSE` points from point `start`.
PolylineFits fitFrom(const Costs& costs, int start, int maxPieces) {
    PolylineFits fits;
    Bests bests;
    bests[0] = costs.from(start);
    std::fill_n(bests[0].begin(), MIN_STEPS, INF);
    fits[0] = trace(costs, bests, 1, start);
    for (int k = 2; k <= maxPieces; ++k) {
        bests[index(k - 1)] = extend(bests[index(k - 2)], k - 1, costs, start);
        fits[index(k - 1)] = trace(costs, bests, k, start);
    }
    return fits;
}

}  // namespace

Reach reachOf(std::span<const Vec> points, Vec origin, Vec along) {
    const auto isBehind = [&](Vec a, Vec b) { return dot(a, along) < dot(b, along); };
    const auto [first, last] = std::minmax_element(points.begin(), points.end(), isBehind);
    return {dot(*first - origin, along), dot(*last - origin, along)};
}

Scatter::Scatter(const Coarse& points) {
    for (std::size_t i = 0; i + 1 < m_x.size(); ++i) {
        const Vec p = points[i < points.size() ? i : i - LOOP];
        m_x[i + 1] = m_x[i] + p.x;
        m_y[i + 1] = m_y[i] + p.y;
        m_xx[i + 1] = m_xx[i] + p.x * p.x;
        m_xy[i + 1] = m_xy[i] + p.x * p.y;
        m_yy[i + 1] = m_yy[i] + p.y * p.y;
    }
}

inline Scatter::Central Scatter::central(int first, int last) const {
    const std::size_t a = index(first);
    const std::size_t b = index(last + 1);
    const double n = last + 1 - first;
    const double sx = m_x[b] - m_x[a];
    const double sy = m_y[b] - m_y[a];
    const double x = sx / n;
    const double y = sy / n;
    return {x, y, m_xx[b] - m_xx[a] - sx * x, m_xy[b] - m_xy[a] - sx * y,
            m_yy[b] - m_yy[a] - sy * y};
}

void Scatter::squares(int last, int from, int to, std::span<double> result) const {
    for (int first = from; first <= to; ++first) {
        const Central c = central(first, last);
        const double half = 0.5 * (c.xx - c.yy);
        // The smaller eigenvalue of the scatter matrix.
        const double smaller = 0.5 * (c.xx + c.yy) - std::sqrt(half * half + c.xy * c.xy);
        result[index(first)] = smaller < 0.0 ? 0.0 : smaller;
    }
}

FittedLine Scatter::line(int first, int last) const {
    const Central c = central(first, last);
    const double angle = 0.5 * std::atan2(2.0 * c.xy, c.xx - c.yy);
    return {{c.x, c.y}, {std::cos(angle), std::sin(angle)}};
}

PolylineFits fitPolylines(const Scatter& scatter, int maxPieces) {
    return fitFrom(Costs(scatter, false), 0, maxPieces);
}

PolylineFits fitPolygons(const Scatter& scatter) {
    const Costs costs(scatter, true);
    PolylineFits fits = fitFrom(costs, 0, MAX_PIECES);
    const PolylineFits others = fitFrom(costs, fits[3].knots[2] % LOOP, MAX_PIECES);
    for (std::size_t k = 2; k < fits.size(); ++k) {
        fits[k] = others[k].rms < fits[k].rms ? others[k] : fits[k];
    }
    return fits;
}

}  // namespace Scrivo::beautifier
