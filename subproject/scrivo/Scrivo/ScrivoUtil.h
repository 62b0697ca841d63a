/// @file
/// Plane geometry that the units share. Global namespace.
///
/// `force` of arguments is ignored and 0 in results. Nothing here fails:
/// divisions by zero give the IEEE result (NaN, infinity). Lengths marked
/// "single root" are the single-precision square root of a sum of squares that
/// is formed in double and rounded to float once; thresholds compare these
/// values.
#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <vector>

/// Euclidean distance of `a` and `b`, single root.
double distance(Scrivo::Point2D a, Scrivo::Point2D b);

/// Cosine of the angle between the vectors `u` and `v`, in double; NaN or
/// infinite when one of them is the zero vector.
double cosine(Scrivo::Point2D u, Scrivo::Point2D v);

/// Foot of the perpendicular from `p` on the line through `a` and `b`; NaN when
/// `a` and `b` coincide.
Scrivo::Point2D projection(Scrivo::Point2D a, Scrivo::Point2D b, Scrivo::Point2D p);

/// z component of (b - a) x (c - a): positive when c lies counter-clockwise of
/// the ray from a to b, the y axis pointing up.
double direction(Scrivo::Point2D a, Scrivo::Point2D b, Scrivo::Point2D c);

/// Length of the polyline from point `i` to point `j` - 1; 0 when that is no
/// segment. Single roots, the sum rounded to float after every addition.
/// Requires 0 <= i and j <= the number of points.
double arc_length(std::vector<Scrivo::Point2D> stroke, std::int64_t i, std::int64_t j);

/// `p` turned about `centre` by -`angle` radians, the y axis pointing up.
Scrivo::Point2D rotationLine(Scrivo::Point2D centre, Scrivo::Point2D p, double angle);

/// Whether chord / path length is strictly above 0.95; false below 2 points.
bool isSimpleLine(std::vector<Scrivo::Point2D> stroke);

/// Width (x) and height (y) of a stroke, each `UNKNOWN_EXTENT` below 10 points.
/// The maxima start at 0: a stroke at negative coordinates only measures from
/// its minimum to 0. NaN coordinates are skipped.
Scrivo::Point2D scaleOfGraph(std::vector<Scrivo::Point2D> stroke);

/// Moves a figure into [0, width] x [0, height] by one shift an axis. A figure
/// that sticks out on both sides of an axis stays where it is, on both axes.
void boundCheck(std::vector<Scrivo::Point2D>& stroke, float width, float height);

/// Divides x by `width` and y by `height`.
void recover(std::vector<Scrivo::Point2D>& stroke, float width, float height);
