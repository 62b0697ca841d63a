#pragma once

#include "Beautifier/ConstrainedFit.h"

#include <array>

/// Squares, rectangles, rhombuses and the like.
namespace Scrivo::beautifier {

enum class FourEdges {
    SQUARE,
    RECTANGLE,
    RHOMBUS,
    PARALLELOGRAM,
    KITE,
    ISOSCELES_TRAPEZOID,
    TRAPEZOID,
    GENERAL
};
inline constexpr int FOUR_EDGES = 8;

/// The best polygon of every kind, by `FourEdges`.
std::array<PolygonFit, FOUR_EDGES> fitQuadrangles(const PolygonInk& ink);

}  // namespace Scrivo::beautifier
