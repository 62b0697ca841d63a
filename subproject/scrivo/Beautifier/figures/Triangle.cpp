#include "Beautifier/figures/Triangle.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/Regularity.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/Triangle.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

TriangleKind kindOf(const std::array<Point2D, 3>& c) {
    const std::array sides{difference(c[0], c[1]), difference(c[1], c[2]), difference(c[2], c[0])};
    int equals = 0;
    bool right = false;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec next = sides[(i + 1) % 3];
        equals += equal(norm(sides[i]), norm(next)) ? 1 : 0;
        right = right || perpendicular(sides[i], next);
    }
    if (equals == 3) {
        return TriangleKind::EQUILATERAL;
    }
    if (right) {
        return TriangleKind::RIGHT;
    }
    return equals > 0 ? TriangleKind::ISOSCELES : TriangleKind::GENERAL;
}

}  // namespace

std::array<double, TriangleFamily::FEATURES.size()> TriangleFamily::measure(const Evidence& e) {
    const PolygonFeatures f = measurePolygon(e, 3);
    return {f.worst, f.side, f.angle, f.gap, f.corner, f.bend, f.length, f.far};
}

Ideal TriangleFamily::idealise(const Fitted& fitted) {
    std::vector<Point2D> corners = cornersInUnits(fitted, 3);
    if (fitted.options.regularFigures) {
        detail::regulariseTriangle(corners);
    }
    if (fitted.options.horizontalVertical) {
        detail::levelLowestEdge(corners);
    }
    TriangleFigure triangle;
    std::copy(corners.begin(), corners.end(), triangle.corners.begin());
    triangle.subtype = kindOf(triangle.corners);
    Ideal ideal{triangle, {}};
    appendPolygon(ideal.outline, corners);
    return ideal;
}

}  // namespace Scrivo::beautifier
