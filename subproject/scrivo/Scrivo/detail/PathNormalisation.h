#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/Scrivo.h"

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

/// Brings paths to the form in which they are compared point by point: the same
/// number of points, orientation, size and position. Nothing is rejected:
/// degenerate paths give NaN and infinities, an empty path stays empty.
namespace Scrivo::detail {

/// What a normal form is.
struct NormalForm {
    std::int32_t numPoints = 0;
    /// Side of the reference square, in the units of the normal form.
    std::int32_t squareSize = 0;
    /// Whether paths are turned to their indicative angle.
    bool rotationInvariant = true;
};

/// Euclidean distance, all in double.
inline double pointDistance(const Point2D& a, const Point2D& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

/// `p` turned about `c` by the angle of this cosine and sine.
inline Point2D rotated(const Point2D& p, const Point2D& c, double cosine, double sine) {
    return {(p.x - c.x) * cosine - (p.y - c.y) * sine + c.x,
            (p.x - c.x) * sine + (p.y - c.y) * cosine + c.y, 0.0};
}

double pathLength(std::span<const Point2D> path);
/// NaN for an empty path.
Point2D centroid(std::span<const Point2D> path);
/// NaN coordinates are skipped. Starts from the largest finite doubles, so an
/// empty path has that corner and an extent of -infinity.
Rect2D boundingBox(std::span<const Point2D> path);

/// `n` points at equal distances along the path. Walks
/// the path once. The first point keeps its force; so does the last one when
/// rounding leaves the walk one point short and it is appended.
/// Throws std::domain_error when the walk would never end: the step is below
/// the spacing of doubles at the coordinates, or negative.
std::vector<Point2D> resample(std::span<const Point2D> path, std::int32_t n);

/// Turned about the centroid by `angle` radians, counter-clockwise with y up.
std::vector<Point2D> rotateBy(std::span<const Point2D> path, double angle);
/// Turned so that the centroid lies level with the first point, to its right.
std::vector<Point2D> rotateToZero(std::span<const Point2D> path);
/// Each axis scaled to the extent `side`; a flat path gives infinities and NaN.
std::vector<Point2D> scaleToSquare(std::span<const Point2D> path, double side);
std::vector<Point2D> translateToOrigin(std::span<const Point2D> path);

/// All of the above in turn. Throws as `resample` does.
std::vector<Point2D> normalizePath(std::span<const Point2D> path, const NormalForm& form);

}  // namespace Scrivo::detail
