#pragma once

#include "Scrivo/Types.h"

#include <vector>

/// Parameters of ellipses: made regular, and drawn.
namespace Scrivo::detail {

/// Semi-axes (x, y) about a centre, turned by `angle` radians.
struct EllipseShape {
    Point2D centre;
    Point2D radii;
    double angle = 0.0;
};

/// Whether no parameter is NaN.
bool isComplete(const EllipseShape& e);

/// Makes a nearly round ellipse a circle.
EllipseShape rounded(EllipseShape e);
/// Makes the axes horizontal and vertical where they nearly are.
EllipseShape levelled(EllipseShape e);

/// Appends the closed outline, 85 points from the end of the first axis.
void appendEllipse(std::vector<Point2D>& out, const EllipseShape& e);

}  // namespace Scrivo::detail
