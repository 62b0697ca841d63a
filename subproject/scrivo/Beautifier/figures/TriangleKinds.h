#pragma once

#include "Beautifier/fit/KindChoice.h"

/// Equilateral, isosceles and right triangles.
namespace Scrivo::beautifier {

enum ThreeEdges : int { EQUILATERAL, RIGHT_ISOSCELES, ISOSCELES, RIGHT, ANY_TRIANGLE };

KindChoice chooseTriangle(const PolygonInk& ink, KindSet allowed = ALL_KINDS);

}  // namespace Scrivo::beautifier
