#pragma once

#include "Beautifier/fit/Evidence.h"

/// Fits lines and angles that are as long as their ink.
namespace Scrivo::beautifier {

struct Segment {
    Vec from;
    Vec to;
};

/// The line through the ink, between the feet of its outermost points, in
/// drawing direction. Hooks have little weight, retraced parts none.
Segment fitSegment(const Evidence& evidence);

struct LegsFit {
    Vec from;
    Vec vertex;
    Vec to;
};

/// The angle through the ink. Legs that were drawn there and back count once.
LegsFit fitLegs(const Evidence& evidence);

}  // namespace Scrivo::beautifier
