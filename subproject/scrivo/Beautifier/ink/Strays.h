#pragma once

#include "Beautifier/ink/Resampling.h"

/// Ink at the ends of a stroke that is no part of what was meant: the way back
/// over a line that was just drawn, and the flick of a pen that lands or lifts.
namespace Scrivo::beautifier {

struct Cleaned {
    Fine fine;              ///< what is left, `FINE` points again
    double retraced = 0.0;  ///< share of the outline that went back over the rest
    double overlap = 0.0;   ///< share that ran on over the start of a closed figure
    double hook = 0.0;      ///< longest flick that was cut, in units of the frame
};

/// Cuts what goes back over the rest of the outline, up to three times, what runs
/// on over its start, and then the flicks at both ends.
Cleaned withoutStrays(const Fine& fine);

}  // namespace Scrivo::beautifier
