#include "Beautifier/figures/Quadrangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/QuadrangleKinds.h"

namespace Scrivo::beautifier {

namespace {

// Sides cross where the bends at the corners differ from a full turn by more, radians.
constexpr double CROSSED = 3.0;

QuadrangleKind quadrangleKindOf(QuadrangleForm form) {
    switch (form) {
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
    return {f.worst, f.side, f.angle, f.gap, f.corner, f.bend, f.length, f.far, f.winding};
}

bool QuadrangleFamily::competes(std::span<const double> own) {
    return own.back() <= CROSSED;
}

Figure QuadrangleFamily::idealise(const Fitted& fitted) {
    const PolygonInk ink = inkOf(fitted.evidence, 4);
    const KindChoice choice =
        chooseQuadrangle(ink, allowedForms(fitted, quadrangleKindOf, ANY_QUADRANGLE),
                         fitted.options.horizontalVertical);
    QuadrangleFigure quadrangle;
    quadrangle.subtype = quadrangleKindOf(static_cast<QuadrangleForm>(choice.id));
    placeCorners(quadrangle.corners, choice, fitted.frame);
    return quadrangle;
}

Figure QuadrangleFamily::inBox(const Box& box, std::optional<std::uint8_t> kind) {
    const auto subtype = kind ? static_cast<QuadrangleKind>(*kind) : QuadrangleKind::RECTANGLE;
    switch (subtype) {
        case QuadrangleKind::SQUARE: {
            const Vec middle = 0.5 * (box.low + box.high);
            const Vec size = box.high - box.low;
            const double half = 0.25 * (size.x + size.y);
            const Vec corner{half, half};
            const Box square{middle - corner, middle + corner};
            return QuadrangleFigure{
                {square.at(0, 0), square.at(1, 0), square.at(1, 1), square.at(0, 1)}, subtype};
        }
        case QuadrangleKind::RHOMBUS:
        case QuadrangleKind::KITE: {
            const double across = subtype == QuadrangleKind::KITE ? 0.3 : 0.5;
            return QuadrangleFigure{
                {box.at(0.5, 0), box.at(1, across), box.at(0.5, 1), box.at(0, across)}, subtype};
        }
        case QuadrangleKind::PARALLELOGRAM:
            return QuadrangleFigure{{box.at(0.25, 0), box.at(1, 0), box.at(0.75, 1), box.at(0, 1)},
                                    subtype};
        case QuadrangleKind::TRAPEZOID:
            return QuadrangleFigure{{box.at(0.25, 0), box.at(0.75, 0), box.at(1, 1), box.at(0, 1)},
                                    subtype};
        default:
            return QuadrangleFigure{{box.at(0, 0), box.at(1, 0), box.at(1, 1), box.at(0, 1)},
                                    subtype};
    }
}

std::vector<Point2D> outlineOf(const QuadrangleFigure& quadrangle) {
    return polygonOutline(quadrangle.corners);
}

}  // namespace Scrivo::beautifier
