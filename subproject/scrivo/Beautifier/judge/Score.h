#pragma once

#include "Beautifier/figures/Family.h"
#include "Beautifier/fit/Evidence.h"

#include <vector>

/// Scores the families by the features of a stroke. The learnt parameters are in
/// Model.inc.
namespace Scrivo::beautifier {

/// All families that compete for the stroke, likeliest first.
std::vector<Verdict> rank(const Evidence& evidence);

/// How far `sensitivity` (0 to 1) lowers all thresholds.
double thresholdShift(double sensitivity);

}  // namespace Scrivo::beautifier
