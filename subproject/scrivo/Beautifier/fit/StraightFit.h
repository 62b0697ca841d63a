#pragma once

#include "Beautifier/fit/Evidence.h"

/// Lines and angles as long as their ink.
namespace Scrivo::beautifier {

struct Segment {
    Vec from;
    Vec to;
};

/// The line through the ink, between the feet of its outermost points, in
/// drawing direction. Hooks count little, a way back not at all.
Segment fitSegment(const Evidence& evidence);

struct LegsFit {
    Vec from;
    Vec vertex;
    Vec to;
};

/// The angle through the ink; legs that were drawn there and back are legs once.
LegsFit fitLegs(const Evidence& evidence);

}  // namespace Scrivo::beautifier
