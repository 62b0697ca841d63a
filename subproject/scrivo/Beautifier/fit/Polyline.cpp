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

// A polyline is no better than another one of more pieces but for rounding errors, which
// are far below this: coordinates are about 1.
constexpr double ROUNDING = 1e-6;

/// Costs of pieces, by first point and number of steps. A piece costs at least as much
/// as any part of it, so that one that is part of a costly one need not be measured.
class Costs {
public:
    /// `closed`: pieces may go through the start, of up to once around.
    Costs(const Scatter& scatter, bool closed) : m_scatter(scatter), m_closed(closed) {
        m_longest.fill(MIN_STEPS - 1);
    }

    /// Measures all pieces that cost up to `most`.
    void measureUpTo(double most) {
        for (int row = 0; row < (m_closed ? LOOP : COARSE - MIN_STEPS); ++row) {
            measureRow(row, most);
        }
    }

    /// Measures the pieces from `row` that cost up to `most`.
    void measureRow(int row, double most) {
        const int steps = m_closed ? LOOP : COARSE - 1 - row;
        auto& costs = m_costs[index(row)];
        int& longest = m_longest[index(row)];
        while (longest < steps && (longest < MIN_STEPS || costs[index(longest)] <= most)) {
            const int next = longest + 1;
            const int first = unwrapped(row, next);
            // Runs up to the start of a loop and those beyond it are measured apart.
            const int end = first > row ? LOOP - 1 - row : steps;
            longest = std::min(longest + Scatter::RUNS, end);
            const auto squares = m_scatter.squaresOfRuns(first, first + next);
            std::copy(squares.begin(), squares.end(), costs.begin() + next);
        }
    }

    /// Of a piece that need not have been measured.
    double of(int first, int last) const {
        const int from = unwrapped(rowOf(first), last - first);
        return m_scatter.squares(from, from + last - first);
    }

    const double* from(int first) const { return m_costs[index(rowOf(first))].data(); }
    /// Steps of the longest piece that was measured.
    int longest(int first) const { return m_longest[index(rowOf(first))]; }

private:
    int rowOf(int first) const { return m_closed ? first % LOOP : first; }
    /// The first point of a piece of which the last one is beyond the start of a loop.
    int unwrapped(int row, int steps) const {
        return m_closed && row + steps < LOOP ? row + LOOP : row;
    }

    const Scatter& m_scatter;
    bool m_closed;
    std::array<int, COARSE> m_longest;
    std::array<std::array<double, COARSE + Scatter::RUNS>, COARSE> m_costs;
};

/// Searches the best polylines over `COARSE` points from point `start`.
class Search {
public:
    /// No polyline that is asked for costs more than `most`.
    Search(const Costs& costs, int start, int maxPieces, double most)
        : m_costs(costs), m_start(start), m_most(most + ROUNDING) {
        const int longest = costs.longest(start);
        m_bests[0].fill(INF);
        std::copy(costs.from(start) + MIN_STEPS, costs.from(start) + longest + 1,
                  m_bests[0].begin() + MIN_STEPS);
        for (int pieces = 2; pieces < maxPieces; ++pieces) {
            extend(pieces);
        }
        finish(maxPieces);
    }

    double rms(int pieces) const { return std::sqrt(m_bests[index(pieces - 1)].back() / COARSE); }

    PolylineFit trace(int pieces) const {
        PolylineFit fit;
        fit.pieces = pieces;
        fit.rms = rms(pieces);
        int knot = COARSE - 1;
        for (int k = pieces; k > 1; --k) {
            fit.knots[index(k)] = knot + m_start;
            knot = lastKnot(k, knot);
        }
        fit.knots[1] = knot + m_start;
        fit.knots[0] = m_start;
        return fit;
    }

private:
    /// Costs of the best polylines of `pieces` pieces from those of one piece less. All ends
    /// of a piece are handled in a row, for vector instructions.
    void extend(int pieces) {
        const Row& best = m_bests[index(pieces - 2)];
        Row& next = m_bests[index(pieces - 1)];
        next.fill(INF);
        for (int i = (pieces - 1) * MIN_STEPS; i + MIN_STEPS < COARSE; ++i) {
            const double before = best[index(i)];
            if (before > m_most) {
                continue;
            }
            const double* piece = m_costs.from(m_start + i) + MIN_STEPS;
            double* end = next.data() + i + MIN_STEPS;
            const int ends = std::min(m_costs.longest(m_start + i), COARSE - 1 - i) + 1 - MIN_STEPS;
            for (int k = 0; k < ends; ++k) {
                const double sum = before + piece[k];
                end[k] = sum < end[k] ? sum : end[k];
            }
        }
    }

    /// The same for the last point alone: no polyline of more pieces is asked for.
    void finish(int pieces) {
        double least = INF;
        for (int i = (pieces - 1) * MIN_STEPS; i + MIN_STEPS < COARSE; ++i) {
            least = std::min(least, throughKnot(pieces, i, COARSE - 1));
        }
        m_bests[index(pieces - 1)].back() = least;
    }

    /// Cost of the best polyline of `pieces` pieces to point `last` of which the last one
    /// begins at `knot`.
    double throughKnot(int pieces, int knot, int last) const {
        const bool isMeasured = last - knot <= m_costs.longest(m_start + knot);
        const double* piece = m_costs.from(m_start + knot);
        return isMeasured ? m_bests[index(pieces - 2)][index(knot)] + piece[last - knot] : INF;
    }

