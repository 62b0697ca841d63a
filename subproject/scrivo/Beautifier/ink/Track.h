#pragma once

#include "Beautifier/ink/Frame.h"

#include <vector>

namespace Scrivo::beautifier {

/// A sample on the way, in the frame's units.
struct TrackPoint {
    Vec at;
    double start = 0.0;  ///< arc length up to it
    double piece = 0.0;  ///< distance of the next one; 0 for the last
    Vec integral;        ///< of the position over the arc length up to it
};

/// The distinct samples of a stroke.
using Track = std::vector<TrackPoint>;

Track trackOf(const Ink& ink, const Frame& frame);

}  // namespace Scrivo::beautifier
