#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

struct TriangleFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::TRIANGLE;
    static constexpr std::string_view NAME = "triangle";
    static constexpr std::int32_t CODE = FIGURE_POLYGON;
    static constexpr std::array<std::string_view, 4> KINDS{"general", "equilateral", "isosceles",
                                                           "right"};
    static constexpr bool CLOSED = true;

    static constexpr std::array<std::string_view, 8> FEATURES{
        "TRIANGLE_WORST",   // largest distance of the ink from the polygon of three corners
        "TRIANGLE_SIDE",    // its shortest over its longest side
        "TRIANGLE_ANGLE",   // its largest interior angle, radians
        "TRIANGLE_GAP",     // gap over its shortest side
        "TRIANGLE_CORNER",  // largest distance of the ink from a corner
        "TRIANGLE_BEND",    // least share of a corner's bend that the ink bends near it
        "TRIANGLE_LENGTH",  // log of the path over the perimeter
        "TRIANGLE_FAR",     // share of the ink away from it
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    static Figure idealise(const Fitted& fitted);
    static Figure inBox(const Box& box, std::optional<std::uint8_t> kind);
};

/// 21 points an edge, drawing-area units.
std::vector<Point2D> outlineOf(const TriangleFigure& triangle);

template <>
struct FigureTraits<TriangleFigure> {
    static constexpr std::string_view NAME = "triangle";
    static constexpr auto KINDS = TriangleFamily::KINDS;
    static void fields(auto& figure, auto&& visit) { visit.places("corners", figure.corners); }
};

}  // namespace Scrivo::beautifier
