#pragma once

#include "Beautifier/ink/Vec.h"

#include <array>
#include <span>

/// Fits polygons of a form (square, rhombus, isosceles triangle, ...) to ink by
/// least squares over all of their parameters at once: no corner and no edge of
/// the free fit is kept.
namespace Scrivo::beautifier {

inline constexpr int MAX_EDGES = 4;

/// Moments of the points along one edge: number, mean, scatter about the mean.
struct EdgeInk {
    double count = 0.0;
    Vec mean;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
};

/// What a polygon is fitted to. Edges are in counter-clockwise order (the y axis
/// pointing up); `reversed` when the pen went the other way.
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

/// Assigns every point to the nearest edge of the polygon with these corners.
/// Points near the corners, which people round off, are left out.
PolygonInk inkAlong(std::span<const Vec> points, std::span<const Vec> corners);

/// An edge of a form: the direction of its normal is the sum of the form's angles,
/// each times `turns`, plus `fixed` half turns; its distance from the centre is
/// the form's distance of index `distance`.
struct EdgeRule {
    std::array<int, 3> turns;
    double fixed;
    int distance;
};

/// A form of polygon: how its edges depend on each other.
struct PolygonForm {
    int edges;
    int angles;     ///< number of free angles
    int distances;  ///< number of free distances from the centre
    std::array<EdgeRule, MAX_EDGES> edge;
};

struct PolygonFit {
    int edges = 0;
    std::array<Vec, MAX_EDGES> corners;  ///< in drawing order
    /// First angle of the form, radians; of the free polygon the direction of the
    /// edge that leans least.
    double axis = 0.0;
    /// Sum of the squared distances of the points from the lines of their edges;
    /// infinite where there is no such polygon.
    double squares = 0.0;
};

/// The best polygon of a form whose first edge is edge `first` of the ink.
PolygonFit fitPolygon(const PolygonInk& ink, const PolygonForm& form, int first);

/// The same, turned about the mean of its corners until the first angle is level or
/// upright where `isLevel`. If a corner then lies far from that of the free fit, it is
/// fitted again so that none does, as far as the form permits.
PolygonFit placePolygon(const PolygonInk& ink, const PolygonForm& form, int first, bool isLevel);

/// The best polygon of free edges.
PolygonFit fitFreePolygon(const PolygonInk& ink);

}  // namespace Scrivo::beautifier
