#pragma once

#include "Scrivo/Scrivo.h"

#include <cstdint>
#include <string>
#include <vector>

/// What the template recogniser stores and answers.
namespace Scrivo {

/// Axis-parallel box; (`x`, `y`) is the corner of the smallest coordinates.
struct Rect2D {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

/// One example outline. `id` is 1 for "rectangle", 2 for "triangle", 3 for
/// "ellipse"; `points` is the outline in normal form, every force 0.
struct GraphicTemplate {
    std::int32_t id = 0;
    std::string name;
    std::vector<Point2D> points;
};

/// The best template's `id` and `name` with the score that it reached, at most
/// 1, or 0 and "Unknown" with the score that did not suffice; -1 when the
/// stroke was rejected before any comparison.
struct RecognitionResult {
    std::int32_t id = 0;
    std::string name;
    double score = 0.0;
};

}  // namespace Scrivo
