#pragma once

#include "Beautifier/figures/Families.h"
#include "Beautifier/fit/Evidence.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

/// The inputs of the families' scores: the features of the stroke itself, then those
/// of every family's fit.
///
/// Distances and lengths are logarithms of shares of the size, as fit/Share.h
/// makes them.
namespace Scrivo::beautifier {

inline constexpr std::array<std::string_view, 24> STROKE_FEATURES{
    // Any stroke.
    "TURNING",  // sum of absolute bends, radians
    "BOW",      // absolute sum of bends, radians
    "KNOT",     // log of the path within a disc about an end
    "TWO_RMS",  // residuals of two, three, four straight pieces
    "THREE_RMS", "FOUR_RMS",
    "THREE_OVER_TWO",  // log of the residual of three pieces over that of two
    "ROUGHNESS",       // log of the length of the ink over that of its outline
    "RETRACED",        // share of the path that retraced the rest
    "OVERLAP",         // share of the path that continued past its start
    "HOOK",            // longest hook cut at an end, over the longer side
    "SPARSE",          // log of `MANY_PIECES` over the even pieces, 0 for dense ink
    // Strokes whose ends meet.
    "CLOSURE_BEND",   // bend where the ends meet, radians
    "GAP",            // distance of the trimmed ends
    "TRIMMED",        // share of the path that was trimmed
    "TAIL",           // how far the trimmed ends stray from the loop
    "LONG_TAIL",      // the same beyond what an overshoot explains
    "COUNTER_BENDS",  // bends against the sense of the loop, radians
    "SHARPEST_BEND",  // largest bend away from the closure, radians
    "POLYGON3_RMS",   // residuals of polygons of three to six corners
    "POLYGON4_RMS", "POLYGON5_RMS", "POLYGON6_RMS",
    "FOUR_OVER_THREE",  // residual of four corners over that of three
};

inline constexpr std::size_t FEATURE_COUNT = STROKE_FEATURES.size() + Families::FEATURE_COUNT;

/// Names of all features, in their order.
inline constexpr std::array<std::string_view, FEATURE_COUNT> FEATURE_NAMES = [] {
    std::array<std::string_view, FEATURE_COUNT> names;
    Families::copyFeatures(
        std::copy(STROKE_FEATURES.begin(), STROKE_FEATURES.end(), names.begin()));
    return names;
}();

/// Index of a feature by its name; does not compile for an unknown name.
consteval std::size_t operator""_f(const char* name, std::size_t length) {
    std::size_t i = 0;
    while (FEATURE_NAMES.at(i) != std::string_view(name, length)) {
        ++i;
    }
    return i;
}

using Features = std::array<double, FEATURE_COUNT>;

/// The features of `e`; those of closed strokes are 0 when it is open.
Features featuresOf(const Evidence& e);

/// The features of a family's own fit.
std::span<const double> ownFeatures(const Features& features, FigureFamily family);

}  // namespace Scrivo::beautifier
