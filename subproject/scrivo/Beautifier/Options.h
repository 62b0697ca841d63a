/// @file
/// The options of the beautifier.
#pragma once

#include "Beautifier/Figure.h"

#include <cstdint>
#include <set>

namespace Scrivo {

/// Every member of the enumeration.
std::set<FigureFamily> allFamilies();

/// Marks of other strokes that the ends of a line may snap to.
enum class AnchorSort : std::uint8_t {
    CENTRE,  ///< mean of the samples
    END,     ///< of an open stroke of 20 units and more
    CORNER   ///< of a stroke of 20 units and more
};

/// Which figures a beautifier recognises, and how readily.
struct BeautifierOptions {
    /// The families wanted. A stroke that is taken for another one stays ink.
    std::set<FigureFamily> figures = allFamilies();
    /// Strokes whose longer side is below this many drawing-area units stay ink,
    /// dots included: small strokes are handwriting. At least 0 and finite.
    double minSize = 0.0;
    /// Longer side, in drawing-area units, of the largest mark that a tap leaves;
    /// what is larger is no dot. At least 0 and finite. The default suits units
    /// of about a 96th of an inch, as CSS pixels are; dense pixels of a telephone
    /// ask for 14.
    double tapSize = 4.0;
    /// From 0 (only figures beyond doubt) to 1 (readily). Raising it never turns a
    /// figure back into ink and never makes another figure of it.
    double sensitivity = 0.5;
    /// Figures that are nearly level or upright by an edge, a diagonal, a leg or an
    /// axis are turned as a whole until they are.
    bool horizontalVertical = true;
    /// Nearly regular triangles and quadrangles become regular, nearly round
    /// ellipses circles.
    bool regularFigures = true;
    /// The ends of lines snap to nearby strokes,
    bool nearbyStrokes = true;
    /// namely to these marks of theirs.
    std::set<AnchorSort> anchors{AnchorSort::CENTRE, AnchorSort::END, AnchorSort::CORNER};
    /// Figures, but not lines, that stick out of the drawing area are moved back
    /// into it as a whole, where they fit.
    bool insideArea = true;
};

}  // namespace Scrivo
