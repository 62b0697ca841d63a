#include "Beautifier/figures/Ellipse.h"

#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/fit/CircleFit.h"
#include "Beautifier/fit/EllipseFit.h"
#include "Beautifier/fit/Explained.h"
#include "Beautifier/fit/Levelling.h"
#include "Beautifier/fit/Share.h"
#include "Scrivo/detail/Sampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Fits to strokes that were meant as ellipses, even with gaps and flat ends, are at
// most a twentieth longer than their ink.
constexpr double MAX_LENGTHENING = 1.1;

// How much further strokes that were meant as circles lie from the circle than from
// the best ellipse: root mean square, share of the diameter. See docs/beautifier.md.
constexpr double ROUND = 0.044;

// Largest lean, radians, of the axes of an ellipse that was meant level.
constexpr double MAX_AXIS_LEAN = 0.175;

/// The ellipse, shortened where it extends beyond the ink: the length of a slim fit
/// is poorly determined.
EllipseFit withinInk(EllipseFit fit, std::span<const Vec> points) {
    const Vec along{std::cos(fit.angle), std::sin(fit.angle)};
    const Reach reach = reachOf(points, fit.centre, along);
    const double half = 0.5 * (reach.high - reach.low);
    if (fit.a > MAX_LENGTHENING * half) {
        fit.centre = fit.centre + 0.5 * (reach.low + reach.high) * along;
        fit.a = std::max(half, fit.b);
    }
    return fit;
}

bool isRound(const EllipseFit& ellipse, const CircleFit& circle) {
    const double excess = circle.rms * circle.rms - ellipse.rms * ellipse.rms;
    return excess <= 4.0 * ROUND * ROUND * ellipse.a * ellipse.b;
}

/// In drawing-area units, the first axis within 45 degrees of the horizontal.
EllipseFigure inUnits(const EllipseFit& fit, const Frame& frame) {
    const double rotation = lean(fit.angle);
    const bool swapped = std::abs(std::cos(fit.angle - rotation)) < 0.5;
    const double a = frame.extent * (swapped ? fit.b : fit.a);
    const double b = frame.extent * (swapped ? fit.a : fit.b);
    return {frame.toUnits(fit.centre), {a, b, 0.0}, rotation};
}

// Bound of the root mean square sine of the angle between ink and ellipse.
constexpr double MAX_SLOPE = 0.7;

/// How the ink runs along an ellipse.
struct Course {
    double far = 0.0;    ///< share of the points that lie `FAR` from it
    double slope = 0.0;  ///< root mean square sine of the angle with it
};

Course courseOf(const Evidence& e, const EllipseFit& fit) {
    constexpr int STEP = 2;
    const auto at = [&](int i) { return e.closed->round.fine[static_cast<std::size_t>(i)]; };
    const EllipseView view(fit);
    const Closure& closure = e.closed->round.closure;
    int far = 0;
    int count = 0;
    double squares = 0.0;
    for (int i = STEP; i + STEP < FINE; i += STEP) {
        const EllipsePoint p = view.at(at(i));
        far += std::abs(p.distance) > FAR * e.size ? 1 : 0;
        if (i - STEP >= closure.first && i + STEP <= closure.last) {
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
    const EllipseFit fit = fitEllipseTo(e.closed->round.loop);
    const double rms = fit.found ? share(fit.rms, e.size) : 0.0;
    const double overFour = rms - share(e.closed->polygons[3].rms, e.size);
    const double overSix = rms - share(e.closed->polygons[5].rms, e.size);
    if (!fit.found) {
        return {0.0, 0.0, MAX_GAP, 0.0, 1.0, MAX_SLOPE, overFour, overSix};
    }
    const Course course = courseOf(e, fit);
    return {rms,
            share(fit.worst, e.size),
            std::min(MAX_GAP, 0.5 * e.closed->round.closure.gap / fit.b),
            lengthRatio(e, circumference(fit)),
            course.far,
            course.slope,
            overFour,
            overSix};
}

Figure EllipseFamily::idealise(const Fitted& fitted) {
    const Evidence& e = fitted.evidence;
    const RoundEvidence& round = e.closed->round;
    const Closure& closure = round.closure;
    const bool isOneLap = closure.end == closure.last;
    const EllipseFit first = fitEllipseTo(round.loop);
    const std::span<const Vec> points =
        isOneLap ? std::span<const Vec>(round.loop).first(LOOP) : lapsOf(round.fine, closure);
    const EllipseFit fit = withinInk(isOneLap ? first : refined(first, points), points);
    const CircleFit circle = fitCircleTo(points, fit.centre);
    const bool isCircle = fitted.kind ? *fitted.kind == static_cast<int>(EllipseKind::CIRCLE)
                                      : fitted.options.regularFigures && isRound(fit, circle);
    if (isCircle) {
        return CircleFigure{fitted.frame.toUnits(circle.centre),
                            fitted.frame.extent * circle.radius};
    }
    EllipseFigure ellipse = inUnits(fit, fitted.frame);
    if (fitted.options.horizontalVertical && std::abs(ellipse.rotation) <= MAX_AXIS_LEAN) {
        ellipse.rotation = 0.0;
    }
    return ellipse;
}

Figure EllipseFamily::inBox(const Box& box, std::optional<std::uint8_t> kind) {
    const Vec half = 0.5 * (box.high - box.low);
    if (kind && *kind == static_cast<int>(EllipseKind::CIRCLE)) {
        return CircleFigure{box.at(0.5, 0.5), 0.5 * (half.x + half.y)};
    }
    return EllipseFigure{box.at(0.5, 0.5), {half.x, half.y, 0.0}, 0.0};
}

std::vector<Point2D> outlineOf(const CircleFigure& circle) {
    return outlineOf(EllipseFigure{circle.centre, {circle.radius, circle.radius}, 0.0});
}

std::vector<Point2D> outlineOf(const EllipseFigure& ellipse) {
    std::vector<Point2D> out;
    const Vec axis{std::cos(ellipse.rotation), std::sin(ellipse.rotation)};
    for (int i = 0; i <= detail::ELLIPSE_SEGMENTS; ++i) {
        constexpr int LAP = detail::ELLIPSE_SEGMENTS;
        const double phi = (i % LAP) * 2.0 * std::numbers::pi / LAP;
        const double u = ellipse.radii.x * std::cos(phi);
        const double v = ellipse.radii.y * std::sin(phi);
        out.push_back({ellipse.centre.x + axis.x * u - axis.y * v,
                       ellipse.centre.y + axis.y * u + axis.x * v, 0.0});
    }
    return out;
}

}  // namespace Scrivo::beautifier
