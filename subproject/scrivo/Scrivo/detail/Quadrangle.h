#pragma once

#include "Scrivo/Types.h"

#include <vector>

namespace Scrivo::detail {

/// See `Scrivo::regularQuadrangle`, and docs/regularisation.md.
void regulariseQuadrangle(std::vector<Point2D>& corners);

}  // namespace Scrivo::detail
