#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// The routines behind Polygon.h. What they do stands there; these look at the
/// caller's stroke instead of a copy.
namespace Scrivo::detail {

// StraightLine.cpp
std::int64_t fitLine(std::vector<Point2D>& out, Stroke stroke);
bool isStrictLine(Stroke stroke);

// LineSnapping.cpp
std::int64_t reDrawLine(std::vector<Point2D>& out, Stroke stroke, Stroke anchors);

// Triangle.cpp
void regulariseTriangle(std::vector<Point2D>& corners);
void levelLowestEdge(std::vector<Point2D>& corners);

// Quadrangle.cpp
void regulariseQuadrangle(std::vector<Point2D>& corners);

// Polygon.cpp
/// Turns both legs of an angle about its corner so that a nearly horizontal one
/// becomes horizontal.
void levelLegs(Point2D& first, const Point2D& corner, Point2D& last);
std::int64_t reDrawAngle(std::vector<Point2D>& out, Stroke stroke);
std::int64_t reDrawPolygon(std::vector<Point2D>& out, Stroke stroke);

}  // namespace Scrivo::detail
