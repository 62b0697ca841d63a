#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

struct LineFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::LINE;
    static constexpr std::string_view NAME = "line";
    static constexpr std::int32_t CODE = FIGURE_LINE;
    /// Moving a line would separate it from the strokes that it was snapped to.
    static constexpr bool STAYS_INSIDE = false;

    static constexpr std::array<std::string_view, 3> FEATURES{
        "LINE_RMS",    // residual of the straight line
        "LINE_WORST",  // largest distance from it
        "DETOUR",      // path length beyond the extent along it
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    static Figure idealise(const Fitted& fitted);
};

/// 21 points, drawing-area units.
std::vector<Point2D> outlineOf(const LineFigure& line);

template <>
struct FigureTraits<LineFigure> {
    static constexpr std::string_view NAME = "line";
    static constexpr std::array<std::string_view, 0> KINDS{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("from", figure.from);
        visit.place("to", figure.to);
    }
};

}  // namespace Scrivo::beautifier
