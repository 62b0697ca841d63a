#pragma once

#include "Scrivo/detail/Geometry.h"

/// Slopes of edges, and the positions that a corner may be moved to.
namespace Scrivo::detail {

/// Slope of the line through `a` and `b`; 2147483647 for a vertical. The value
/// is finite so that two verticals are equally steep, where infinities would
/// give NaN.
double slope(const Point2D& a, const Point2D& b);

/// Slope of the perpendicular to the line through `a` and `b`.
double perpendicularSlope(const Point2D& a, const Point2D& b);

/// Whether a ratio counts as 1: strictly between 0.95 and 1.05.
bool isNearlyOne(double ratio);

/// The two mirror positions that a corner may move to.
struct Mirrored {
    Point2D p;
    Point2D q;
};

/// The one nearer to `old`; `q` on a tie.
Point2D nearer(const Mirrored& m, const Point2D& old);

/// The points at `length` from `origin` on a line of slope `m` through it.
Mirrored alongSlope(const Point2D& origin, double m, double length);

/// The points at `length` from `origin` on the vertical through it, the larger
/// y first.
Mirrored alongVertical(const Point2D& origin, double length);

}  // namespace Scrivo::detail
