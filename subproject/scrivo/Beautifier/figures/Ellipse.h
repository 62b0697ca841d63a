#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

/// Circles are ellipses.
struct EllipseFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::ELLIPSE;
    static constexpr std::string_view NAME = "ellipse";
    static constexpr std::int32_t CODE = FIGURE_ELLIPSE;
    static constexpr std::array<std::string_view, 2> KINDS{"ellipse", "circle"};
    static constexpr bool CLOSED = true;

    static constexpr std::array<std::string_view, 8> FEATURES{
        "ELLIPSE_RMS",        // residual of the ellipse
        "ELLIPSE_WORST",      // largest distance from it
        "ELLIPSE_GAP",        // gap over its shorter diameter
        "ELLIPSE_LENGTH",     // log of the path over its circumference
        "ELLIPSE_FAR",        // share of the ink away from it
        "ELLIPSE_ALONG",      // root mean square sine of the ink's angle with it
        "ELLIPSE_OVER_FOUR",  // log of its residual over that of four, six corners
        "ELLIPSE_OVER_SIX",
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    static Figure idealise(const Fitted& fitted);
    static Figure inBox(const Box& box, std::optional<std::uint8_t> kind);
};

/// 85 points, drawing-area units; the last one is the first one.
std::vector<Point2D> outlineOf(const CircleFigure& circle);
std::vector<Point2D> outlineOf(const EllipseFigure& ellipse);

template <>
struct FigureTraits<CircleFigure> {
    static constexpr std::string_view NAME = "circle";
    static constexpr std::array<std::string_view, 0> KINDS{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("centre", figure.centre);
        visit.number("radius", figure.radius);
    }
};

template <>
struct FigureTraits<EllipseFigure> {
    static constexpr std::string_view NAME = "ellipse";
    static constexpr std::array<std::string_view, 0> KINDS{};
    static void fields(auto& figure, auto&& visit) {
        visit.place("centre", figure.centre);
        visit.size("radii", figure.radii);
        visit.number("rotation", figure.rotation);
    }
};

}  // namespace Scrivo::beautifier
