#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

struct AngleFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::ANGLE;
    static constexpr std::string_view NAME = "angle";
    static constexpr std::int32_t CODE = FIGURE_ANGLE;

    static constexpr std::array<std::string_view, 9> FEATURES{
        "TWO_OVER_ONE",  // residual of two pieces over that of one
        "LEG_WORST",     // largest distance from the two pieces
        "LEG_RATIO",     // shorter over longer leg
        "LEG_DETOUR",    // path length beyond both legs
        "LEG_TURNING",   // bends beyond the one between the legs, radians
        "OPENING",       // angle between the legs, radians
        "VERTEX_INK",    // distance of the ink from the vertex
        "VERTEX_BEND",   // share of the bend between the legs that the ink bends near the vertex
        "LEG_FAR",       // share of the ink away from the legs
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    static Figure idealise(const Fitted& fitted);
};

/// 21 points a leg, drawing-area units.
std::vector<Point2D> outlineOf(const AngleFigure& angle);

template <>
struct FigureTraits<AngleFigure> {
    static constexpr std::string_view NAME = "angle";
    static constexpr std::array<std::string_view, 0> KINDS{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("from", figure.from);
        visit.place("vertex", figure.vertex);
        visit.place("to", figure.to);
        visit.number("opening", figure.opening);
    }
};

}  // namespace Scrivo::beautifier
