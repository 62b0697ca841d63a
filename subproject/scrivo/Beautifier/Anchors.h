#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/LineSnap.h"

#include <span>
#include <vector>

/// The marks of other strokes that the ends of a line may snap to.
namespace Scrivo::beautifier {

/// The marks of the sorts in `sorts` that are within reach of `line`, in
/// drawing-area units. `strokes` are in fractions of a `width` by `height` area;
/// those with coordinates that are no finite numbers have no marks.
std::vector<Vec> anchorsNear(const Segment& line, std::span<const std::vector<Point2D>> strokes,
                             double width, double height, const std::set<AnchorSort>& sorts);

}  // namespace Scrivo::beautifier
