#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

/// Circles are ellipses.
struct EllipseFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::ELLIPSE;
    static constexpr std::string_view NAME = "ellipse";
    static constexpr std::int32_t CODE = FIGURE_ELLIPSE;
    static constexpr bool CLOSED = true;

    static constexpr std::array<std::string_view, 3> FEATURES{
        "ELLIPSE_RMS",    // residual of the ellipse
        "ELLIPSE_WORST",  // largest distance from it
        "ELLIPSE_GAP",    // gap over its shorter diameter
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    static Ideal idealise(const Fitted& fitted);
};

template <>
struct FigureTraits<CircleFigure> {
    static constexpr std::string_view KIND = "circle";
    static constexpr std::array<std::string_view, 0> SUBTYPES{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("centre", figure.centre);
        visit.number("radius", figure.radius);
    }
};

template <>
struct FigureTraits<EllipseFigure> {
    static constexpr std::string_view KIND = "ellipse";
    static constexpr std::array<std::string_view, 0> SUBTYPES{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("centre", figure.centre);
        visit.size("radii", figure.radii);
        visit.number("rotation", figure.rotation);
    }
};

}  // namespace Scrivo::beautifier
