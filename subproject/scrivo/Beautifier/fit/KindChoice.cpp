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

constexpr double INF = std::numeric_limits<double>::infinity();

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

/// Costs of the fits to one stroke.
class Pricing {
public:
    Pricing(const PolygonInk& ink, std::span<const Candidate> candidates, const FormCosts& costs)
        : m_ink(ink), m_candidates(candidates), m_costs(costs), m_free(fitFreePolygon(ink)) {}

    [[nodiscard]] const PolygonFit& freeFit() const { return m_free; }
    [[nodiscard]] double freeCost() const { return m_costs.freeFreedom + leanCost(m_free); }

    double costOf(const Candidate& candidate, const PolygonFit& fit) {
        if (candidate.widerId != candidate.id && candidate.widerId != m_widerId) {
            m_wider = widerFit(m_ink, m_candidates, candidate, fit);
            m_widerId = candidate.widerId;
        }
        const PolygonFit& wider = candidate.widerId == candidate.id ? fit : m_wider;
        const FormErrors errors = errorsOf(m_ink, fit, wider, m_free);
        return candidate.freedom + square(errors.edges / m_costs.edges) +
               square(errors.directions / m_costs.directions) + leanCost(fit);
    }

private:
    [[nodiscard]] double leanCost(const PolygonFit& fit) const {
        const double angle = square(lean(fit.axis));
        return m_costs.lean * angle / (angle + square(m_costs.halfLean));
    }

    const PolygonInk& m_ink;
    std::span<const Candidate> m_candidates;
    const FormCosts& m_costs;
    PolygonFit m_free;
    int m_widerId = -1;
    PolygonFit m_wider;  ///< of the form `m_widerId`, which several candidates share
};

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

KindChoice chooseKind(const PolygonInk& ink, std::span<const Candidate> candidates,
                      const FormCosts& costs, FormSet allowed) {
    Pricing pricing(ink, candidates, costs);
    KindChoice best{costs.freeId, noPolygon()};
    double least = INF;
    if (isAllowed(allowed, costs.freeId)) {
        best.fit = pricing.freeFit();
        least = pricing.freeCost();
    }
    for (const Candidate& candidate : candidates) {
        if (!isAllowed(allowed, candidate.id)) {
            continue;
        }
        for (int first = 0; first < candidate.firsts && candidate.freedom < least; ++first) {
            const PolygonFit fit = fitPolygon(ink, candidate.form, first);
            const double cost = pricing.costOf(candidate, fit);
            if (cost < least) {
                least = cost;
                best = {candidate.id, fit};
            }
        }
    }
    return best;
}

}  // namespace Scrivo::beautifier
