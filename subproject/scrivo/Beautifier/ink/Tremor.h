#pragma once

#include "Beautifier/ink/Cursor.h"
#include "Beautifier/ink/Resampling.h"

#include <optional>

namespace Scrivo::beautifier {

/// `FINE` points along the mean of a path that trembles all along, of the given
/// length in units of the frame; nothing when it is steady. Corners, however
/// many, are not tremor, and between steady and rough the mean is blended in.
std::optional<Fine> withoutTremor(const Cursor& cursor, double length);

}  // namespace Scrivo::beautifier
