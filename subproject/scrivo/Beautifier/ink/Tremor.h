#pragma once

#include "Beautifier/ink/Resampling.h"
#include "Beautifier/ink/Track.h"

#include <optional>

namespace Scrivo::beautifier {

/// `FINE` points along the mean of a path that trembles throughout, of the given
/// length in the frame's units; nothing when it is steady. Corners, however many,
/// do not count as tremor. From steady to rough the path is averaged over more and
/// more of its length.
std::optional<Fine> withoutTremor(const Track& track, double length);

}  // namespace Scrivo::beautifier
