#include "Beautifier/Idealise.h"

#include "Beautifier/Anchors.h"
#include "Beautifier/FigureOutline.h"
#include "Beautifier/Levelling.h"
#include "Beautifier/QuadrangleKinds.h"
#include "Beautifier/StraightFit.h"
#include "Beautifier/TriangleKinds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Fits to what was meant as an ellipse, gaps and flat ends included, are no more
// than a twentieth longer than their ink.
constexpr double OVERSHOOT = 1.1;

Vec inUnits(const Frame& frame, Vec p) {
    return frame.centre + frame.extent * p;
}

Point2D pointOf(Vec p) {
    return {p.x, p.y, 0.0};
}

TriangleKind kindOf(ThreeEdges kind) {
    switch (kind) {
        case EQUILATERAL:
            return TriangleKind::EQUILATERAL;
        case ISOSCELES:
            return TriangleKind::ISOSCELES;
        case RIGHT_ISOSCELES:
        case RIGHT:
            return TriangleKind::RIGHT;
        default:
            return TriangleKind::GENERAL;
    }
}

QuadrangleKind kindOf(FourEdges kind) {
    switch (kind) {
        case SQUARE:
        case STANDING_SQUARE:
            return QuadrangleKind::SQUARE;
        case RECTANGLE:
            return QuadrangleKind::RECTANGLE;
        case RHOMBUS:
            return QuadrangleKind::RHOMBUS;
        case PARALLELOGRAM:
            return QuadrangleKind::PARALLELOGRAM;
        case KITE:
            return QuadrangleKind::KITE;
        case ISOSCELES_TRAPEZOID:
        case TRAPEZOID:
            return QuadrangleKind::TRAPEZOID;
        default:
            return QuadrangleKind::GENERAL;
    }
}

/// The ink that a closed figure was drawn with: all laps, no tails.
std::span<const Vec> lapsOf(const Evidence& e) {
    const auto first = static_cast<std::size_t>(e.closed->closure.first);
    const auto end = static_cast<std::size_t>(e.closed->closure.end);
    return std::span<const Vec>(e.fine).subspan(first, end - first + 1);
}

Figure idealLine(const Evidence& e, const Frame& frame, const BeautifierOptions& options,
                 const Surroundings& around) {
    const Segment fit = fitLine(e);
    const Segment line{inUnits(frame, fit.from), inUnits(frame, fit.to)};
    std::vector<Vec> anchors;
    if (options.nearbyStrokes) {
        anchors =
            anchorsNear(line, around.strokes, around.width, around.height, options.anchors);
    }
    const Segment ideal = snapped(line, anchors, options.horizontalVertical);
    return LineFigure{pointOf(ideal.from), pointOf(ideal.to)};
}

Figure idealAngle(const Evidence& e, const Frame& frame, const BeautifierOptions& options) {
    const AngleFit fit = fitAngle(e);
    std::array<Vec, 3> points{fit.from, fit.vertex, fit.to};
    if (options.horizontalVertical) {
        levelLegs(points);
    }
    const double opening = std::abs(turn(points[0] - points[1], points[2] - points[1]));
    std::transform(points.begin(), points.end(), points.begin(),
                   [&](Vec p) { return inUnits(frame, p); });
    return AngleFigure{pointOf(points[0]), pointOf(points[1]), pointOf(points[2]), opening};
}

template <typename Shape, typename Name>
Figure idealPolygon(const KindChoice& choice, const Frame& frame,
                    const BeautifierOptions& options) {
    Shape shape;
    shape.kind = kindOf(static_cast<Name>(choice.kind));
    std::array<Vec, MAX_EDGES> corners = choice.fit.corners;
    if (options.horizontalVertical) {
        level({corners.data(), shape.corners.size()}, choice.fit.axis);
    }
    std::transform(corners.begin(), corners.begin() + shape.corners.size(), shape.corners.begin(),
                   [&](Vec p) { return pointOf(inUnits(frame, p)); });
    return shape;
}

KindChoice freeKind(const PolygonInk& ink, int name) {
    return {name, fitFreePolygon(ink)};
}

Figure idealTriangle(const Evidence& e, const Frame& frame, const BeautifierOptions& options) {
    const PolygonInk ink = inkAlong(lapsOf(e), std::span(e.closed->triangle.at).first(3));
    const KindChoice choice =
        options.regularFigures ? chooseTriangle(ink) : freeKind(ink, ANY_TRIANGLE);
    return idealPolygon<TriangleFigure, ThreeEdges>(choice, frame, options);
}

Figure idealQuadrangle(const Evidence& e, const Frame& frame, const BeautifierOptions& options) {
    const PolygonInk ink = inkAlong(lapsOf(e), std::span(e.closed->quadrangle.at).first(4));
    const KindChoice choice =
        options.regularFigures ? chooseQuadrangle(ink) : freeKind(ink, ANY_QUADRANGLE);
    return idealPolygon<QuadrangleFigure, FourEdges>(choice, frame, options);
}

