#pragma once

#include "Beautifier/ink/Vec.h"

#include <span>

/// Turns figures that are nearly level or upright until they are exactly so. A
/// figure is turned as a whole: equal, parallel and perpendicular edges stay so.
namespace Scrivo::beautifier {

/// Signed angle of `direction` from the nearest of level and upright, radians, at
/// most pi / 4 either way.
double lean(double direction);

/// The lean of the edge that leans least.
double leastLean(std::span<const Vec> corners);

/// Turns a polygon about the mean of its corners by the lean of `axis`, the
/// direction of a symmetry axis or an edge.
void level(std::span<Vec> corners, double axis);

/// Makes coordinates of corners equal that differ by rounding only.
void settle(std::span<Vec> corners);

/// Turns an angle (leg end, vertex, leg end) about its centroid until the leg that
/// leans less is level or upright, then the other leg about the vertex, each if it
/// leans by `maxLean` radians at most.
void levelLegs(std::span<Vec, 3> points, double maxLean);

/// `p` turned about `centre` by `angle` radians.
Vec turned(Vec p, Vec centre, double angle);

}  // namespace Scrivo::beautifier
