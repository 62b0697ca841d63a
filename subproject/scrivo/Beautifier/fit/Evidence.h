#pragma once

#include "Beautifier/fit/Bends.h"
#include "Beautifier/fit/Loop.h"
#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Outline.h"

#include <optional>

/// What all figures look at in a stroke, in the frame's own units. The fit of a
/// single figure stands in that figure's file.
namespace Scrivo::beautifier {

/// What there is of a stroke whose ends (nearly) meet.
struct ClosedEvidence {
    Closure closure;
    Coarse loop;
    Scatter scatter;  ///< of the loop
    PolylineFits polygons;
};

struct Evidence {
    Fine fine;
    Coarse points;
    Scatter scatter;  ///< of the points
    Bends bends;
    double size = 0.0;    ///< four root mean square distances from the centroid
    double length = 0.0;  ///< of the outline
    PolylineFits polylines;
    std::optional<ClosedEvidence> closed;  ///< absent when the ends stay far apart
};

Evidence examine(const Fine& fine);

/// The same stroke taken for a closed one, however far its ends are apart.
void takeAsClosed(Evidence& evidence);

}  // namespace Scrivo::beautifier
