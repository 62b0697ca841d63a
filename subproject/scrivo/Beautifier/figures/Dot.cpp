#include "Beautifier/figures/Dot.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

/// A sort of stroke that is a dot; the smallest comes first.
struct DotModel {
    double extent;  ///< largest longer side of the box, where a tap leaves `TAP`
    double min;     ///< smallest and
    double max;     ///< largest path without the tremor, in diagonals of the box
    bool sure;      ///< has no room for anything else: a dot at any sensitivity
    double logit;   ///< log odds that such a stroke is a dot
};

// The tap size that the models are for.
constexpr double TAP = 4.0;

#include "Beautifier/figures/DotModel.inc"

// Rings of the outline, drawing-area units.
constexpr double RING_RADII[] = {2.5, 1.5, 0.5};
constexpr int RING_POINTS = 21;

// Dots need only about even odds: the drawing keeps its mark either way.
constexpr double DOT_THRESHOLD = -0.5;

}  // namespace

std::optional<Verdict> DotFamily::judgeUnfitted(const Ink& ink, const Frame& frame,
                                                const BeautifierOptions& options) {
    if (frame.extent > options.tapSize) {
        return std::nullopt;
    }
    constexpr double INF = std::numeric_limits<double>::infinity();
    // A stroke without extent is a dot whatever a tap is.
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
    for (const double radius : RING_RADII) {
        for (int i = 0; i < RING_POINTS; ++i) {
            constexpr int LAP = RING_POINTS - 1;
            const double phi = (i % LAP) * 2.0 * std::numbers::pi / LAP;
            out.push_back({dot.centre.x + radius * std::cos(phi),
                           dot.centre.y + radius * std::sin(phi), 0.0});
        }
    }
    out.push_back(dot.centre);
    return out;
}

}  // namespace Scrivo::beautifier
