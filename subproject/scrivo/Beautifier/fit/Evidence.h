#pragma once

#include "Beautifier/fit/Bends.h"
#include "Beautifier/fit/Loop.h"
#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Resampling.h"

#include <optional>

/// What the features and fits of all families start from, in the frame's own units.
/// A fit that only one family uses is in that family's file.
namespace Scrivo::beautifier {

/// A closed stroke resampled as a round one. Differs from the usual resampling only
/// when the samples are sparse.
struct RoundEvidence {
    Fine fine;
    Closure closure;
    Coarse loop;
};

/// Measured only when the ends of the stroke (nearly) meet.
struct ClosedEvidence {
    Closure closure;
    Coarse loop;
    Scatter scatter;  ///< of the loop
    PolylineFits polygons;
    RoundEvidence round;
};

/// From this many even pieces on, a stroke counts as densely sampled.
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
    double pieces = MANY_PIECES;           ///< as in `Frame`; `MANY_PIECES` without samples
    double retraced = 0.0;                 ///< share of the outline that retraced the rest
    double overlap = 0.0;                  ///< share that continued past the start
    double hook = 0.0;                     ///< longest hook cut at an end
    std::optional<ClosedEvidence> closed;  ///< absent when the ends are far apart
};

/// Examines an outline whose samples are not known.
Evidence examine(const Fine& outline);

/// Examines ink of a positive extent.
Evidence examine(const Ink& ink, const Frame& frame);

/// Treats the stroke as closed, however far apart its ends are.
void takeAsClosed(Evidence& evidence);

}  // namespace Scrivo::beautifier
