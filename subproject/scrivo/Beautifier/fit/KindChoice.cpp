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

/// Share by which the ink strays further from `fit`.
double strayOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& free) {
    return std::sqrt(std::max(fit.squares - free.squares, 0.0) / ink.count) / ink.size;
}

PolygonFit bestOf(const PolygonInk& ink, const Kind& kind) {
    PolygonFit best = fitPolygon(ink, kind.rule, 0);
    for (int first = 1; first < kind.firsts; ++first) {
        const PolygonFit fit = fitPolygon(ink, kind.rule, first);
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

bool isAllowed(KindSet allowed, int name) {
    return ((allowed >> static_cast<unsigned>(name)) & 1U) != 0;
}

double square(double value) {
    return value * value;
}

/// Costs of fits to one ink.
class Prices {
public:
    Prices(const PolygonInk& ink, std::span<const Kind> kinds, const KindCosts& costs)
        : m_ink(ink), m_kinds(kinds), m_costs(costs), m_free(fitFreePolygon(ink)) {}

    [[nodiscard]] const PolygonFit& freeFit() const { return m_free; }
    [[nodiscard]] double ofFree() const { return m_costs.freeFreedom + ofLean(m_free); }

    double of(const Kind& kind, const PolygonFit& fit) {
        if (kind.wider != kind.name && kind.wider != m_widerName) {
            m_wider = widerFit(m_ink, m_kinds, kind, fit);
            m_widerName = kind.wider;
        }
        const PolygonFit& wider = kind.wider == kind.name ? fit : m_wider;
        const KindErrors errors = errorsOf(m_ink, fit, wider, m_free);
        return kind.freedom + square(errors.edges / m_costs.edges) +
               square(errors.directions / m_costs.directions) + ofLean(fit);
    }

private:
    [[nodiscard]] double ofLean(const PolygonFit& fit) const {
        const double angle = square(lean(fit.axis));
        return m_costs.lean * angle / (angle + square(m_costs.halfLean));
    }

    const PolygonInk& m_ink;
    std::span<const Kind> m_kinds;
    const KindCosts& m_costs;
    PolygonFit m_free;
    int m_widerName = -1;
    PolygonFit m_wider;
};

}  // namespace

KindErrors errorsOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& wider,
                    const PolygonFit& free) {
    double sum = 0.0;
    for (int k = 0; k < fit.edges; ++k) {
        sum += square(std::log(edgeOf(fit, k) / edgeOf(wider, k)));
    }
    // No such polygon: what is not finite must not win.
    const bool exists = std::isfinite(fit.squares) && std::isfinite(sum);
    return {exists ? std::sqrt(sum / fit.edges) : INF, strayOf(ink, wider, free)};
}

PolygonFit widerFit(const PolygonInk& ink, std::span<const Kind> kinds, const Kind& kind,
                    const PolygonFit& fit) {
    if (kind.wider == kind.name) {
        return fit;
    }
    const auto wider = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Kind& k) { return k.name == kind.wider; });
    return wider == kinds.end() ? fitFreePolygon(ink) : bestOf(ink, *wider);
}

KindChoice chooseKind(const PolygonInk& ink, std::span<const Kind> kinds, const KindCosts& costs,
                      KindSet allowed) {
    Prices prices(ink, kinds, costs);
    KindChoice best{costs.freeName, noPolygon()};
    double least = INF;
    if (isAllowed(allowed, costs.freeName)) {
        best.fit = prices.freeFit();
        least = prices.ofFree();
    }
    for (const Kind& kind : kinds) {
        if (!isAllowed(allowed, kind.name)) {
            continue;
        }
        for (int first = 0; first < kind.firsts && kind.freedom < least; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            const double cost = prices.of(kind, fit);
            if (cost < least) {
                least = cost;
                best = {kind.name, fit};
            }
        }
    }
    return best;
}

}  // namespace Scrivo::beautifier
