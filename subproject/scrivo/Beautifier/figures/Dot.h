#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

/// A tap: told by its size and the length of its path without the tremor.
struct DotFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::DOT;
    static constexpr std::string_view NAME = "dot";
    static constexpr std::int32_t CODE = FIGURE_POINT;
    static constexpr bool NEEDS_FIT = false;

    /// A tap, a press that is held or a scribble too small to hold a letter, of
    /// up to `tapSize` units.
    static std::optional<Verdict> judgeUnfitted(const Ink& ink, const Frame& frame,
                                                const BeautifierOptions& options);
    /// Nothing is left to judge by a fit.
    static bool competes(std::span<const double> /*own*/) { return false; }
    static Figure idealise(const Fitted& fitted);
};

/// 64 points, drawing-area units: three rings and the centre.
std::vector<Point2D> outlineOf(const DotFigure& dot);

template <>
struct FigureTraits<DotFigure> {
    static constexpr std::string_view NAME = "dot";
    static constexpr std::array<std::string_view, 0> KINDS{};
    static void fields(auto& figure, auto&& visit) { visit.place("centre", figure.centre); }
};

}  // namespace Scrivo::beautifier
