#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/detail/Geometry.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

/// Brings paths to the form in which they are compared point by point: the same
/// number of points, orientation, size and position. Nothing is rejected:
/// degenerate paths give NaN and infinities, an empty path stays empty.
namespace Scrivo::detail {

/// Parameters of the normal form.
struct NormalForm {
    std::int32_t numPoints = 0;
    /// Side of the reference square, in the units of the normal form.
    std::int32_t squareSize = 0;
    /// Whether paths are turned to their indicative angle.
    bool rotationInvariant = true;
};

/// `p` turned counter-clockwise about `c` by the angle of this cosine and sine.
/// The centre is added last, unlike in `rotatedCounterClockwise`: last bits
/// differ. Inline because the rotation search calls it for every point.
inline Point2D rotated(const Point2D& p, const Point2D& c, double cosine, double sine) {
    return {(p.x - c.x) * cosine - (p.y - c.y) * sine + c.x,
            (p.x - c.x) * sine + (p.y - c.y) * cosine + c.y, 0.0};
}

/// NaN for an empty path.
Point2D centroid(Stroke path);
/// NaN coordinates are skipped. Starts from the largest finite doubles, so an
/// empty path has that corner and an extent of -infinity.
Rect2D boundingBox(Stroke path);

/// `n` points at equal distances along the path, in one walk. The first point
/// keeps its force; so does the last one when rounding leaves the walk one point
/// short and it is appended.
/// Nothing when the walk would never end: the step is below the spacing of
/// doubles at the coordinates, or negative.
std::optional<std::vector<Point2D>> tryResample(Stroke path, std::int32_t n);

/// The same; throws std::domain_error where that returns nothing.
std::vector<Point2D> resample(Stroke path, std::int32_t n);

/// What that error says.
inline constexpr char UNRESAMPLED[] = "the resampling step vanishes at these coordinates";

/// Turned about the centroid by `angle` radians, counter-clockwise with y up.
std::vector<Point2D> rotateBy(Stroke path, double angle);
/// Turned so that the centroid lies level with the first point, to its right.
std::vector<Point2D> rotateToZero(Stroke path);
/// Each axis scaled to the extent `side`; a flat path gives infinities and NaN.
std::vector<Point2D> scaleToSquare(Stroke path, double side);
std::vector<Point2D> translateToOrigin(Stroke path);

/// All of the above in turn. The first returns nothing, the second throws as
/// `tryResample` and `resample` do.
/// @{
std::optional<std::vector<Point2D>> tryNormalisePath(Stroke path, const NormalForm& form);
std::vector<Point2D> normalisePath(Stroke path, const NormalForm& form);
/// @}

}  // namespace Scrivo::detail
