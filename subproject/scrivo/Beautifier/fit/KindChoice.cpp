#include "Beautifier/fit/KindChoice.h"

#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Scrivo::beautifier {

namespace {

double leanCost(const LeanCharge& charge, double angle) {
    const double square = angle * angle;
    return charge.most * square / (square + charge.half * charge.half);
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

}  // namespace

double excess(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& free) {
    return std::sqrt(std::max(fit.squares - free.squares, 0.0) / ink.count) / ink.size;
}

KindChoice chooseKind(const PolygonInk& ink, std::span<const Kind> kinds, const FreeKind& free,
                      const LeanCharge& charge, KindSet allowed) {
    const PolygonFit freeFit = fitFreePolygon(ink);
    KindChoice best{free.name, noPolygon()};
    double least = INF;
    if (isAllowed(allowed, free.name)) {
        best.fit = freeFit;
        least = free.freedom + leanCost(charge, lean(freeFit.axis));
    }
    for (const Kind& kind : kinds) {
        if (kind.freedom >= least || !isAllowed(allowed, kind.name)) {
            continue;
        }
        for (int first = 0; first < kind.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            const double off = excess(ink, fit, freeFit) / kind.tolerance;
            const double cost = kind.freedom + off * off + leanCost(charge, lean(fit.axis));
            if (cost < least) {
                least = cost;
                best = {kind.name, fit};
            }
        }
    }
    return best;
}

}  // namespace Scrivo::beautifier
