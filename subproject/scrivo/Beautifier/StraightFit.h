#pragma once

#include "Beautifier/Evidence.h"
#include "Beautifier/LineSnap.h"

/// Lines and angles as long as their ink.
namespace Scrivo::beautifier {

/// The line through the ink, between the feet of its outermost points, in
/// drawing direction. Hooks count little, a way back not at all.
Segment fitLine(const Evidence& evidence);

struct AngleFit {
    Vec from;
    Vec vertex;
    Vec to;
};

/// The angle through the ink; legs that were drawn there and back are legs once.
AngleFit fitAngle(const Evidence& evidence);

}  // namespace Scrivo::beautifier
