#include "Beautifier/figures/Line.h"

#include "Beautifier/figures/Anchors.h"
#include "Beautifier/figures/LineSnap.h"
#include "Beautifier/fit/Share.h"
#include "Beautifier/fit/StraightFit.h"
#include "Scrivo/detail/Sampling.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

std::array<double, LineFamily::FEATURES.size()> LineFamily::measure(const Evidence& e) {
    const FittedLine line = e.scatter.line(0, COARSE - 1);
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

Figure LineFamily::idealise(const Fitted& fitted) {
    const Segment fit = fitSegment(fitted.evidence);
    const Frame& frame = fitted.frame;
    const Segment drawn{frame.centre + frame.extent * fit.from,
                        frame.centre + frame.extent * fit.to};
    std::vector<Vec> anchors;
    if (fitted.options.nearbyStrokes) {
        anchors = anchorsNear(drawn, fitted.around, fitted.options.anchors);
    }
    const Segment line = snapped(drawn, anchors, fitted.options.horizontalVertical);
    return LineFigure{{line.from.x, line.from.y, 0.0}, {line.to.x, line.to.y, 0.0}};
}

std::vector<Point2D> outlineOf(const LineFigure& line) {
    std::vector<Point2D> out;
    detail::appendEdge(out, line.from, line.to);
    return out;
}

}  // namespace Scrivo::beautifier
