#include "Beautifier/figures/Dot.h"

#include "Scrivo/detail/Dot.h"

#include <limits>

namespace Scrivo::beautifier {

namespace {

/// A sort of stroke that is a dot; the smallest comes first.
struct DotModel {
    double extent;  ///< largest longer side of the box, drawing-area units
    double min;     ///< smallest and
    double max;     ///< largest path without the tremor, in diagonals of the box
    bool sure;      ///< has no room for anything else: a dot at any sensitivity
    bool slip;      ///< may be a short dash just as well
    double logit;   ///< log odds that such a stroke is a dot
};

#include "Beautifier/figures/DotModel.inc"

// Dots need only about even odds: the drawing keeps its mark either way.
constexpr double DOT_THRESHOLD = -0.5;

}  // namespace

std::optional<Verdict> DotFamily::judgeUnfitted(const Ink& ink, const Frame& frame,
                                                const BeautifierOptions& options) {
    if (frame.extent > DOT_MODELS.back().extent) {
        return std::nullopt;
    }
    constexpr double INF = std::numeric_limits<double>::infinity();
    const bool slips = options.figures.count(FAMILY) > 0;
    const double path = travel(ink, frame);
    for (const DotModel& model : DOT_MODELS) {
        if (frame.extent <= model.extent && model.min * frame.diagonal <= path &&
            path <= model.max * frame.diagonal && (slips || !model.slip)) {
            return Verdict{FAMILY, model.logit, model.sure ? -INF : DOT_THRESHOLD};
        }
    }
    return std::nullopt;
}

Ideal DotFamily::idealise(const Fitted& fitted) {
    const DotFigure dot{{fitted.frame.centre.x, fitted.frame.centre.y, 0.0}};
    Ideal ideal{dot, {}};
    detail::reDrawPoint(ideal.outline, {&dot.centre, 1});
    return ideal;
}

}  // namespace Scrivo::beautifier
