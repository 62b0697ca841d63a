#include "Beautifier/figures/PolygonFit.h"

#include "Beautifier/fit/Levelling.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/detail/Sampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

Corners fitPolygon(const Evidence& e, int count) {
    const PolylineFit& fit = e.closed->polygons[static_cast<std::size_t>(count - 1)];
    return cornersOf(e.closed->loop, e.closed->scatter, fit, true, e.size);
}

PolygonFeatures measurePolygon(const Evidence& e, int count) {
    const Corners fit = fitPolygon(e, count);
    const auto corner = [&](int k) { return fit.at[static_cast<std::size_t>(k % fit.count)]; };
    PolygonFeatures f;
    double shortest = MAX_SHARE;
    double longest = 0.0;
    Bends bends;
    for (int i = 0; i < fit.count; ++i) {
        const Vec side = corner(i + 1) - corner(i);
        const double bend = turn(side, corner(i + 2) - corner(i + 1));
        shortest = std::min(shortest, norm(side));
        longest = std::max(longest, norm(side));
        f.angle = std::max(f.angle, std::numbers::pi - std::abs(bend));
        bends.add(bend);
    }
    f.worst = share(fit.worst, e.size);
    f.side = share(shortest, longest);
    f.gap = std::min(MAX_GAP, e.closed->closure.gap / shortest);
    f.winding = std::abs(std::abs(bends.sum) - 2.0 * std::numbers::pi);
    return f;
}

PolygonInk inkOf(const Evidence& e, int count) {
    const Corners fit = fitPolygon(e, count);
    return inkAlong(lapsOf(e.fine, e.closed->closure),
                    std::span(fit.at).first(static_cast<std::size_t>(count)));
}

void placeCorners(std::span<Point2D> corners, const KindChoice& choice, const Fitted& fitted,
                  double maxLean) {
    std::array<Vec, MAX_EDGES> at = choice.fit.corners;
    if (fitted.options.horizontalVertical) {
        level(std::span(at).first(corners.size()), choice.fit.axis, maxLean);
    }
    std::transform(at.begin(), at.begin() + corners.size(), corners.begin(),
                   [&](Vec p) { return fitted.frame.toUnits(p); });
}

std::vector<Point2D> polygonOutline(std::span<const Point2D> corners) {
    std::vector<Point2D> out;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        detail::appendEdge(out, corners[i], corners[(i + 1) % corners.size()]);
    }
    return out;
}

}  // namespace Scrivo::beautifier
