#pragma once

#include "Beautifier/EllipseFit.h"
#include "Beautifier/Loop.h"
#include "Beautifier/Outline.h"
#include "Beautifier/Polyline.h"

#include <array>
#include <optional>
#include <span>

/// Everything that is fitted to one stroke, in the frame's own units.
namespace Scrivo::beautifier {

/// Corners of a fitted polygon or polyline: where the lines of neighbouring
/// pieces meet.
struct Corners {
    int count = 0;
    std::array<Vec, MAX_PIECES> at{};
    double worst = 0.0;  ///< largest distance of a point from its piece's line
};

/// Fits to a stroke whose ends (nearly) meet.
struct ClosedEvidence {
    Closure closure;
    Coarse loop;
    PolylineFits polygons;
    Corners triangle;
    Corners quadrangle;
    EllipseFit ellipse;
};

struct Evidence {
    Fine fine;  ///< without strays at the ends
    double retraced = 0.0;   ///< share of the outline that went back over the rest
    double overlap = 0.0;    ///< share that ran on over the start
    double hook = 0.0;       ///< longest flick at an end, which `fine` lacks
    Fine outline;            ///< with strays
    double roughness = 1.0;  ///< length of the ink over that of its outline
    Coarse points;
    double size = 0.0;    ///< four root mean square distances from the centroid
    double length = 0.0;  ///< of the outline
    FittedLine line;
    PolylineFits polylines;
    Corners vertex;                        ///< of the two-piece polyline: one corner
    std::optional<ClosedEvidence> closed;  ///< absent when the ends stay far apart
};

/// Examines an outline that stands for ink of `inkLength`; 0 stands for its own
/// length.
Evidence examine(const Fine& fine, double inkLength = 0.0);

}  // namespace Scrivo::beautifier
