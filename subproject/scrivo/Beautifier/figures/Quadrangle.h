#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

struct QuadrangleFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::QUADRANGLE;
    static constexpr std::string_view NAME = "quadrangle";
    static constexpr std::int32_t CODE = FIGURE_POLYGON;
    static constexpr std::array<std::string_view, 7> KINDS{
        "general", "square", "rectangle", "rhombus", "parallelogram", "trapezoid", "kite"};
    static constexpr bool CLOSED = true;

    static constexpr std::array<std::string_view, 9> FEATURES{
        "QUADRANGLE_WORST",  // as of the triangle, for four corners
        "QUADRANGLE_SIDE",    "QUADRANGLE_ANGLE",  "QUADRANGLE_GAP", "QUADRANGLE_CORNER",
        "QUADRANGLE_BEND",    "QUADRANGLE_LENGTH", "QUADRANGLE_FAR",
        "QUADRANGLE_WINDING",  // difference of its corners' bends from a full turn, radians
    };
    static std::array<double, FEATURES.size()> measure(const Evidence& evidence);
    /// A polygon whose sides cross is not a quadrangle.
    static bool competes(std::span<const double> own);
    static Figure idealise(const Fitted& fitted);
    static Figure inBox(const Box& box, std::optional<std::uint8_t> kind);
};

/// 21 points an edge, drawing-area units.
std::vector<Point2D> outlineOf(const QuadrangleFigure& quadrangle);

template <>
struct FigureTraits<QuadrangleFigure> {
    static constexpr std::string_view NAME = "quadrangle";
    static constexpr auto KINDS = QuadrangleFamily::KINDS;
    static void fields(auto& figure, auto&& visit) { visit.places("corners", figure.corners); }
};

}  // namespace Scrivo::beautifier
