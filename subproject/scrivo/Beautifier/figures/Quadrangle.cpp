#include "Beautifier/figures/Quadrangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Radians that a quadrangle which was meant level leans at most.
constexpr double MAX_LEAN = 0.15;

// Corners that miss one full turn by more belong to sides that cross.
constexpr double CROSSED = 3.0;

QuadrangleKind kindOf(FourEdges kind) {
    switch (kind) {
        case SQUARE:
        case STANDING_SQUARE:
            return QuadrangleKind::SQUARE;
        case RECTANGLE:
            return QuadrangleKind::RECTANGLE;
        case RHOMBUS:
            return QuadrangleKind::RHOMBUS;
        case PARALLELOGRAM:
            return QuadrangleKind::PARALLELOGRAM;
        case KITE:
            return QuadrangleKind::KITE;
        case ISOSCELES_TRAPEZOID:
        case TRAPEZOID:
            return QuadrangleKind::TRAPEZOID;
        default:
            return QuadrangleKind::GENERAL;
    }
}

}  // namespace

std::array<double, QuadrangleFamily::FEATURES.size()> QuadrangleFamily::measure(const Evidence& e) {
    const PolygonFeatures f = measurePolygon(e, 4);
    return {f.worst, f.side, f.angle, f.gap, f.winding};
}

bool QuadrangleFamily::competes(std::span<const double> own) {
    return own.back() <= CROSSED;
}

Figure QuadrangleFamily::idealise(const Fitted& fitted) {
    const PolygonInk ink = inkOf(fitted.evidence, 4);
    const KindChoice choice = chooseQuadrangle(ink, allowedKinds(fitted, kindOf, ANY_QUADRANGLE));
    QuadrangleFigure quadrangle;
    quadrangle.subtype = kindOf(static_cast<FourEdges>(choice.kind));
    placeCorners(quadrangle.corners, choice, fitted, MAX_LEAN);
    return quadrangle;
}

std::vector<Point2D> outlineOf(const QuadrangleFigure& quadrangle) {
    return polygonOutline(quadrangle.corners);
}

}  // namespace Scrivo::beautifier
