/// @file
/// The options of the beautifier.
#pragma once

#include "Beautifier/Figure.h"

#include <cstdint>
#include <set>

namespace Scrivo {

/// Every member of the enumeration.
std::set<FigureFamily> allFamilies();

/// Points of other strokes that the ends of a line may snap to.
enum class AnchorSort : std::uint8_t {
    CENTRE,  ///< mean of the samples
    END,     ///< of an open stroke of 20 units and more
    CORNER   ///< of a stroke of 20 units and more
};

/// Which figures a beautifier recognises, how readily, and how it makes them ideal.
struct BeautifierOptions {
    /// The families wanted. A stroke recognised as any other family stays ink.
    std::set<FigureFamily> figures = allFamilies();
    /// Strokes whose longer side is below this many drawing-area units stay ink,
    /// dots included: small strokes are handwriting. At least 0 and finite.
    double minSize = 0.0;
    /// Longer side, in drawing-area units, of the largest mark that a tap leaves;
    /// larger marks are not dots. At least 0 and finite. The default suits units of
    /// about a 96th of an inch, such as CSS pixels; for the physical pixels of a
    /// phone use 14.
    double tapSize = 4.0;
    /// From 0 (only figures beyond doubt) to 1 (readily). Raising it never turns a
    /// figure back into ink or into another figure.
    double sensitivity = 0.5;
    /// Figures that are nearly level or upright by an edge, a diagonal, a leg or an
    /// axis are turned as a whole until they are.
    bool horizontalVertical = true;
    /// Nearly regular triangles and quadrangles become regular, nearly round
    /// ellipses circles.
    bool regularFigures = true;
    /// The ends of lines snap to nearby strokes.
    bool nearbyStrokes = true;
    /// Points of nearby strokes that they snap to.
    std::set<AnchorSort> anchors{AnchorSort::CENTRE, AnchorSort::END, AnchorSort::CORNER};
    /// Figures, but not lines, that stick out of the drawing area are moved back
    /// into it as a whole, where they fit.
    bool insideArea = true;
};

}  // namespace Scrivo
