#pragma once

#include "Scrivo/Types.h"
#include "lines/StrokeLine.h"

#include <optional>
#include <span>
#include <vector>

/// Strokes in units of the input, and in fractions of a drawing area, as engines take them. The
/// same as packages/cli/lib/run/area.js, to the last bit.
namespace lines {

/// A square around a stroke that no figure leaves; `scale` drawing units are a unit of the input.
Area areaAround(std::span<const Scrivo::Point2D> stroke, double scale);

/// Converts points to fractions of an area. False, with a part of them, where one is not finite.
bool toFractions(std::span<const Scrivo::Point2D> stroke, const Area& area,
                 std::vector<Scrivo::Point2D>& fractions);

/// The inverse, in place. False where a coordinate is not finite.
bool fromFractions(std::span<Scrivo::Point2D> path, const Area& area);

}  // namespace lines
