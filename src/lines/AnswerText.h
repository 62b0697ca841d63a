#pragma once

#include "Scrivo/Types.h"
#include "lines/Engines.h"
#include "lines/StrokeLine.h"
#include "lines/Text.h"

#include <span>

/// Answers as JSON, in the notation of packages/cli/lib/write. What addNumber and addRounded
/// decline is declined here, too: then these return false, with a part of the text written.
namespace lines {

/// How units of the input relate to drawing units, and how they are written.
struct Units {
    Area area;           ///< units of the input
    double scale = 1.0;  ///< drawing units per unit of the input
    int decimals = 3;    ///< of coordinates
};

/// Writes points as arrays or as objects, each with a force unless it is 0.
bool addPoints(Text& out, std::span<const Scrivo::Point2D> points, int decimals, bool asObjects);

/// Writes type, figure, kind, confidence and parameters as members after others.
bool addAnswer(Text& out, const Answer& answer, const Units& units);

}  // namespace lines
