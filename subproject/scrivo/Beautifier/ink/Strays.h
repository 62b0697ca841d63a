#pragma once

#include "Beautifier/ink/Resampling.h"

/// Unintended ink at the ends of a stroke: retraced lines, overlaps of closed figures,
/// and hooks, the flicks of a pen that lands or lifts.
namespace Scrivo::beautifier {

struct Cleaned {
    Fine fine;              ///< the rest, resampled to `FINE` points
    double retraced = 0.0;  ///< share of the outline that retraced the rest
    double overlap = 0.0;   ///< share that continued past the start of a closed figure
    double hook = 0.0;      ///< longest hook that was cut, in the frame's units
};

/// Cuts parts that retrace the rest of the outline, up to three times, then the part
/// that continues past the start of a closed figure, then the hooks at both ends.
Cleaned withoutStrays(const Fine& fine);

}  // namespace Scrivo::beautifier
