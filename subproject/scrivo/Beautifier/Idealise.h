#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/Evidence.h"

#include <span>
#include <vector>

/// From fits to ideal figures.
namespace Scrivo::beautifier {

/// A figure and its outline, both in drawing-area units.
struct Ideal {
    Figure figure;
    std::vector<Point2D> outline;
};

/// The dot at `centre`.
Ideal idealDot(Point2D centre);

/// The figure of `family` (no dot) that was fitted, made regular, level and
/// snapped to `anchors` as `options` permit by the same routines that the
/// template engine uses. `evidence` is in the units of `frame`.
Ideal idealFigure(FigureFamily family, const Evidence& evidence, const Frame& frame,
                  const BeautifierOptions& options, std::span<const Point2D> anchors);

/// Moves a figure that sticks out of the drawing area back into it. A figure
/// that sticks out on opposite sides cannot fit and stays where it is.
void moveInside(Ideal& ideal, double width, double height);

}  // namespace Scrivo::beautifier
