#pragma once

#include "Beautifier/figures/Family.h"
#include "Beautifier/fit/StraightFit.h"

#include <set>
#include <vector>

/// The points of other strokes that the ends of a line may snap to.
namespace Scrivo::beautifier {

/// The anchors of the sorts in `sorts` that are within reach of `line`, in
/// drawing-area units. Strokes with coordinates that are not finite have none.
std::vector<Vec> anchorsNear(const Segment& line, const Surroundings& around,
                             const std::set<AnchorSort>& sorts);

}  // namespace Scrivo::beautifier
