#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/Evidence.h"

#include <span>
#include <vector>

/// From fits to ideal figures.
namespace Scrivo::beautifier {

/// The other strokes on the drawing area, in fractions of it.
struct Surroundings {
    std::span<const std::vector<Point2D>> strokes;
    double width = 0.0;
    double height = 0.0;
};

/// The figure of `family` (no dot) that was meant: of the kind that the fits tell,
/// level, and with ends at the marks of other strokes, as `options` permit.
/// `evidence` is in the units of `frame`.
Figure idealFigure(FigureFamily family, const Evidence& evidence, const Frame& frame,
                   const BeautifierOptions& options, const Surroundings& surroundings);

/// Moves a figure that sticks out of the drawing area back into it. A figure
/// that sticks out on opposite sides cannot fit and stays where it is.
void moveInside(Figure& figure, double width, double height);

}  // namespace Scrivo::beautifier