    /// Where the last piece of the best polyline of `pieces` pieces to point `last` begins.
    int lastKnot(int pieces, int last) const {
        const double least = m_bests[index(pieces - 1)][index(last)];
        int knot = (pieces - 1) * MIN_STEPS;
        while (knot + MIN_STEPS < last && throughKnot(pieces, knot, last) != least) {
            ++knot;
        }
        return knot;
    }

    const Costs& m_costs;
    int m_start;
    double m_most;
    Bests m_bests;
};

/// The best open polyline of two pieces. Those from the start must have been measured.
PolylineFit bestTwo(const Costs& costs) {
    PolylineFit fit{2, {0, 0, COARSE - 1}};
    double least = INF;
    for (int i = MIN_STEPS; i + MIN_STEPS < COARSE; ++i) {
        const double sum = costs.from(0)[i] + costs.of(i, COARSE - 1);
        fit.knots[1] = sum < least ? i : fit.knots[1];
        least = std::min(least, sum);
    }
    fit.rms = std::sqrt(least / COARSE);
    return fit;
}

/// Cost of a good polyline of three pieces.
double someThree(const Costs& costs) {
    constexpr int STEP = 4;
    double least = INF;
    for (int i = STEP; i + STEP < COARSE - 1; i += STEP) {
        const double first = costs.of(0, i);
        for (int k = i + STEP; k < COARSE - 1 && first < least; k += STEP) {
            least = std::min(least, first + costs.of(i, k) + costs.of(k, COARSE - 1));
        }
    }
    return least;
}

/// Cost of the best triangle among the corners of a quadrangle that has its third corner.
double threeOf(const Costs& costs, const PolylineFit& four) {
    const auto knot = [&](int k) { return four.knots[index(k % 4)] + (k < 4 ? 0 : LOOP); };
    const auto cost = [&](int k, int last) { return costs.of(knot(k), knot(last)); };
    return std::min({cost(2, 4) + cost(4, 5) + cost(5, 6), cost(2, 3) + cost(3, 5) + cost(5, 6),
                     cost(2, 3) + cost(3, 4) + cost(4, 6)});
}

}  // namespace

Reach reachOf(std::span<const Vec> points, Vec origin, Vec along) {
    const auto isBehind = [&](Vec a, Vec b) { return dot(a, along) < dot(b, along); };
    const auto [first, last] = std::minmax_element(points.begin(), points.end(), isBehind);
    return {dot(*first - origin, along), dot(*last - origin, along)};
}

Scatter::Scatter(const Coarse& points) {
    for (std::size_t i = 0; i < COARSE + LOOP; ++i) {
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

inline double Scatter::Central::smaller() const {
    const double half = 0.5 * (xx - yy);
    const double value = 0.5 * (xx + yy) - std::sqrt(half * half + xy * xy);
    return value < 0.0 ? 0.0 : value;
}

double Scatter::squares(int first, int last) const {
    return central(first, last).smaller();
}

std::array<double, Scatter::RUNS> Scatter::squaresOfRuns(int first, int last) const {
    std::array<double, RUNS> result;
    for (int i = 0; i < RUNS; ++i) {
        result[index(i)] = central(first, last + i).smaller();
    }
    return result;
}

FittedLine Scatter::line(int first, int last) const {
    const Central c = central(first, last);
    const double angle = 0.5 * std::atan2(2.0 * c.xy, c.xx - c.yy);
    return {{c.x, c.y}, {std::cos(angle), std::sin(angle)}};
}

PolylineFits fitPolylines(const Scatter& scatter, int maxPieces) {
    Costs costs(scatter, false);
    costs.measureRow(0, INF);
    PolylineFits fits;
    fits[0] = {1, {0, COARSE - 1}, std::sqrt(costs.from(0)[COARSE - 1] / COARSE)};
    fits[1] = bestTwo(costs);
    if (maxPieces > 2) {
        const double most = someThree(costs);
        costs.measureUpTo(most + ROUNDING);
        const Search search(costs, 0, maxPieces, most);
        for (int k = 3; k <= maxPieces; ++k) {
            fits[index(k - 1)] = search.trace(k);
        }
    }
    return fits;
}

PolylineFits fitPolygons(const Scatter& scatter) {
    Costs costs(scatter, true);
    const double most = someThree(costs);
    costs.measureUpTo(most + ROUNDING);
    const Search search(costs, 0, MAX_PIECES, most);
    PolylineFits fits;
    for (int k = 3; k <= MAX_PIECES; ++k) {
        fits[index(k - 1)] = search.trace(k);
    }
    const double mostOfOthers = threeOf(costs, fits[3]);
    costs.measureUpTo(mostOfOthers + ROUNDING);
    const Search others(costs, fits[3].knots[2] % LOOP, MAX_PIECES, mostOfOthers);
    for (int k = 3; k <= MAX_PIECES; ++k) {
        PolylineFit& fit = fits[index(k - 1)];
        fit = others.rms(k) < fit.rms ? others.trace(k) : fit;
    }
    return fits;
}

}  // namespace Scrivo::beautifier
