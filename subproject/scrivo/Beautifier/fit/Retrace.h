#pragma once

#include "Beautifier/ink/Resampling.h"

/// Strokes that run there and back along the same path, for fits of open figures.
namespace Scrivo::beautifier {

/// The outline without a part that retraces the rest at its end or at its start; all
/// of it when less than a quarter is retraced.
Part withoutRetrace(const Fine& fine);

}  // namespace Scrivo::beautifier
