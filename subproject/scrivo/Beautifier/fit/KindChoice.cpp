#include "Beautifier/fit/KindChoice.h"

#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Scrivo::beautifier {

namespace {

double edgeOf(const PolygonFit& fit, int k) {
    const int next = k + 1 < fit.edges ? k + 1 : 0;
    return norm(fit.corners[static_cast<std::size_t>(next)] -
                fit.corners[static_cast<std::size_t>(k)]);
}

/// By how much the ink lies further from `fit` than from the free one, share of
/// the size.
double excessOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& free) {
    return std::sqrt(std::max(fit.squares - free.squares, 0.0) / ink.count) / ink.size;
}

PolygonFit bestOf(const PolygonInk& ink, const Candidate& candidate) {
    PolygonFit best = fitPolygon(ink, candidate.form, 0);
    for (int first = 1; first < candidate.firsts; ++first) {
        const PolygonFit fit = fitPolygon(ink, candidate.form, first);
        best = fit.squares < best.squares ? fit : best;
    }
    return best;
}

PolygonFit noPolygon() {
    constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    PolygonFit fit;
    fit.corners.fill({NONE, NONE});
    fit.squares = INF;
    return fit;
}

bool isAllowed(FormSet allowed, int id) {
    return (allowed & formBit(id)) != 0;
}

double square(double value) {
    return value * value;
}

/// Largest distance between corners of the same number.
double moveOf(const PolygonFit& fit, const PolygonFit& free) {
    double largest = 0.0;
    for (int k = 0; k < fit.edges; ++k) {
        const auto i = static_cast<std::size_t>(k);
        largest = std::max(largest, norm(fit.corners[i] - free.corners[i]));
    }
    return largest;
}

std::span<Vec> cornersOf(PolygonFit& fit) {
    return std::span(fit.corners).first(static_cast<std::size_t>(fit.edges));
}

/// Share of the tolerance of edges. Ink that is as straight as a ruler's was drawn with
/// care: its edges have the lengths that were meant.
double toleranceFor(const PolygonInk& ink, const PolygonFit& free) {
    constexpr double STRAIGHT = 0.002;  // root mean square distance, share of the size
    constexpr double MIN_TOLERANCE = 0.4;
    const double rms = std::sqrt(free.squares / ink.count) / ink.size;
    return std::clamp(rms / STRAIGHT, MIN_TOLERANCE, 1.0);
}

/// Costs of the fits to one stroke.
class Pricing {
public:
    Pricing(const PolygonInk& ink, std::span<const Candidate> candidates, const FormCosts& costs)
        : m_ink(ink),
          m_candidates(candidates),
          m_costs(costs),
          m_free(fitFreePolygon(ink)),
          m_edges(costs.edges * toleranceFor(ink, m_free)) {}

    [[nodiscard]] const PolygonFit& freeFit() const { return m_free; }

    /// Without the placement.
    double costOf(const Candidate& candidate, const PolygonFit& fit) {
        if (candidate.widerId != candidate.id && candidate.widerId != m_widerId) {
            m_wider = widerFit(m_ink, m_candidates, candidate, fit);
            m_widerId = candidate.widerId;
        }
        const PolygonFit& wider = candidate.widerId == candidate.id ? fit : m_wider;
        const FormErrors errors = errorsOf(m_ink, fit, wider, m_free);
        return candidate.freedom + square(errors.edges / m_edges) +
               square(errors.directions / m_costs.directions);
    }

private:
    const PolygonInk& m_ink;
    std::span<const Candidate> m_candidates;
    const FormCosts& m_costs;
    PolygonFit m_free;
    double m_edges;  ///< tolerance
    int m_widerId = -1;
    PolygonFit m_wider;  ///< of the form `m_widerId`, which several candidates share
};

/// The cheapest so far.
class Cheapest {
public:
    Cheapest(const FormCosts& costs, bool isLevelled)
        : m_costs(costs), m_choice{costs.freeId, noPolygon()}, m_isLevelled(isLevelled) {}

    [[nodiscard]] bool mayBeat(double cost) const { return cost < m_least; }
    [[nodiscard]] const KindChoice& choice() const { return m_choice; }

