#pragma once

#include "Beautifier/ink/Resampling.h"

/// Unintended ink at the ends of a stroke: retraced lines and the flick of a pen that
/// lands or lifts.
namespace Scrivo::beautifier {

struct Cleaned {
    Fine fine;              ///< what is left, `FINE` points again
    double retraced = 0.0;  ///< share of the outline that went back over the rest
    double overlap = 0.0;   ///< share that ran on over the start of a closed figure
    double hook = 0.0;      ///< longest flick that was cut, in units of the frame
};

/// Cuts parts that retrace the rest of the outline, up to three times, then parts that
/// run on over its start, then the flicks at both ends.
Cleaned withoutStrays(const Fine& fine);

}  // namespace Scrivo::beautifier
