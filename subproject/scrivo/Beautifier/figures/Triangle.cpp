#include "Beautifier/figures/Triangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/TriangleKinds.h"

#include <numbers>

namespace Scrivo::beautifier {

namespace {

TriangleKind triangleKindOf(TriangleForm form) {
    switch (form) {
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
    return {f.worst, f.side, f.angle, f.gap, f.corner, f.bend, f.length, f.far};
}

Figure TriangleFamily::idealise(const Fitted& fitted) {
    const PolygonInk ink = inkOf(fitted.evidence, 3);
    const KindChoice choice = chooseTriangle(
        ink, allowedForms(fitted, triangleKindOf, ANY_TRIANGLE), fitted.options.horizontalVertical);
    TriangleFigure triangle;
    triangle.subtype = triangleKindOf(static_cast<TriangleForm>(choice.id));
    placeCorners(triangle.corners, choice, fitted.frame);
    return triangle;
}

Figure TriangleFamily::inBox(const Box& box, std::optional<std::uint8_t> kind) {
    const auto subtype = kind ? static_cast<TriangleKind>(*kind) : TriangleKind::ISOSCELES;
    const double apex = subtype == TriangleKind::RIGHT ? 0.0 : 0.5;
    TriangleFigure triangle{{box.at(0.0, 1.0), box.at(apex, 0.0), box.at(1.0, 1.0)}, subtype};
    if (subtype == TriangleKind::EQUILATERAL) {
        constexpr double HEIGHT = std::numbers::sqrt3 / 2.0;
        triangle.corners[1].y = triangle.corners[0].y - HEIGHT * (box.high.x - box.low.x);
    }
    return triangle;
}

std::vector<Point2D> outlineOf(const TriangleFigure& triangle) {
    return polygonOutline(triangle.corners);
}

}  // namespace Scrivo::beautifier