/// The ellipse, pulled back where it shoots beyond the ink: a slim fit hardly
/// feels how long it is.
EllipseFit withinInk(EllipseFit fit, std::span<const Vec> points) {
    const Vec along{std::cos(fit.angle), std::sin(fit.angle)};
    const auto isBehind = [&](Vec a, Vec b) { return dot(a, along) < dot(b, along); };
    const auto [first, last] = std::minmax_element(points.begin(), points.end(), isBehind);
    const double low = dot(*first - fit.centre, along);
    const double high = dot(*last - fit.centre, along);
    const double half = 0.5 * (high - low);
    if (fit.a > OVERSHOOT * half) {
        fit.centre = fit.centre + 0.5 * (low + high) * along;
        fit.a = std::max(half, fit.b);
    }
    return fit;
}

/// Radii in units; the first axis is the one within 45 degrees of the level.
Figure ellipseOf(const EllipseFit& fit, const Frame& frame, bool levels) {
    const Point2D centre = pointOf(inUnits(frame, fit.centre));
    const double a = fit.a * frame.extent;
    const double b = fit.b * frame.extent;
    if (fit.a == fit.b) {
        return CircleFigure{centre, a};
    }
    const double rotation = lean(fit.angle);
    const bool swapped = std::abs(std::cos(fit.angle - rotation)) < 0.5;
    const Point2D radii = swapped ? Point2D{b, a, 0.0} : Point2D{a, b, 0.0};
    return EllipseFigure{centre, radii,
                         levels && std::abs(rotation) <= LEVEL_SHAPE ? 0.0 : rotation};
}

Figure idealEllipse(const Evidence& e, const Frame& frame, const BeautifierOptions& options) {
    const Closure& closure = e.closed->closure;
    const std::span<const Vec> loop = std::span<const Vec>(e.closed->loop).first(LOOP);
    const bool isOneLap = closure.end == closure.last;
    const std::span<const Vec> points = isOneLap ? loop : lapsOf(e);
    EllipseFit fit = isOneLap ? e.closed->ellipse : refined(e.closed->ellipse, points);
    fit = withinInk(fit, points);
    return ellipseOf(options.regularFigures ? chooseRound(fit, points) : fit, frame,
                     options.horizontalVertical);
}

}  // namespace

Figure idealFigure(FigureFamily family, const Evidence& evidence, const Frame& frame,
                   const BeautifierOptions& options, const Surroundings& surroundings) {
    switch (family) {
        case FigureFamily::LINE:
            return idealLine(evidence, frame, options, surroundings);
        case FigureFamily::ANGLE:
            return idealAngle(evidence, frame, options);
        case FigureFamily::TRIANGLE:
            return idealTriangle(evidence, frame, options);
        case FigureFamily::QUADRANGLE:
            return idealQuadrangle(evidence, frame, options);
        case FigureFamily::ELLIPSE:
            return idealEllipse(evidence, frame, options);
        case FigureFamily::DOT:
            break;
    }
    return DotFigure{pointOf(frame.centre)};
}

namespace {

struct Mover {
    double dx;
    double dy;

    void move(Point2D& p) const {
        p.x += dx;
        p.y += dy;
    }
    void operator()(std::monostate&) const {}
    void operator()(LineFigure& f) const {
        move(f.from);
        move(f.to);
    }
    void operator()(AngleFigure& f) const {
        move(f.from);
        move(f.vertex);
        move(f.to);
    }
    template <typename Shape>
    void operator()(Shape& f) const {
        if constexpr (requires { f.corners; }) {
            std::for_each(f.corners.begin(), f.corners.end(), [this](Point2D& p) { move(p); });
        } else {
            move(f.centre);
        }
    }
};

}  // namespace

void moveInside(Figure& figure, double width, double height) {
    const std::vector<Point2D> outline = outlineOf(figure);
    const auto [left, right] =
        std::minmax_element(outline.begin(), outline.end(),
                            [](const Point2D& a, const Point2D& b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(outline.begin(), outline.end(),
                            [](const Point2D& a, const Point2D& b) { return a.y < b.y; });
    const bool fits =
        (left->x >= 0.0 || right->x <= width) && (top->y >= 0.0 || bottom->y <= height);
    if (!fits) {
        return;
    }
    const auto shift = [](double low, double high, double size) {
        return low < 0.0 ? -low : std::min(size - high, 0.0);
    };
    const Mover mover{shift(left->x, right->x, width), shift(top->y, bottom->y, height)};
    std::visit(mover, figure);
}

}  // namespace Scrivo::beautifier
