/// @file
/// Templates, and the result of comparing a stroke with them.
#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Scrivo {

/// Axis-parallel box.
struct Rect2D {
    double x = 0.0;       ///< left edge: the smallest x
    double y = 0.0;       ///< upper edge: the smallest y
    double width = 0.0;   ///< largest x less the smallest
    double height = 0.0;  ///< largest y less the smallest
};

/// One example outline.
struct GraphicTemplate {
    std::int32_t id = 0;          ///< 1 rectangle, 2 triangle, 3 ellipse
    std::string name;             ///< "rectangle", "triangle", "ellipse"
    std::vector<Point2D> points;  ///< the outline in normal form, every force 0
};

/// What a stroke was recognised as.
struct RecognitionResult {
    std::int32_t id = 0;  ///< of the best template, or 0
    std::string name;     ///< of the best template, or "Unknown"
    /// Of the best template, at most 1, even if too low for a match; -1 when the
    /// stroke was rejected before any comparison.
    double score = 0.0;
};

}  // namespace Scrivo
