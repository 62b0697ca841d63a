#include "Beautifier/figures/Triangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/TriangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Radians that a triangle which was meant level leans at most.
constexpr double MAX_LEAN = 0.07;

TriangleKind kindOf(ThreeEdges kind) {
    switch (kind) {
        case EQUILATERAL:
            return TriangleKind::EQUILATERAL;
        case ISOSCELES:
            return TriangleKind::ISOSCELES;
        case RIGHT_ISOSCELES:
        case RIGHT:
            return TriangleKind::RIGHT;
        default:
            return TriangleKind::GENERAL;
    }
}

}  // namespace

std::array<double, TriangleFamily::FEATURES.size()> TriangleFamily::measure(const Evidence& e) {
    const PolygonFeatures f = measurePolygon(e, 3);
    return {f.worst, f.side, f.angle, f.gap};
}

Figure TriangleFamily::idealise(const Fitted& fitted) {
    const PolygonInk ink = inkOf(fitted.evidence, 3);
    const KindChoice choice = chooseTriangle(ink, allowedKinds(fitted, kindOf, ANY_TRIANGLE));
    TriangleFigure triangle;
    triangle.subtype = kindOf(static_cast<ThreeEdges>(choice.kind));
    placeCorners(triangle.corners, choice, fitted, MAX_LEAN);
    return triangle;
}

std::vector<Point2D> outlineOf(const TriangleFigure& triangle) {
    return polygonOutline(triangle.corners);
}

}  // namespace Scrivo::beautifier
