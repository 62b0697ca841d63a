#pragma once

#include "Beautifier/fit/StraightFit.h"

#include <span>

/// Brings the ends of a line to the marks of other strokes.
namespace Scrivo::beautifier {

/// Moves either end to the nearest of `anchors` within reach. A line that is
/// nearly level or upright becomes so where `levels`, about the end that an
/// anchor holds or else about its middle; one that two anchors hold stays.
Segment snapped(const Segment& drawn, std::span<const Vec> anchors, bool levels);

/// How far from its ends the line finds anchors, drawing-area units.
double reachOf(const Segment& line);

/// Whether an anchor at `p` could hold an end of the line.
bool isInReach(const Segment& drawn, Vec p);

}  // namespace Scrivo::beautifier
