#pragma once

#include "Beautifier/ConstrainedFit.h"

#include <array>

/// Equilateral, isosceles and right triangles.
namespace Scrivo::beautifier {

enum class ThreeEdges { EQUILATERAL, RIGHT_ISOSCELES, ISOSCELES, RIGHT, GENERAL };
inline constexpr int THREE_EDGES = 5;

/// The best polygon of every kind, by `ThreeEdges`.
std::array<PolygonFit, THREE_EDGES> fitTriangles(const PolygonInk& ink);

}  // namespace Scrivo::beautifier
