#include "Beautifier/Idealise.h"

#include "Scrivo/Polygon.h"
#include "Scrivo/detail/Dot.h"
#include "Scrivo/detail/EllipseShape.h"
#include "Scrivo/detail/Levelling.h"
#include "Scrivo/detail/LineSnapping.h"
#include "Scrivo/detail/Quadrangle.h"
#include "Scrivo/detail/Triangle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

// Regularised corners come from single-precision roots: equal lengths and right
// angles are exact to this share only.
constexpr double EXACT = 1e-4;

// Fits to what was meant as an ellipse, gaps and flat ends included, are no more
// than a twentieth longer than their ink.
constexpr double OVERSHOOT = 1.1;

class ToUnits {
public:
    explicit ToUnits(const Frame& frame) : m_frame(frame) {}

    Point2D operator()(Vec p) const {
        const Vec q = m_frame.centre + m_frame.extent * p;
        return {q.x, q.y, 0.0};
    }
    double length(double share) const { return share * m_frame.extent; }

private:
    const Frame& m_frame;
};

Vec difference(const Point2D& a, const Point2D& b) {
    return {b.x - a.x, b.y - a.y};
}

bool equal(double a, double b) {
    return std::abs(a - b) <= EXACT * std::max(std::abs(a), std::abs(b));
}

bool perpendicular(Vec a, Vec b) {
    return std::abs(dot(a, b)) <= EXACT * norm(a) * norm(b);
}

bool parallel(Vec a, Vec b) {
    return std::abs(cross(a, b)) <= EXACT * norm(a) * norm(b);
}

TriangleKind kindOf(const std::array<Point2D, 3>& c) {
    const std::array sides{difference(c[0], c[1]), difference(c[1], c[2]), difference(c[2], c[0])};
    int equals = 0;
    bool right = false;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec next = sides[(i + 1) % 3];
        equals += equal(norm(sides[i]), norm(next)) ? 1 : 0;
        right = right || perpendicular(sides[i], next);
    }
    if (equals == 3) {
        return TriangleKind::EQUILATERAL;
    }
    if (right) {
        return TriangleKind::RIGHT;
    }
    return equals > 0 ? TriangleKind::ISOSCELES : TriangleKind::GENERAL;
}

QuadrangleKind kindOf(const std::array<Point2D, 4>& c) {
    const Vec a = difference(c[0], c[1]);
    const Vec b = difference(c[1], c[2]);
    const bool twoPairs =
        parallel(a, difference(c[2], c[3])) && parallel(b, difference(c[3], c[0]));
    if (twoPairs) {
        const bool right = perpendicular(a, b);
        if (equal(norm(a), norm(b))) {
            return right ? QuadrangleKind::SQUARE : QuadrangleKind::RHOMBUS;
        }
        return right ? QuadrangleKind::RECTANGLE : QuadrangleKind::PARALLELOGRAM;
    }
    const bool onePair = parallel(a, difference(c[2], c[3])) || parallel(b, difference(c[3], c[0]));
    return onePair ? QuadrangleKind::TRAPEZOID : QuadrangleKind::GENERAL;
}

/// How far points reach along an axis: from `low` behind its origin to `high`.
struct Reach {
    double low = 0.0;
    double high = 0.0;
};

Reach reachOf(const Coarse& points, Vec origin, Vec along) {
    const auto isBehind = [&](Vec a, Vec b) { return dot(a, along) < dot(b, along); };
    const auto [first, last] = std::minmax_element(points.begin(), points.end(), isBehind);
    return {dot(*first - origin, along), dot(*last - origin, along)};
}

/// The line as it leans, between the feet of its outermost points.
std::vector<Point2D> leaningLine(const Evidence& e, const ToUnits& units) {
    const Reach reach = reachOf(e.points, e.line.centre, e.line.along);
    const auto foot = [&](double at) { return units(e.line.centre + at * e.line.along); };
    std::vector<Point2D> line;
    drawLine(line, foot(reach.low), foot(reach.high));
    return line;
}

/// Whether one of the anchors is near enough for an end to snap to it, or for
/// the line to be laid through it. Strokes out of reach must not be asked: an
/// upright line would step aside by a unit for them.
bool isInReach(const std::vector<Point2D>& line, std::span<const Point2D> anchors) {
    const Vec from{line.front().x, line.front().y};
    const Vec along = difference(line.front(), line.back());
    const double length = norm(along);
    return std::any_of(anchors.begin(), anchors.end(), [&](const Point2D& anchor) {
        const Vec d = Vec{anchor.x, anchor.y} - from;
        const double beyond = std::abs(dot(along, d) / length - 0.5 * length) - 0.5 * length;
        return std::abs(cross(along, d)) < NEAR * length && beyond < NEAR;
    });
}

/// The line with its ends at anchors, straightened where there are none. What is
/// redrawn is the leaning line: of a stroke that runs there and back the other
/// engine would look at the chord, which says nothing.
std::vector<Point2D> lineOutline(const std::vector<Point2D>& leaning,
                                 const BeautifierOptions& options,
                                 std::span<const Point2D> anchors) {
    const bool snaps = options.nearbyStrokes && isInReach(leaning, anchors);
    if (!snaps && !options.horizontalVertical) {
        return leaning;
    }
    std::vector<Point2D> outline;
    detail::reDrawLine(outline, leaning, snaps ? anchors : std::span<const Point2D>());
    return outline;
}

