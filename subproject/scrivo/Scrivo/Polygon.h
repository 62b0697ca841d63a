/// @file
/// Straight lines, angles and polygons: tests, regularisers and redraws. Coordinates are in
/// drawing-area units; every point that these functions make has force 0.
#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <vector>

namespace Scrivo {

/// Appends 21 points of the least-squares line of `stroke` to `out`, from the
/// smaller to the larger coordinate of its longer extent (x wins when strictly
/// longer). A stroke whose chord is steeper than 20 gives the vertical at its
/// mean abscissa. Returns the number of points appended: 0 below 2 points.
/// Points that all coincide give NaN.
std::int64_t fitLine(std::vector<Point2D>& out, std::vector<Point2D> stroke);

/// Appends 21 evenly spaced points from `from` to `to`, both included, and
/// returns out.size().
std::int64_t drawLine(std::vector<Point2D>& out, Point2D from, Point2D to);

/// Relative band width within which a stroke of extent `length` still counts as
/// straight: (length / -1000) * 0.08 + 0.1. The first argument is ignored.
double threshold(double unused, double length);

/// Smallest distance of the stroke's points to `a` (as x), and of its third
/// point to `b` (as y). A reference point whose x is NaN or at least
/// 2147483647 stands for none; distances to it are 2147483647. With two
/// reference points the stroke must be empty or have at least 3 points.
Point2D distance2(std::vector<Point2D> stroke, Point2D a, Point2D b);

/// Whether a stroke is a straight line: chord / path above 0.98, or at least
/// 0.75 with all points in a band about its extremes that is narrower than
/// `threshold`. Requires a point at least.
bool isStrictLine(std::vector<Point2D> stroke);

/// Appends 21 points of the clean line that `stroke` was meant to be. Ends snap
/// to `anchors` near the line; without one, a nearly horizontal or vertical line
/// becomes exactly so. Returns out.size(); below 2
/// points appends nothing and returns 0. One degenerate branch writes the line
/// "hori line " to standard output.
std::int64_t reDrawLine(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                        std::vector<Point2D> anchors);

/// Whether the two legs of `stroke` about `corner` are straight and differ in
/// length by a factor of two at most. Requires a point at least.
bool isAngle(std::vector<Point2D> stroke, Point2D corner);

/// Index strictly between `from` and `to` of the point that deviates most from
/// the chord between them (the earliest of equals), or -1 when there is none.
/// The indices are not checked.
std::int32_t findAngle(std::vector<Point2D> stroke, std::int32_t from, std::int32_t to);

/// Appends the two legs, 42 points, of a stroke with exactly one corner; a
/// nearly horizontal leg becomes horizontal by turning the figure about its
/// corner. Returns out.size(), or 0 when the stroke is no angle.
std::int64_t reDrawAngle(std::vector<Point2D>& out, std::vector<Point2D> stroke);

/// Makes a nearly equilateral, isosceles or right-angled triangle exactly so by
/// moving one corner; may change the order of the corners. Requires three
/// corners. Always returns 0.
std::int64_t regularTrigon(std::vector<Point2D>& corners);

/// Turns a figure about its lowest corner (largest y) so that the flatter edge
/// there becomes horizontal when its slope is below 0.1. Leaves vertical edges
/// alone. Requires a corner at least.
void horiVertalTrigon(std::vector<Point2D>& corners);

/// Makes a nearly regular quadrangle a square, rectangle, rhombus,
/// parallelogram or trapezoid; the first corner stays. Requires four corners in
/// drawing order.
void regularQuadrangle(std::vector<Point2D>& corners);

/// Appends the closed outline of a polygonal stroke, 21 points an edge; three
/// and four corners are regularised. A stroke in which no polygon is found is
/// appended as drawn. Returns out.size(), or 0 below `LIMIT` points.
std::int64_t reDrawPolygon(std::vector<Point2D>& out, std::vector<Point2D> stroke);

}  // namespace Scrivo
