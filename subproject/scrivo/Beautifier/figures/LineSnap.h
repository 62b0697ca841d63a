#pragma once

#include "Beautifier/fit/StraightFit.h"

#include <span>

/// Snaps the ends of a line to anchors.
namespace Scrivo::beautifier {

/// Moves either end to the nearest of `anchors` within reach. If `levels`, a line
/// that is nearly level or upright is turned until it is: about the end that an
/// anchor holds, or else about its middle. One that two anchors hold is not turned.
Segment snapped(const Segment& drawn, std::span<const Vec> anchors, bool levels);

/// Distance within which the ends of the line snap, drawing-area units.
double reachOf(const Segment& line);

/// Whether an anchor at `p` could hold an end of the line.
bool isInReach(const Segment& drawn, Vec p);

}  // namespace Scrivo::beautifier
