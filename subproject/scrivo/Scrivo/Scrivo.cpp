#include "Scrivo/Scrivo.h"

#include "Common/Failure.h"
#include "Scrivo/Ellipse.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"
#include "Scrivo/detail/Angle.h"
#include "Scrivo/detail/Dot.h"
#include "Scrivo/detail/DrawingArea.h"
#include "Scrivo/detail/LineSnapping.h"
#include "Scrivo/detail/PathNormalisation.h"
#include "Scrivo/detail/PolygonOutline.h"
#include "Scrivo/detail/StraightLine.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace {

/// Points of the largest figure with a fixed number of them.
constexpr std::size_t USUAL_POINTS = 85;

/// Below this extent, in drawing-area units, a stroke may be a dot.
constexpr double DOT_EXTENT = 9.0;
/// Above this extent, in drawing-area units, a stroke may be a straight line.
constexpr double LINE_EXTENT = 75.0;
/// From this extent on, in drawing-area units, a stroke may be a closed figure.
constexpr double FIGURE_EXTENT = 40.0;

/// Figure code of a recogniser's answer.
std::int32_t figureOf(std::int32_t recogniserId) {
    switch (recogniserId) {
        case 1:
        case 2:
            return FIGURE_POLYGON;
        case 3:
            return FIGURE_ELLIPSE;
        default:
            return FIGURE_NONE;
    }
}

/// Nothing for a closed stroke that cannot be resampled.
std::optional<std::int32_t> classify(detail::Stroke stroke, const Point2D& extent) {
    const double width = extent.x;
    const double height = extent.y;
    if (width < DOT_EXTENT && height < DOT_EXTENT && detail::isPoint(stroke)) {
        return FIGURE_POINT;
    }
    // Too short to measure: neither line nor closed figure.
    if (width == UNKNOWN_EXTENT) {
        return FIGURE_NONE;
    }
    if ((width > LINE_EXTENT || height > LINE_EXTENT) && detail::isStrictLine(stroke)) {
        return FIGURE_LINE;
    }
    if (width < FIGURE_EXTENT && height < FIGURE_EXTENT) {
        return FIGURE_NONE;
    }
    const auto& recogniser = TemplatesGraphicsRecognizer::getInstance();
    const auto result = recogniser.tryRecognize(stroke);
    return result ? std::optional(figureOf(result->id)) : std::nullopt;
}

/// An empty stroke has the centroid (NaN, NaN), which attracts no line.
std::vector<Point2D> scaledCentroids(const std::vector<std::vector<Point2D>>& strokes, double width,
                                     double height) {
    std::vector<Point2D> result;
    result.reserve(strokes.size());
    for (const auto& stroke : strokes) {
        Point2D sum;
        for (const Point2D& p : stroke) {
            sum.x += p.x;
            sum.y += p.y;
        }
        const auto n = static_cast<double>(stroke.size());
        result.push_back({sum.x * width / n, sum.y * height / n, 0.0});
    }
    return result;
}

/// The redrawn stroke and its figure; `drawn` is 0 when the routine declined.
struct Redrawn {
    std::vector<Point2D> path;
    std::int32_t type = FIGURE_NONE;
    std::int64_t drawn = 0;
};

Redrawn redraw(std::int32_t code, const std::vector<Point2D>& stroke,
               const std::vector<Point2D>& anchors) {
    Redrawn result;
    result.type = code;
    result.path.reserve(USUAL_POINTS);
    switch (code) {
        case FIGURE_POINT:
            result.drawn = detail::reDrawPoint(result.path, stroke);
            break;
        case FIGURE_LINE:
            result.drawn = detail::reDrawLine(result.path, stroke, anchors);
            break;
        case FIGURE_POLYGON:
            result.drawn = detail::reDrawPolygon(result.path, stroke);
            break;
        case FIGURE_ELLIPSE:
            // The last two arguments are ignored.
            result.drawn = reDrawEllipse(result.path, stroke, 0, 0);
            break;
        default:
            result.drawn = detail::reDrawAngle(result.path, stroke);
            if (result.drawn > 0) {
                result.type = FIGURE_ANGLE;
            }
    }
    return result;
}

/// Works in drawing-area units and returns in fractions; `drawn` is 0 when the
/// stroke stays as it is.
Redrawn idealise(const std::vector<Point2D>& stroke, float width, float height,
                 const std::vector<std::vector<Point2D>>& otherStrokes) {
    const std::vector<Point2D> inUnits = detail::toUnits(stroke, width, height);
    const auto code = classify(inUnits, detail::extentOf(inUnits));
    if (!code) {
        return {};
    }
    std::vector<Point2D> anchors;
    if (*code == FIGURE_LINE) {
        anchors = scaledCentroids(otherStrokes, width, height);
    }
    Redrawn result = redraw(*code, inUnits, anchors);
    if (result.drawn == 0) {
        return result;
    }
    // A line may leave the drawing area: moving it would separate it from the
    // strokes that it was snapped to.
    if (result.type != FIGURE_LINE) {
        detail::moveInside(result.path, width, height);
    }
    detail::toFractions(result.path, width, height);
    return result;
}

bool contains(const std::string& path, const char* name) {
    return path.find(name) != std::string::npos;
}

}  // namespace

bool initScrivo(std::vector<std::string> paths) {
    std::string rectangle;
    std::string isoscelesTriangle;
    std::string triangle;
    std::string ellipse;
    for (const std::string& path : paths) {
        if (contains(path, "rectangle.template")) {
            rectangle = path;
        } else if (contains(path, "isosceles_triangle.template")) {
            // Tested before the triangle, whose name this one contains.
            isoscelesTriangle = path;
        } else if (contains(path, "triangle.template")) {
            triangle = path;
        } else if (contains(path, "ellipse.template")) {
            ellipse = path;
        }
    }
    TemplatesGraphicsRecognizer::getInstance().loadTemplatesFromFile(rectangle, triangle,
                                                                     isoscelesTriangle, ellipse);
    return true;
}

std::int32_t judge(std::vector<Point2D> stroke, Point2D extent) {
    const auto code = classify(stroke, extent);
    if (!code) {
        detail::raise<std::domain_error>(detail::UNRESAMPLED);
    }
    return *code;
}

StrokeResult optimizeAStroke(std::vector<Point2D> stroke, float width, float height,
                             std::vector<std::vector<Point2D>> otherStrokes) {
    Redrawn redrawn;
    // Memory may run out. The stroke is not changed.
    const bool isComplete =
        detail::completes([&] { redrawn = idealise(stroke, width, height, otherStrokes); });
    if (isComplete && redrawn.drawn != 0) {
        return {std::move(redrawn.path), redrawn.type};
    }
    return {std::move(stroke), FIGURE_NONE};
}

}  // namespace Scrivo
