#pragma once

#include "Beautifier/figures/Family.h"
#include "Beautifier/fit/Corners.h"

/// What triangles and quadrangles share.
namespace Scrivo::beautifier {

/// The closed polygon of `count` corners that fits the loop best. The ends of
/// the stroke must meet.
Corners fitPolygon(const Evidence& evidence, int count);

/// A gap over the shortest side is cut off here: a gap that wide is a missing
/// side.
inline constexpr double MAX_GAP = 1.5;

struct PolygonFeatures {
    double worst = 0.0;    ///< log of the largest distance of the ink
    double side = 0.0;     ///< log of the shortest over the longest side
    double angle = 0.0;    ///< largest interior angle, radians
    double gap = 0.0;      ///< over the shortest side
    double corner = 0.0;   ///< log of the largest distance of a corner from the ink
    double bend = 1.5;     ///< least share of a corner's bend that the ink makes near it
    double length = 0.0;   ///< log of the path over the perimeter
    double far = 0.0;      ///< share of the ink away from the polygon
    double winding = 0.0;  ///< how far the bends at the corners miss one full turn
};

PolygonFeatures measurePolygon(const Evidence& evidence, int count);

/// The fitted corners in drawing-area units.
std::vector<Point2D> cornersInUnits(const Fitted& fitted, int count);

/// Appends the outline of a closed polygon, 21 points an edge.
void appendPolygon(std::vector<Point2D>& out, std::span<const Point2D> corners);

}  // namespace Scrivo::beautifier
