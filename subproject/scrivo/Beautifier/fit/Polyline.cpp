#include "Beautifier/fit/Polyline.h"

#include <algorithm>
#include <limits>

namespace Scrivo::beautifier {

namespace {

// A piece spans at least three steps, so that a rounded corner is not an edge.
constexpr int MIN_STEPS = 3;

constexpr double INF = std::numeric_limits<double>::infinity();

using Row = std::array<double, COARSE>;
using Parents = std::array<std::array<int, COARSE>, MAX_PIECES>;

std::size_t index(int i) {
    return static_cast<std::size_t>(i);
}

/// Costs of all pieces, by last point and number of steps.
class Costs {
public:
    /// `closed`: pieces may go through the start, of up to once around.
    Costs(const Scatter& scatter, bool closed) : m_closed(closed) {
        for (int row = 0; row < COARSE; ++row) {
            const int last = closed ? row + LOOP : row;
            for (int steps = MIN_STEPS; steps <= std::min(last, LOOP); ++steps) {
                m_costs[index(row)][index(steps)] = scatter.squares(last - steps, last);
            }
        }
    }

    const Row& to(int last) const { return m_costs[index(m_closed ? last % LOOP : last)]; }

private:
    bool m_closed;
    std::array<Row, COARSE> m_costs;
};

PolylineFit trace(const Parents& parents, int pieces, double squares, int start) {
    PolylineFit fit;
    fit.pieces = pieces;
    fit.rms = std::sqrt(squares / COARSE);
    int knot = COARSE - 1;
    for (int k = pieces; k > 0; --k) {
        fit.knots[index(k)] = knot + start;
        knot = parents[index(k - 1)][index(knot)];
    }
    fit.knots[0] = start;
    return fit;
}

/// One more piece behind the best polylines of `pieces` - 1 pieces.
void extend(Row& best, std::array<int, COARSE>& parent, int pieces, const Costs& costs, int start) {
    Row next;
    next.fill(INF);
    for (int j = pieces * MIN_STEPS; j < COARSE; ++j) {
        const Row& piece = costs.to(start + j);
        double smallest = INF;
        for (int i = (pieces - 1) * MIN_STEPS; i + MIN_STEPS <= j; ++i) {
            const double sum = best[index(i)] + piece[index(j - i)];
            if (sum < smallest) {
                smallest = sum;
                parent[index(j)] = i;
            }
        }
        next[index(j)] = smallest;
    }
    best = next;
}

/// Best polylines over `COARSE` points from point `start`.
PolylineFits fitFrom(const Costs& costs, int start, int maxPieces) {
    PolylineFits fits;
    Parents parents{};
    Row best;
    best.fill(INF);
    for (int j = MIN_STEPS; j < COARSE; ++j) {
        best[index(j)] = costs.to(start + j)[index(j)];
    }
    fits[0] = trace(parents, 1, best.back(), start);
    for (int k = 2; k <= maxPieces; ++k) {
        extend(best, parents[index(k - 1)], k, costs, start);
        fits[index(k - 1)] = trace(parents, k, best.back(), start);
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
    for (std::size_t i = 0; i + 1 < m_upTo.size(); ++i) {
        const Sums& s = m_upTo[i];
        const Vec p = points[i < points.size() ? i : i - LOOP];
        m_upTo[i + 1] = {s.n + 1.0,        s.x + p.x,        s.y + p.y,
                         s.xx + p.x * p.x, s.xy + p.x * p.y, s.yy + p.y * p.y};
    }
}

Scatter::Central Scatter::central(int first, int last) const {
    const Sums& a = m_upTo[index(first)];
    const Sums& b = m_upTo[index(last + 1)];
    const double n = b.n - a.n;
    const double sx = b.x - a.x;
    const double sy = b.y - a.y;
    const double x = sx / n;
    const double y = sy / n;
    return {x, y, b.xx - a.xx - sx * x, b.xy - a.xy - sx * y, b.yy - a.yy - sy * y};
}

// The smaller eigenvalue of the scatter matrix.
double Scatter::squares(int first, int last) const {
    const Central c = central(first, last);
    const double half = 0.5 * (c.xx - c.yy);
    return std::max(0.5 * (c.xx + c.yy) - std::sqrt(half * half + c.xy * c.xy), 0.0);
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
