#include "Scrivo/detail/TemplateSnapshot.h"

#include <memory>

namespace Scrivo::detail {

bool isPolygonId(std::int32_t id) {
    return id == RECTANGLE_ID || id == TRIANGLE_ID;
}

bool isEllipseId(std::int32_t id) {
    return id == ELLIPSE_ID;
}

void TemplateSnapshot::append(const GraphicTemplate& added) {
    const auto shared = std::make_shared<const GraphicTemplate>(added);
    all.append(shared);
    if (isPolygonId(added.id)) {
        polygons.append(shared);
    } else if (isEllipseId(added.id)) {
        ellipses.append(shared);
    }
}

}  // namespace Scrivo::detail
