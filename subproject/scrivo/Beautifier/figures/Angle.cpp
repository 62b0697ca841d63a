#include "Beautifier/figures/Angle.h"

#include "Beautifier/fit/Corners.h"
#include "Beautifier/fit/Explained.h"
#include "Beautifier/fit/Levelling.h"
#include "Beautifier/fit/Share.h"
#include "Beautifier/fit/StraightFit.h"
#include "Scrivo/detail/Sampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Largest lean, radians, of a leg that was meant level.
constexpr double MAX_LEG_LEAN = 0.087;

// Steps of the fine outline on either side of the vertex within which the pen turns.
constexpr int VERTEX_REACH = 6;

// Upper bound of a share of a bend.
constexpr double MAX_BEND = 1.5;

}  // namespace

std::array<double, AngleFamily::FEATURES.size()> AngleFamily::measure(const Evidence& e) {
    // The only corner of the polyline of two pieces is the vertex.
    const Corners fit = cornersOf(e.points, e.scatter, e.polylines[1], false, e.size);
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

Figure AngleFamily::idealise(const Fitted& fitted) {
    const LegsFit fit = fitLegs(fitted.evidence);
    std::array<Vec, 3> at{fit.from, fit.vertex, fit.to};
    if (fitted.options.horizontalVertical) {
        levelLegs(at, MAX_LEG_LEAN);
    }
    const double opening = std::abs(turn(at[0] - at[1], at[2] - at[1]));
    const Frame& frame = fitted.frame;
    return AngleFigure{frame.toUnits(at[0]), frame.toUnits(at[1]), frame.toUnits(at[2]), opening};
}

std::vector<Point2D> outlineOf(const AngleFigure& angle) {
    std::vector<Point2D> out;
    detail::appendEdge(out, angle.from, angle.vertex);
    detail::appendEdge(out, angle.vertex, angle.to);
    return out;
}

}  // namespace Scrivo::beautifier
