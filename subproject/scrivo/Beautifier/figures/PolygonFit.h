#pragma once

#include "Beautifier/figures/Family.h"
#include "Beautifier/fit/Corners.h"
#include "Beautifier/fit/KindChoice.h"

/// What triangles and quadrangles share.
namespace Scrivo::beautifier {

/// The closed polygon of `count` corners that fits the loop best. The ends of
/// the stroke must meet.
Corners fitPolygon(const Evidence& evidence, int count);

/// The gap over the shortest side is clamped to this: a gap that wide is a missing
/// side.
inline constexpr double MAX_GAP = 1.5;

struct PolygonFeatures {
    double worst = 0.0;   ///< log of the largest distance of the ink from the polygon
    double side = 0.0;    ///< log of the shortest over the longest side
    double angle = 0.0;   ///< largest interior angle, radians
    double gap = 0.0;     ///< over the shortest side
    double corner = 0.0;  ///< log of the largest distance of a corner from the ink
    double bend = 1.5;    ///< least share of a corner's bend that the ink bends near it
    double length = 0.0;  ///< log of the path over the perimeter
    double far = 0.0;     ///< share of the ink away from the polygon
    double winding =
        0.0;  ///< difference of the sum of the corners' bends from a full turn, radians
};

PolygonFeatures measurePolygon(const Evidence& evidence, int count);

/// The ink of all laps, without the tails, along the edges of the polygon of
/// `count` corners.
PolygonInk inkOf(const Evidence& evidence, int count);

/// The corners of the choice in drawing-area units.
void placeCorners(std::span<Point2D> corners, const KindChoice& choice, const Frame& frame);

/// Outline of a closed polygon, 21 points an edge.
std::vector<Point2D> polygonOutline(std::span<const Point2D> corners);

/// The forms that may be chosen: those of the kind that is wished for, only the
/// free one where figures are not to become regular, otherwise all. `free` is the
/// last form.
template <typename Kind, typename Form>
FormSet allowedForms(const Fitted& fitted, Kind (*kindOf)(Form), Form free) {
    if (!fitted.kind && fitted.options.regularFigures) {
        return ALL_FORMS;
    }
    const Kind wished = fitted.kind ? static_cast<Kind>(*fitted.kind) : Kind::GENERAL;
    FormSet allowed = 0;
    for (int id = 0; id <= free; ++id) {
        allowed |= kindOf(static_cast<Form>(id)) == wished ? formBit(id) : 0;
    }
    return allowed;
}

}  // namespace Scrivo::beautifier
