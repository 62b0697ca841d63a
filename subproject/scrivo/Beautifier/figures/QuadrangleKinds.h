#pragma once

#include "Beautifier/fit/KindChoice.h"

#include <span>

/// Squares, rectangles, rhombuses and the like.
namespace Scrivo::beautifier {

enum FourEdges : int {
    SQUARE,
    STANDING_SQUARE,  ///< on a corner
    RECTANGLE,
    RHOMBUS,
    PARALLELOGRAM,
    KITE,
    ISOSCELES_TRAPEZOID,
    TRAPEZOID,
    ANY_QUADRANGLE
};

/// All kinds but the free one, of ascending freedom.
std::span<const Kind> quadrangleKinds();

KindChoice chooseQuadrangle(const PolygonInk& ink, KindSet allowed = ALL_KINDS);

}  // namespace Scrivo::beautifier
