#pragma once

#include "Beautifier/fit/Bends.h"
#include "Beautifier/fit/Loop.h"
#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Resampling.h"

#include <optional>

/// What all figures look at in a stroke, in the frame's own units. The fit of a
/// single figure stands in that figure's file.
namespace Scrivo::beautifier {

/// A stroke whose ends (nearly) meet as it is if it was meant round. Samples that
/// are dense leave no choice.
struct RoundEvidence {
    Fine fine;
    Closure closure;
    Coarse loop;
};

/// What there is of a stroke whose ends (nearly) meet.
struct ClosedEvidence {
    Closure closure;
    Coarse loop;
    Scatter scatter;  ///< of the loop
    PolylineFits polygons;
    RoundEvidence round;
};

/// Samples of so many even pieces show all that there is to see.
inline constexpr double MANY_PIECES = 24.0;

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
    double pieces = MANY_PIECES;           ///< even pieces that the samples are worth
    double retraced = 0.0;                 ///< share of the outline that went back over the rest
    double overlap = 0.0;                  ///< share that ran on over the start
    double hook = 0.0;                     ///< longest flick cut at an end
    std::optional<ClosedEvidence> closed;  ///< absent when the ends stay far apart
};

/// Examines an outline as it is.
Evidence examine(const Fine& outline);

/// Examines ink of a positive extent.
Evidence examine(const Ink& ink, const Frame& frame);

/// The same stroke taken for a closed one, however far its ends are apart.
void takeAsClosed(Evidence& evidence);

}  // namespace Scrivo::beautifier
