#pragma once

#include "Beautifier/ink/Vec.h"

#include <array>
#include <span>

/// Polygons of a kind (square, rhombus, isosceles triangle, ...) through ink, by
/// least squares over all of their parameters at once: no corner and no edge of
/// the free fit is kept.
namespace Scrivo::beautifier {

inline constexpr int MAX_EDGES = 4;

/// The points along one edge: how many, their mean, their scatter about it.
struct EdgeInk {
    double count = 0.0;
    Vec mean;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
};

/// What a polygon is fitted to. Edges follow one another counter-clockwise (the
/// y axis pointing up); `reversed` when the pen went the other way.
struct PolygonInk {
    int edges = 0;
    bool reversed = false;
    double count = 0.0;  ///< points on all edges
    double size = 0.0;   ///< twice the root mean square distance of the corners from their mean
    std::array<EdgeInk, MAX_EDGES> edge;
    /// Of the free fit. Edge k runs from corner k to corner k + 1.
    std::array<Vec, MAX_EDGES> corners;
    /// Directions of the free edges' normals, radians, ascending.
    std::array<double, MAX_EDGES> normals{};
};

/// Gives every point to the nearest edge of the polygon with these corners.
/// Points near the corners, which hands round off, count for none.
PolygonInk inkAlong(std::span<const Vec> points, std::span<const Vec> corners);

/// Edge of a kind: the direction of its normal is the sum of the kind's angles,
/// each times `turns`, plus `fixed` half turns; its distance from the centre is
/// the kind's distance of index `distance`.
struct EdgeRule {
    std::array<int, 3> turns;
    double fixed;
    int distance;
};

/// How the edges of a kind depend on each other.
struct KindRule {
    int edges;
    int angles;     ///< number of free angles
    int distances;  ///< number of free distances from the centre
    std::array<EdgeRule, MAX_EDGES> edge;
};

struct PolygonFit {
    int edges = 0;
    std::array<Vec, MAX_EDGES> corners;  ///< in drawing order
    /// First angle of the kind, radians; of free edges that of the one that leans
    /// least.
    double axis = 0.0;
    /// Sum of the squared distances of the points from the lines of their edges;
    /// infinite where there is no such polygon.
    double squares = 0.0;
};

/// The best polygon of the kind `rule`, whose first edge is edge `first` of the
/// ink.
PolygonFit fitPolygon(const PolygonInk& ink, const KindRule& rule, int first);

/// The best polygon of free edges.
PolygonFit fitFreePolygon(const PolygonInk& ink);

}  // namespace Scrivo::beautifier