Ideal idealLine(const Evidence& e, const ToUnits& units, const BeautifierOptions& options,
                std::span<const Point2D> anchors) {
    Ideal ideal;
    ideal.outline = lineOutline(leaningLine(e, units), options, anchors);
    // What is redrawn runs to the right or downwards, the pen ran as it liked.
    const Vec drawn = e.points.back() - e.points.front();
    if (dot(difference(ideal.outline.front(), ideal.outline.back()), drawn) < 0.0) {
        std::reverse(ideal.outline.begin(), ideal.outline.end());
    }
    ideal.figure = LineFigure{ideal.outline.front(), ideal.outline.back()};
    return ideal;
}

Ideal idealAngle(const Evidence& e, const ToUnits& units, const BeautifierOptions& options) {
    AngleFigure angle{units(e.points.front()), units(e.vertex.at[0]), units(e.points.back()), 0.0};
    if (options.horizontalVertical) {
        detail::levelLegs(angle.from, angle.vertex, angle.to);
    }
    angle.opening =
        std::abs(turn(difference(angle.vertex, angle.from), difference(angle.vertex, angle.to)));
    Ideal ideal;
    drawLine(ideal.outline, angle.from, angle.vertex);
    drawLine(ideal.outline, angle.vertex, angle.to);
    ideal.figure = angle;
    return ideal;
}

template <typename Shape>
Ideal idealPolygon(const Corners& fitted, const ToUnits& units, const BeautifierOptions& options,
                   void (*regularise)(std::vector<Point2D>&)) {
    Shape shape;
    std::vector<Point2D> corners(shape.corners.size());
    std::transform(fitted.at.begin(), fitted.at.begin() + fitted.count, corners.begin(), units);
    if (options.regularFigures) {
        regularise(corners);
    }
    if (options.horizontalVertical) {
        detail::levelLowestEdge(corners);
    }
    Ideal ideal;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        shape.corners[i] = {corners[i].x, corners[i].y, 0.0};
        drawLine(ideal.outline, corners[i], corners[(i + 1) % corners.size()]);
    }
    shape.kind = kindOf(shape.corners);
    ideal.figure = shape;
    return ideal;
}

/// Radii and angle as the conic fit gives them: the first axis is the one that
/// lies within 45 degrees of the horizontal.
detail::EllipseShape shapeOf(const EllipseFit& fit, const ToUnits& units) {
    constexpr double QUARTER = std::numbers::pi / 2.0;
    const double quarters = std::round(fit.angle / QUARTER);
    const bool swapped = std::fmod(std::abs(quarters), 2.0) == 1.0;
    const double a = units.length(swapped ? fit.b : fit.a);
    const double b = units.length(swapped ? fit.a : fit.b);
    // To float and back, as the other engine does before it levels.
    const auto angle = static_cast<float>(fit.angle - quarters * QUARTER);
    return {units(fit.centre), {a, b, 0.0}, angle};
}

/// The ellipse, pulled back where it shoots beyond the ink: a slim fit hardly
/// feels how long it is.
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

Ideal idealEllipse(const ClosedEvidence& closed, const ToUnits& units,
                   const BeautifierOptions& options) {
    detail::EllipseShape shape = shapeOf(withinInk(closed.ellipse, closed.loop), units);
    if (options.regularFigures) {
        shape = detail::rounded(shape);
    }
    if (options.horizontalVertical) {
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

}  // namespace

Ideal idealDot(Point2D centre) {
    Ideal ideal;
    detail::reDrawPoint(ideal.outline, {&centre, 1});
    ideal.figure = DotFigure{centre};
    return ideal;
}

Ideal idealFigure(FigureFamily family, const Evidence& evidence, const Frame& frame,
                  const BeautifierOptions& options, std::span<const Point2D> anchors) {
    const ToUnits units(frame);
    switch (family) {
        case FigureFamily::LINE:
            return idealLine(evidence, units, options, anchors);
        case FigureFamily::ANGLE:
            return idealAngle(evidence, units, options);
        case FigureFamily::TRIANGLE:
            return idealPolygon<TriangleFigure>(evidence.closed->triangle, units, options,
                                                detail::regulariseTriangle);
        case FigureFamily::QUADRANGLE:
            return idealPolygon<QuadrangleFigure>(evidence.closed->quadrangle, units, options,
                                                  detail::regulariseQuadrangle);
        case FigureFamily::ELLIPSE:
            return idealEllipse(*evidence.closed, units, options);
        case FigureFamily::DOT:
            break;
    }
    return idealDot(units({}));
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

void moveInside(Ideal& ideal, double width, double height) {
    const auto [left, right] =
        std::minmax_element(ideal.outline.begin(), ideal.outline.end(),
                            [](const Point2D& a, const Point2D& b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(ideal.outline.begin(), ideal.outline.end(),
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
    std::for_each(ideal.outline.begin(), ideal.outline.end(), [&](Point2D& p) { mover.move(p); });
    std::visit(mover, ideal.figure);
}

}  // namespace Scrivo::beautifier
