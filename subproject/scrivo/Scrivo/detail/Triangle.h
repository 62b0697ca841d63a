#pragma once

#include "Scrivo/Types.h"

#include <vector>

namespace Scrivo::detail {

/// See `Scrivo::regularTrigon`.
void regulariseTriangle(std::vector<Point2D>& corners);

}  // namespace Scrivo::detail
