#include "Beautifier/figures/PolygonFit.h"

#include "Beautifier/fit/Explained.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/detail/Sampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Steps of the fine outline on either side of a corner within which the pen turns.
constexpr int CORNER_REACH = 4;

}  // namespace

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
    double perimeter = 0.0;
    double corners = 0.0;
    Bends bends;
    std::array<Vec, MAX_PIECES + 1> outline{};
    for (int i = 0; i < fit.count; ++i) {
        const Vec side = corner(i + 1) - corner(i);
        const double bend = turn(side, corner(i + 2) - corner(i + 1));
        const CornerInk ink = inkAt(e.fine, corner(i + 1), e.closed->closure.first,
                                    e.closed->closure.last, CORNER_REACH);
        corners = std::max(corners, ink.distance);
        f.bend = std::min(f.bend, ink.bend / std::max(std::abs(bend), 0.1));
        perimeter += norm(side);
        outline[static_cast<std::size_t>(i)] = corner(i);
        shortest = std::min(shortest, norm(side));
        longest = std::max(longest, norm(side));
        f.angle = std::max(f.angle, std::numbers::pi - std::abs(bend));
        bends.add(bend);
    }
    f.worst = share(fit.worst, e.size);
    f.side = share(shortest, longest);
    f.gap = std::min(MAX_GAP, e.closed->closure.gap / shortest);
    f.corner = share(corners, e.size);
    f.length = lengthRatio(e, perimeter);
    outline[static_cast<std::size_t>(fit.count)] = corner(0);
    f.far = farShare(e, std::span(outline).first(static_cast<std::size_t>(fit.count) + 1));
    f.winding = std::abs(std::abs(bends.sum) - 2.0 * std::numbers::pi);
    return f;
}

PolygonInk inkOf(const Evidence& e, int count) {
    const Corners fit = fitPolygon(e, count);
    return inkAlong(lapsOf(e.fine, e.closed->closure),
                    std::span(fit.at).first(static_cast<std::size_t>(count)));
}

void placeCorners(std::span<Point2D> corners, const KindChoice& choice, const Frame& frame) {
    std::transform(choice.fit.corners.begin(), choice.fit.corners.begin() + corners.size(),
                   corners.begin(), [&](Vec p) { return frame.toUnits(p); });
}

std::vector<Point2D> polygonOutline(std::span<const Point2D> corners) {
    std::vector<Point2D> out;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        detail::appendEdge(out, corners[i], corners[(i + 1) % corners.size()]);
    }
    return out;
}

}  // namespace Scrivo::beautifier
