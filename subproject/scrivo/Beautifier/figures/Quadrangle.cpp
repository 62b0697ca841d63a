#include "Beautifier/figures/Quadrangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/Regularity.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/Quadrangle.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// Corners that miss one full turn by more belong to sides that cross.
constexpr double CROSSED = 3.0;

QuadrangleKind kindOf(const std::array<Point2D, 4>& c) {
    const Vec a = difference(c[0], c[1]);
    const Vec b = difference(c[1], c[2]);
    const bool twoPairs =
        parallel(a, difference(c[2], c[3])) && parallel(b, difference(c[3], c[0]));
    if (twoPairs) {
        const bool right = perpendicular(a, b);
        if (equal(norm(a), norm(b))) {
            return right ? QuadrangleKind::SQUARE : QuadrangleKind::RHOMBUS;
        }
        return right ? QuadrangleKind::RECTANGLE : QuadrangleKind::PARALLELOGRAM;
    }
    const bool onePair = parallel(a, difference(c[2], c[3])) || parallel(b, difference(c[3], c[0]));
    return onePair ? QuadrangleKind::TRAPEZOID : QuadrangleKind::GENERAL;
}

}  // namespace

std::array<double, QuadrangleFamily::FEATURES.size()> QuadrangleFamily::measure(const Evidence& e) {
    const PolygonFeatures f = measurePolygon(e, 4);
    return {f.worst, f.side, f.angle, f.gap, f.corner, f.bend, f.length, f.far, f.winding};
}

bool QuadrangleFamily::competes(std::span<const double> own) {
    return own.back() <= CROSSED;
}

Ideal QuadrangleFamily::idealise(const Fitted& fitted) {
    std::vector<Point2D> corners = cornersInUnits(fitted, 4);
    if (fitted.options.regularFigures) {
        detail::regulariseQuadrangle(corners);
    }
    if (fitted.options.horizontalVertical) {
        detail::levelLowestEdge(corners);
    }
    QuadrangleFigure quadrangle;
    std::copy(corners.begin(), corners.end(), quadrangle.corners.begin());
    quadrangle.subtype = kindOf(quadrangle.corners);
    Ideal ideal{quadrangle, {}};
    appendPolygon(ideal.outline, corners);
    return ideal;
}

}  // namespace Scrivo::beautifier
