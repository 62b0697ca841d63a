#pragma once

#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <vector>

/// The routines behind Ellipse.h that the pipeline and the beautifier call.
namespace Scrivo::detail {

/// Semi-axes (x, y) about a centre, turned by `angle` radians.
struct EllipseShape {
    Point2D centre;
    Point2D radii;
    double angle = 0.0;
};

/// Nearly round becomes round.
EllipseShape rounded(EllipseShape e);
/// Nearly upright or lying becomes exactly so.
EllipseShape levelled(EllipseShape e);
/// Appends the closed outline, 85 points from the end of the first axis.
void appendEllipse(std::vector<Point2D>& out, const EllipseShape& e);

bool isPoint(Stroke stroke);
std::int64_t reDrawPoint(std::vector<Point2D>& out, Stroke stroke);
std::int64_t reDrawEllipse(std::vector<Point2D>& out, Stroke stroke, std::int32_t width,
                           std::int32_t height);

}  // namespace Scrivo::detail
