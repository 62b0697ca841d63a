#pragma once

#include "Beautifier/fit/KindChoice.h"

#include <span>

/// Equilateral, isosceles and right triangles.
namespace Scrivo::beautifier {

enum ThreeEdges : int { EQUILATERAL, RIGHT_ISOSCELES, ISOSCELES, RIGHT, ANY_TRIANGLE };

/// All kinds but the free one, of ascending freedom.
std::span<const Kind> triangleKinds();

KindChoice chooseTriangle(const PolygonInk& ink, KindSet allowed = ALL_KINDS);

}  // namespace Scrivo::beautifier
