#pragma once

#include "Beautifier/ink/Vec.h"
#include "Scrivo/Types.h"

#include <span>

namespace Scrivo::beautifier {

/// A box with level edges, drawing-area units.
struct Box {
    Vec low;
    Vec high;

    [[nodiscard]] Point2D at(double x, double y) const {
        return {low.x + x * (high.x - low.x), low.y + y * (high.y - low.y), 0.0};
    }
};

/// The smallest box around points, at least one.
Box boxOf(std::span<const Point2D> points);

}  // namespace Scrivo::beautifier
