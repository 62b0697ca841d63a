#include "Beautifier/figures/Ellipse.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/fit/EllipseFit.h"
#include "Beautifier/fit/Explained.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/detail/EllipseShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Fits to what was meant as an ellipse, gaps and flat ends included, are no more
// than a twentieth longer than their ink.
constexpr double OVERSHOOT = 1.1;

/// The ellipse, pulled back where it shoots beyond the ink: a slim fit is hardly
/// sensitive to its length.
EllipseFit withinInk(EllipseFit fit, const Coarse& loop) {
    const Vec along{std::cos(fit.angle), std::sin(fit.angle)};
    const Reach reach = reachOf(loop, fit.centre, along);
    const double half = 0.5 * (reach.high - reach.low);
    if (fit.a > OVERSHOOT * half) {
        fit.centre = fit.centre + 0.5 * (reach.low + reach.high) * along;
        fit.a = std::max(half, fit.b);
    }
    return fit;
}

/// In drawing-area units, the first axis within 45 degrees of the horizontal.
detail::EllipseShape shapeOf(const EllipseFit& fit, const Frame& frame) {
    constexpr double QUARTER = std::numbers::pi / 2.0;
    const double quarters = std::round(fit.angle / QUARTER);
    const bool swapped = std::fmod(std::abs(quarters), 2.0) == 1.0;
    const double a = (swapped ? fit.b : fit.a) * frame.extent;
    const double b = (swapped ? fit.a : fit.b) * frame.extent;
    // To float and back, as the template engine does before it levels.
    const auto angle = static_cast<float>(fit.angle - quarters * QUARTER);
    return {frame.toUnits(fit.centre), {a, b, 0.0}, angle};
}

// Of the mean angle between ink and ellipse, its sine.
constexpr double MAX_SLOPE = 0.7;

/// How the ink runs along an ellipse.
struct Course {
    double far = 0.0;    ///< share of the points that lie `FAR` from it
    double slope = 0.0;  ///< root mean square sine of the angle with it
};

Course courseOf(const Evidence& e, const EllipseFit& fit) {
    constexpr int STEP = 2;
    const auto at = [&](int i) { return e.fine[static_cast<std::size_t>(i)]; };
    const EllipseView view(fit);
    int far = 0;
    int count = 0;
    double squares = 0.0;
    for (int i = STEP; i + STEP < FINE; i += STEP) {
        const EllipsePoint p = view.at(at(i));
        far += std::abs(p.distance) > FAR * e.size ? 1 : 0;
        if (i - STEP >= e.closed->closure.first && i + STEP <= e.closed->closure.last) {
            const Vec chord = at(i + STEP) - at(i - STEP);
            const double outwards = dot(p.outwards, chord);
            const double lengths = dot(p.outwards, p.outwards) * dot(chord, chord);
            squares += outwards * outwards / std::max(lengths, 1e-12);
            ++count;
        }
    }
    return {static_cast<double>(far) / COARSE, std::min(std::sqrt(squares / count), MAX_SLOPE)};
}

}  // namespace

std::array<double, EllipseFamily::FEATURES.size()> EllipseFamily::measure(const Evidence& e) {
    const EllipseFit fit = fitEllipseTo(e.closed->loop);
    const double rms = fit.found ? share(fit.rms, e.size) : 0.0;
    const double overFour = rms - share(e.closed->polygons[3].rms, e.size);
    const double overSix = rms - share(e.closed->polygons[5].rms, e.size);
    if (!fit.found) {
        return {0.0, 0.0, MAX_GAP, 0.0, 1.0, MAX_SLOPE, overFour, overSix};
    }
    const Course course = courseOf(e, fit);
    return {rms,
            share(fit.worst, e.size),
            std::min(MAX_GAP, 0.5 * e.closed->closure.gap / fit.b),
            lengthRatio(e, circumference(fit)),
            course.far,
            course.slope,
            overFour,
            overSix};
}

Ideal EllipseFamily::idealise(const Fitted& fitted) {
    const Coarse& loop = fitted.evidence.closed->loop;
    detail::EllipseShape shape = shapeOf(withinInk(fitEllipseTo(loop), loop), fitted.frame);
    if (fitted.options.regularFigures) {
        shape = detail::rounded(shape);
    }
    if (fitted.options.horizontalVertical) {
        shape = detail::levelled(shape);
    }
    Ideal ideal;
    detail::appendEllipse(ideal.outline, shape);
    if (shape.radii.x == shape.radii.y) {
        ideal.figure = CircleFigure{shape.centre, shape.radii.x};
    } else {
        ideal.figure = EllipseFigure{shape.centre, shape.radii, shape.angle};
    }
    return ideal;
}

}  // namespace Scrivo::beautifier
