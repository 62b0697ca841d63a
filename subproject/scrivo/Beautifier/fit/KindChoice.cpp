#include "Beautifier/fit/KindChoice.h"

#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

namespace {

// What a lean costs: nothing at 0, half of the charge at this angle.
constexpr double LEAN_CHARGE = 4.64;
constexpr double HALF_CHARGE = 0.133;

double leanCost(double angle) {
    const double square = angle * angle;
    return LEAN_CHARGE * square / (square + HALF_CHARGE * HALF_CHARGE);
}

}  // namespace

double excess(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& free) {
    return std::sqrt(std::max(fit.squares - free.squares, 0.0) / ink.count) / ink.size;
}

KindChoice chooseKind(const PolygonInk& ink, std::span<const Kind> kinds, const FreeKind& free) {
    KindChoice best{free.name, fitFreePolygon(ink)};
    const PolygonFit freeFit = best.fit;
    double least = free.freedom + leanCost(lean(freeFit.axis));
    for (const Kind& kind : kinds) {
        if (kind.freedom >= least) {
            break;
        }
        for (int first = 0; first < kind.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            const double off = excess(ink, fit, freeFit) / kind.tolerance;
            const double cost = kind.freedom + off * off + leanCost(lean(fit.axis));
            if (cost < least) {
                least = cost;
                best = {kind.name, fit};
            }
        }
    }
    return best;
}

}  // namespace Scrivo::beautifier
