#pragma once

#include "Beautifier/fit/Polyline.h"
#include "Beautifier/ink/Resampling.h"

#include <array>

/// Corners of a fitted polygon or polyline.
namespace Scrivo::beautifier {

/// Where the lines of neighbouring pieces meet.
struct Corners {
    int count = 0;
    std::array<Vec, MAX_PIECES> at{};
    double worst = 0.0;  ///< largest distance of a point from its piece's line
};

/// Where two lines meet; `ink` when they are nearly parallel or meet far away.
Vec cornerOf(const FittedLine& a, const FittedLine& b, Vec ink, double size);

/// Corners between successive pieces of `fit`, for a closed fit also at the
/// start. `scatter` describes `points`; `size` is the stroke's.
Corners cornersOf(const Coarse& points, const Scatter& scatter, const PolylineFit& fit, bool closed,
                  double size);

}  // namespace Scrivo::beautifier
