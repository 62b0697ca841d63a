#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/detail/TemplateIndex.h"

#include <cstdint>

/// The templates that one recognition reads, whatever is loaded meanwhile.
namespace Scrivo::detail {

inline constexpr std::int32_t RECTANGLE_ID = 1;
inline constexpr std::int32_t TRIANGLE_ID = 2;
inline constexpr std::int32_t ELLIPSE_ID = 3;

/// Whether templates of this id are compared with strokes of straight pieces,
/// or with curved ones. Other ids are compared only with strokes without corners.
/// @{
bool isPolygonId(std::int32_t id);
bool isEllipseId(std::int32_t id);
/// @}

/// The recogniser's three lists, indexed. A copy shares the templates and is
/// cheap.
struct TemplateSnapshot {
    TemplateIndex all;
    TemplateIndex polygons;
    TemplateIndex ellipses;

    /// Adds a template behind the others. When memory runs out, the three lists
    /// need not agree.
    void append(const GraphicTemplate& added);
};

}  // namespace Scrivo::detail
