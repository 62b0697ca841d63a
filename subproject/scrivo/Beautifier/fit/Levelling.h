#pragma once

#include "Beautifier/ink/Vec.h"

#include <span>

/// Turns what is nearly level or upright until it is exactly so. Everything is
/// turned as a whole: what is equal, parallel or perpendicular stays so.
namespace Scrivo::beautifier {

/// How far `direction` is from level or upright, radians, at most pi / 4 either
/// way.
double lean(double direction);

/// The least lean of the polygon's edges.
double leastLean(std::span<const Vec> corners);

/// Turns a polygon about the mean of its corners: by the lean of `axis`, one of
/// its symmetries or main edges, or else by that of an edge, if that is at most
/// `maxLean` radians. Corners that come
/// to lie level or upright of each other share that coordinate exactly.
void level(std::span<Vec> corners, double axis, double maxLean);

/// Turns an angle (leg end, vertex, leg end) about its middle until the leg that
/// leans less is level or upright, then the other leg about the vertex if that
/// one leans little as well.
void levelLegs(std::span<Vec, 3> points, double maxLean);

/// `p` turned about `centre` by `angle` radians.
Vec turned(Vec p, Vec centre, double angle);

}  // namespace Scrivo::beautifier
