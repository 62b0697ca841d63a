#pragma once

#include "Beautifier/ink/Vec.h"
#include "Scrivo/Types.h"

/// Comparisons of sides and directions. Regularised corners come from
/// single-precision roots, so they are exact to a ten-thousandth only.
namespace Scrivo::beautifier {

/// b - a.
Vec difference(const Point2D& a, const Point2D& b);

bool equal(double a, double b);
bool perpendicular(Vec a, Vec b);
bool parallel(Vec a, Vec b);

}  // namespace Scrivo::beautifier
