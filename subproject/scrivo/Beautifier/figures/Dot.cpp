#include "Beautifier/figures/Dot.h"

#include "Scrivo/detail/Sampling.h"

namespace Scrivo::beautifier {

namespace {

/// A sort of stroke that is a dot; sorts are in ascending order of size.
struct DotModel {
    double extent;  ///< largest longer side of the box, for a tap of `TAP` units
    double min;     ///< smallest and
    double max;     ///< largest path without the tremor, in diagonals of the box
    bool sure;      ///< too small for anything else: a dot at any sensitivity
    double logit;   ///< log odds that such a stroke is a dot
};

// The tap size that the models were learnt for.
constexpr double TAP = 4.0;

#include "Beautifier/figures/DotModel.inc"

// Dots need only about even odds: either way a mark stays where the pen was.
constexpr double DOT_THRESHOLD = -0.5;

}  // namespace

std::optional<Verdict> DotFamily::judgeUnfitted(const Ink& ink, const Frame& frame,
                                                const BeautifierOptions& options) {
    if (frame.extent > options.tapSize) {
        return std::nullopt;
    }
    // A stroke without extent is a dot for any tap size.
    const double scale = frame.extent > 0.0 ? TAP / options.tapSize : 1.0;
    const Ink scaled{ink.samples, scale * ink.width, scale * ink.height};
    const Frame box = beautifier::measure(scaled);
    const double path = travel(scaled, box);
    for (const DotModel& model : DOT_MODELS) {
        if (box.extent <= model.extent && model.min * box.diagonal <= path &&
            path <= model.max * box.diagonal) {
            return Verdict{FAMILY, model.logit, model.sure ? -INF : DOT_THRESHOLD};
        }
    }
    return std::nullopt;
}

Figure DotFamily::idealise(const Fitted& fitted) {
    return DotFigure{{fitted.frame.centre.x, fitted.frame.centre.y, 0.0}};
}

std::vector<Point2D> outlineOf(const DotFigure& dot) {
    std::vector<Point2D> out;
    detail::appendDot(out, dot.centre);
    return out;
}

}  // namespace Scrivo::beautifier
