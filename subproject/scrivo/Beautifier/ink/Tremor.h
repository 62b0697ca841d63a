#pragma once

#include "Beautifier/ink/Cursor.h"
#include "Beautifier/ink/Resampling.h"

#include <optional>

namespace Scrivo::beautifier {

/// `FINE` points along the mean of a path that trembles all along, of the given
/// length in units of the frame; nothing when it is steady. Corners, however
/// many, are no tremor, and from steady to rough the mean sets in gradually.
std::optional<Fine> withoutTremor(const Cursor& cursor, double length);

}  // namespace Scrivo::beautifier
