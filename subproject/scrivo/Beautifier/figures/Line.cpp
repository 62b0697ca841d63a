#include "Beautifier/figures/Line.h"

#include "Beautifier/figures/Regularity.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/Polygon.h"
#include "Scrivo/detail/LineSnapping.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

namespace {

FittedLine fitTo(const Evidence& evidence) {
    return evidence.scatter.line(0, COARSE - 1);
}

/// The line as it leans, between the feet of its outermost points.
std::vector<Point2D> leaningLine(const Evidence& e, const Frame& frame) {
    const FittedLine line = fitTo(e);
    const Reach reach = reachOf(e.points, line.centre, line.along);
    const auto foot = [&](double at) { return frame.toUnits(line.centre + at * line.along); };
    std::vector<Point2D> outline;
    drawLine(outline, foot(reach.low), foot(reach.high));
    return outline;
}

/// Whether one of the anchors is near enough for an end to snap to it, or for
/// the line to be laid through it. Strokes out of reach must not be asked: an
/// upright line would step aside by a unit for them.
bool isInReach(const std::vector<Point2D>& line, std::span<const Point2D> anchors) {
    const Vec from{line.front().x, line.front().y};
    const Vec along = difference(line.front(), line.back());
    const double length = norm(along);
    return std::any_of(anchors.begin(), anchors.end(), [&](const Point2D& anchor) {
        const Vec d = Vec{anchor.x, anchor.y} - from;
        const double beyond = std::abs(dot(along, d) / length - 0.5 * length) - 0.5 * length;
        return std::abs(cross(along, d)) < NEAR * length && beyond < NEAR;
    });
}

/// The line with its ends at anchors, straightened where there are none. What is
/// redrawn is the leaning line: the chord of a stroke that runs there and back
/// says nothing.
std::vector<Point2D> snappedLine(const std::vector<Point2D>& leaning,
                                 const BeautifierOptions& options,
                                 std::span<const Point2D> anchors) {
    const bool snaps = options.nearbyStrokes && isInReach(leaning, anchors);
    if (!snaps && !options.horizontalVertical) {
        return leaning;
    }
    std::vector<Point2D> outline;
    detail::reDrawLine(outline, leaning, snaps ? anchors : std::span<const Point2D>());
    return outline;
}

}  // namespace

std::array<double, LineFamily::FEATURES.size()> LineFamily::measure(const Evidence& e) {
    const FittedLine line = fitTo(e);
    double low = 0.0;
    double high = 0.0;
    double worst = 0.0;
    for (const Vec& p : e.points) {
        const Vec d = p - line.centre;
        low = std::min(low, dot(d, line.along));
        high = std::max(high, dot(d, line.along));
        worst = std::max(worst, std::abs(cross(line.along, d)));
    }
    return {share(e.polylines[0].rms, e.size), share(worst, e.size),
            share(e.length - (high - low), high - low)};
}

Ideal LineFamily::idealise(const Fitted& fitted) {
    const Evidence& e = fitted.evidence;
    Ideal ideal;
    ideal.outline = snappedLine(leaningLine(e, fitted.frame), fitted.options, fitted.anchors);
    // What is redrawn runs to the right or downwards, the pen may run either way.
    const Vec drawn = e.points.back() - e.points.front();
    if (dot(difference(ideal.outline.front(), ideal.outline.back()), drawn) < 0.0) {
        std::reverse(ideal.outline.begin(), ideal.outline.end());
    }
    ideal.figure = LineFigure{ideal.outline.front(), ideal.outline.back()};
    return ideal;
}

}  // namespace Scrivo::beautifier
