#include "Beautifier/FigureOutline.h"

#include "Scrivo/Polygon.h"

#include <cmath>
#include <numbers>
#include <type_traits>
#include <variant>

namespace Scrivo::beautifier {

namespace {

constexpr int RING_POINTS = 21;
constexpr double RING_RADII[] = {2.5, 1.5, 0.5};  // drawing-area units
constexpr int ELLIPSE_POINTS = 85;

/// Points at even angles; the last one is the first one.
void appendEllipse(std::vector<Point2D>& out, const EllipseFigure& e, int points) {
    const double c = std::cos(e.rotation);
    const double s = std::sin(e.rotation);
    for (int i = 0; i < points; ++i) {
        const double phi = (i % (points - 1)) * 2.0 * std::numbers::pi / (points - 1);
        const double u = e.radii.x * std::cos(phi);
        const double v = e.radii.y * std::sin(phi);
        out.push_back({e.centre.x + c * u - s * v, e.centre.y + s * u + c * v, 0.0});
    }
}

template <typename Polygon>
std::vector<Point2D> outlineOfPolygon(const Polygon& polygon) {
    std::vector<Point2D> out;
    for (std::size_t i = 0; i < polygon.corners.size(); ++i) {
        drawLine(out, polygon.corners[i], polygon.corners[(i + 1) % polygon.corners.size()]);
    }
    return out;
}

}  // namespace

std::vector<Point2D> outlineOf(const DotFigure& dot) {
    std::vector<Point2D> out;
    for (const double radius : RING_RADII) {
        appendEllipse(out, {dot.centre, {radius, radius}}, RING_POINTS);
    }
    out.push_back(dot.centre);
    return out;
}

std::vector<Point2D> outlineOf(const LineFigure& line) {
    std::vector<Point2D> out;
    drawLine(out, line.from, line.to);
    return out;
}

std::vector<Point2D> outlineOf(const AngleFigure& angle) {
    std::vector<Point2D> out;
    drawLine(out, angle.from, angle.vertex);
    drawLine(out, angle.vertex, angle.to);
    return out;
}

std::vector<Point2D> outlineOf(const TriangleFigure& triangle) {
    return outlineOfPolygon(triangle);
}

std::vector<Point2D> outlineOf(const QuadrangleFigure& quadrangle) {
    return outlineOfPolygon(quadrangle);
}

std::vector<Point2D> outlineOf(const CircleFigure& circle) {
    return outlineOf(EllipseFigure{circle.centre, {circle.radius, circle.radius}});
}

std::vector<Point2D> outlineOf(const EllipseFigure& ellipse) {
    std::vector<Point2D> out;
    appendEllipse(out, ellipse, ELLIPSE_POINTS);
    return out;
}

std::vector<Point2D> outlineOf(const Figure& figure) {
    return std::visit(
        [](const auto& shape) -> std::vector<Point2D> {
            if constexpr (std::is_same_v<decltype(shape), const std::monostate&>) {
                return {};
            } else {
                return outlineOf(shape);
            }
        },
        figure);
}

}  // namespace Scrivo::beautifier
