#pragma once

#include "Beautifier/Figure.h"
#include "Beautifier/Options.h"
#include "Beautifier/figures/Verdict.h"
#include "Beautifier/fit/Evidence.h"
#include "Beautifier/ink/Frame.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// What a family of figures has to provide. Each family is a struct of static
/// members in a file pair of its own; Families.h lists them.
namespace Scrivo::beautifier {

/// The other strokes on the drawing area, in fractions of it.
struct Surroundings {
    std::span<const std::vector<Point2D>> strokes;
    double width = 0.0;
    double height = 0.0;
};

/// What an ideal figure is made from.
struct Fitted {
    const Frame& frame;
    const Evidence& evidence;  ///< empty when the verdict needed no fit
    const BeautifierOptions& options;
    Surroundings around;
    /// The kind that is wished for; none for the kind that was meant.
    std::optional<std::uint8_t> kind = std::nullopt;
};

/// A box with level edges, drawing-area units.
struct Box {
    Vec low;
    Vec high;

    [[nodiscard]] Point2D at(double x, double y) const {
        return {low.x + x * (high.x - low.x), low.y + y * (high.y - low.y), 0.0};
    }
};

/// Defaults of the members that a family may leave out.
struct FamilyDefaults {
    /// The ideal figure is made from fits, which require a stroke with an extent.
    static constexpr bool NEEDS_FIT = true;
    /// Names of the kinds that can be wished for, in the order of their enumeration.
    static constexpr std::array<std::string_view, 0> KINDS{};
    /// Only strokes whose ends meet can be of the family.
    static constexpr bool CLOSED = false;
    /// Figures that stick out of the drawing area are moved back into it.
    static constexpr bool STAYS_INSIDE = true;
    /// Features of the family's fit; `measure` gives their values.
    static constexpr std::array<std::string_view, 0> FEATURES{};
    static std::array<double, 0> measure(const Evidence& /*evidence*/) { return {}; }
    /// The figure that fills a box, for wishes where the fits give no sensible figure;
    /// none when the family has no such figure.
    static Figure inBox(const Box& /*box*/, std::optional<std::uint8_t> /*kind*/) { return {}; }
    /// Whether a stroke with these features can be of the family at all.
    static bool competes(std::span<const double> /*own*/) { return true; }
    /// A verdict that needs no fit, where there is one.
    static std::optional<Verdict> judgeUnfitted(const Ink& /*ink*/, const Frame& /*frame*/,
                                                const BeautifierOptions& /*options*/) {
        return std::nullopt;
    }
};

/// The members of a family as data.
struct Family {
    FigureFamily family;
    std::string_view name;
    std::int32_t code;
    bool needsFit;
    std::span<const std::string_view> kinds;
    bool closed;
    bool staysInside;
    std::span<const std::string_view> features;
    void (*measure)(const Evidence& evidence, std::span<double> own);
    bool (*competes)(std::span<const double> own);
    std::optional<Verdict> (*judgeUnfitted)(const Ink& ink, const Frame& frame,
                                            const BeautifierOptions& options);
    Figure (*idealise)(const Fitted& fitted);
    Figure (*inBox)(const Box& box, std::optional<std::uint8_t> kind);
};

/// Names of a figure and access to its parameters, specialised for every
/// alternative of `Figure`:
///   NAME   of the alternative
///   KINDS  names of its kinds in the order of their enumeration
///   fields(figure, visit)  calls visit.place, .places, .size or .number with
///             the name of each parameter and a reference to it
template <typename F>
struct FigureTraits;

}  // namespace Scrivo::beautifier