    void offer(int id, double cost, const Placements& placements) {
        const double asDrawn = m_costs.leaning + moveCost(placements.asDrawn);
        const double level = placements.level ? square(placements.level->lean / m_costs.lean) +
                                                    moveCost(*placements.level)
                                              : INF;
        if (cost + std::min(asDrawn, level) < m_least) {
            const bool isLevel = m_isLevelled && level < asDrawn;
            m_least = cost + std::min(asDrawn, level);
            m_choice = {id, isLevel ? placements.level->fit : placements.asDrawn.fit};
        }
    }

private:
    [[nodiscard]] double moveCost(const Placement& placement) const {
        return square(placement.move / m_costs.move);
    }

    const FormCosts& m_costs;
    KindChoice m_choice;
    bool m_isLevelled;
    double m_least = INF;
};

/// Turned as a whole by the edge that leans least.
Placement turnedBy(PolygonFit fit, double lean, const PolygonFit& free) {
    level(cornersOf(fit), lean);
    fit.axis -= lean;
    return {fit, moveOf(fit, free), lean};
}

}  // namespace

FormErrors errorsOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& wider,
                    const PolygonFit& free) {
    double sum = 0.0;
    for (int k = 0; k < fit.edges; ++k) {
        sum += square(std::log(edgeOf(fit, k) / edgeOf(wider, k)));
    }
    // A polygon that does not exist must not win.
    const bool exists = std::isfinite(fit.squares) && std::isfinite(sum);
    return {exists ? std::sqrt(sum / fit.edges) : INF, excessOf(ink, wider, free)};
}

PolygonFit widerFit(const PolygonInk& ink, std::span<const Candidate> candidates,
                    const Candidate& candidate, const PolygonFit& fit) {
    if (candidate.widerId == candidate.id) {
        return fit;
    }
    const auto wider = std::find_if(candidates.begin(), candidates.end(),
                                    [&](const Candidate& c) { return c.id == candidate.widerId; });
    return wider == candidates.end() ? fitFreePolygon(ink) : bestOf(ink, *wider);
}

Placements placementsOf(const PolygonInk& ink, const Candidate* candidate, int first,
                        const PolygonFit& fit, double maxLean) {
    const PolygonFit free = fitFreePolygon(ink);
    const bool isFree = candidate == nullptr;
    const double drawn = lean(fit.axis);
    Placements out;
    out.asDrawn.fit = isFree ? fit : placePolygon(ink, candidate->form, first, false);
    out.asDrawn.move = moveOf(out.asDrawn.fit, free);
    out.asDrawn.lean = drawn;
    const double byEdge = leastLean(cornersOf(out.asDrawn.fit));
    if (!isFree && std::abs(drawn) <= maxLean) {
        PolygonFit level = placePolygon(ink, candidate->form, first, true);
        settle(cornersOf(level));
        out.level = {level, moveOf(level, free), drawn};
    } else if (std::abs(byEdge) <= maxLean) {
        out.level = turnedBy(out.asDrawn.fit, byEdge, free);
    }
    return out;
}

KindChoice chooseKind(const PolygonInk& ink, std::span<const Candidate> candidates,
                      const FormCosts& costs, FormSet allowed, bool isLevelled) {
    Pricing pricing(ink, candidates, costs);
    Cheapest cheapest(costs, isLevelled);
    if (isAllowed(allowed, costs.freeId)) {
        cheapest.offer(costs.freeId, costs.freeFreedom,
                       placementsOf(ink, nullptr, 0, pricing.freeFit(), costs.maxLean));
    }
    for (const Candidate& candidate : candidates) {
        if (!isAllowed(allowed, candidate.id)) {
            continue;
        }
        for (int first = 0; first < candidate.firsts && cheapest.mayBeat(candidate.freedom);
             ++first) {
            const PolygonFit fit = fitPolygon(ink, candidate.form, first);
            const double cost = pricing.costOf(candidate, fit);
            if (cheapest.mayBeat(cost)) {
                cheapest.offer(candidate.id, cost,
                               placementsOf(ink, &candidate, first, fit, costs.maxLean));
            }
        }
    }
    return cheapest.choice();
}

}  // namespace Scrivo::beautifier
