#pragma once

#include "Beautifier/fit/KindChoice.h"

/// Chooses the kind of a triangle.
namespace Scrivo::beautifier {

/// Forms that are fitted.
enum TriangleForm : int { EQUILATERAL, RIGHT_ISOSCELES, ISOSCELES, RIGHT, ANY_TRIANGLE };

KindChoice chooseTriangle(const PolygonInk& ink, FormSet allowed = ALL_FORMS,
                          bool isLevelled = true);

}  // namespace Scrivo::beautifier
