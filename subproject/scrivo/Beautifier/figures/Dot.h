#pragma once

#include "Beautifier/figures/Family.h"

namespace Scrivo::beautifier {

/// A tap, recognised by its size and by the length of its path without tremor.
struct DotFamily : FamilyDefaults {
    static constexpr FigureFamily FAMILY = FigureFamily::DOT;
    static constexpr std::string_view NAME = "dot";
    static constexpr std::int32_t CODE = FIGURE_POINT;
    static constexpr bool NEEDS_FIT = false;

    /// A tap, a held press or a scribble too small to be a letter, of up to `tapSize`
    /// units.
    static std::optional<Verdict> judgeUnfitted(const Ink& ink, const Frame& frame,
                                                const BeautifierOptions& options);
    /// Dots are recognised by `judgeUnfitted` alone.
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
