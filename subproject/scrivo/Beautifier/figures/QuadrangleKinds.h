#pragma once

#include "Beautifier/fit/KindChoice.h"

#include <span>

/// Chooses the kind of a quadrangle.
namespace Scrivo::beautifier {

/// Forms that are fitted. A kind may have several: squares lie level or stand on a
/// corner.
enum QuadrangleForm : int {
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

/// All forms but the free one, in ascending order of freedom.
std::span<const Candidate> quadrangleForms();

const FormCosts& quadrangleCosts();

KindChoice chooseQuadrangle(const PolygonInk& ink, FormSet allowed = ALL_FORMS,
                            bool isLevelled = true);

}  // namespace Scrivo::beautifier
