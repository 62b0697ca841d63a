#include "Beautifier/figures/Angle.h"

#include "Beautifier/figures/Regularity.h"
#include "Beautifier/fit/Corners.h"
#include "Beautifier/fit/Explained.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/Polygon.h"
#include "Scrivo/detail/Levelling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Steps of the fine outline about the vertex in which a pen turns.
constexpr int VERTEX_REACH = 6;

// Of shares of a bend.
constexpr double MAX_BEND = 1.5;

/// The two-piece polyline: its one corner is the vertex.
Corners fitTo(const Evidence& e) {
    return cornersOf(e.points, e.scatter, e.polylines[1], false, e.size);
}

}  // namespace

std::array<double, AngleFamily::FEATURES.size()> AngleFamily::measure(const Evidence& e) {
    const Corners fit = fitTo(e);
    const Vec a = e.points.front() - fit.at[0];
    const Vec b = e.points.back() - fit.at[0];
    const Vec ink = e.points[static_cast<std::size_t>(e.polylines[1].knots[1])];
    const double legs = norm(e.points.front() - ink) + norm(e.points.back() - ink);
    const double opening = std::abs(turn(a, b));
    const double turning = std::abs(e.bends.absolute - (std::numbers::pi - opening));
    const CornerInk vertex = inkAt(e.fine, fit.at[0], 0, FINE - 1, VERTEX_REACH);
    return {std::exp(share(e.polylines[1].rms, e.size) - share(e.polylines[0].rms, e.size)),
            share(fit.worst, e.size),
            share(std::min(norm(a), norm(b)), std::max(norm(a), norm(b))),
            share(e.length - legs, e.size),
            std::min(turning, MAX_TURNING),
            opening,
            share(vertex.distance, e.size),
            std::min(vertex.bend / std::max(std::numbers::pi - opening, 0.1), MAX_BEND),
            farShare(e, std::array{e.points.front(), fit.at[0], e.points.back()})};
}

Ideal AngleFamily::idealise(const Fitted& fitted) {
    const Evidence& e = fitted.evidence;
    const auto units = [&](Vec p) { return fitted.frame.toUnits(p); };
    AngleFigure angle{units(e.points.front()), units(fitTo(e).at[0]), units(e.points.back()), 0.0};
    if (fitted.options.horizontalVertical) {
        detail::levelLegs(angle.from, angle.vertex, angle.to);
    }
    angle.opening =
        std::abs(turn(difference(angle.vertex, angle.from), difference(angle.vertex, angle.to)));
    Ideal ideal;
    drawLine(ideal.outline, angle.from, angle.vertex);
    drawLine(ideal.outline, angle.vertex, angle.to);
    ideal.figure = angle;
    return ideal;
}

}  // namespace Scrivo::beautifier
