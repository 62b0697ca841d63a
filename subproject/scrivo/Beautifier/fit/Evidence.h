#pragma once

#include "Beautifier/fit/Bends.h"
#include "Beautifier/fit/Loop.h"
#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Resampling.h"

#include <optional>

/// Measurements of a stroke that several families use, in units of the frame. The
/// fit of a single family is in that family's file.
namespace Scrivo::beautifier {

/// The additional measurements of a stroke whose ends (nearly) meet.
struct ClosedEvidence {
    Closure closure;
    Coarse loop;
    Scatter scatter;  ///< of the loop
    PolylineFits polygons;
};

struct Evidence {
    Fine fine;  ///< without strays at the ends
    Coarse points;
    Scatter scatter;  ///< of the points
    Bends bends;
    double size = 0.0;    ///< four root mean square distances from the centroid
    double length = 0.0;  ///< of the outline
    PolylineFits polylines;
    Fine outline;                          ///< with strays
    double roughness = 1.0;                ///< length of the ink over that of its outline
    double retraced = 0.0;                 ///< share of the outline that went back over the rest
    double overlap = 0.0;                  ///< share that ran on over the start
    double hook = 0.0;                     ///< longest flick cut at an end
    std::optional<ClosedEvidence> closed;  ///< absent when the ends stay far apart
};

/// Examines the outline of a stroke whose path is `inkLength` long; 0 stands for the
/// length of the outline.
Evidence examine(const Fine& outline, double inkLength = 0.0);

/// Treats the stroke as closed, however far apart its ends are.
void takeAsClosed(Evidence& evidence);

}  // namespace Scrivo::beautifier
