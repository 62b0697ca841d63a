/// @file
/// Points, figure codes, tuning constants and the pipeline.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The shared vocabulary (points, figure codes, tuning constants) and the
/// front door: load templates, classify a stroke, redraw a stroke.
namespace Scrivo {

/// A sample of a stroke, or a plain pair of doubles (`force` then is 0).
/// Coordinates are fractions of the drawing area at the front door and
/// drawing-area units everywhere behind it. No value is rejected: NaN and
/// infinities travel through the arithmetic.
struct Point2D {
    double x = 0.0;  ///< to the right
    double y = 0.0;  ///< downwards
    /// Pen pressure as the caller delivered it; 0 when unknown, and 0 in every
    /// point that the library makes itself.
    double force = 0.0;
};

/// What a stroke was taken for. 3 and 5 are never produced.
enum FigureType : std::int32_t {
    FIGURE_NONE = 0,     ///< nothing recognised: the stroke as drawn
    FIGURE_POINT = 1,    ///< dot, 64 points
    FIGURE_LINE = 2,     ///< straight line, 21 points
    FIGURE_ANGLE = 4,    ///< two straight legs, 42 points
    FIGURE_POLYGON = 6,  ///< closed outline, 21 points an edge
    FIGURE_ELLIPSE = 7,  ///< ellipse or circle, 85 points
};

/// The answer to one stroke.
struct StrokeResult {
    /// In the units of the caller's stroke: fractions of the drawing area.
    std::vector<Point2D> path;
    /// A `FigureType`.
    std::int32_t type = FIGURE_NONE;
};

/// The extent of a stroke that is too short to measure, and the start value of
/// running minima: the largest 32-bit signed integer, as a double.
inline constexpr double UNKNOWN_EXTENT = 2147483647.0;

// Shared tuning constants. Never written; read by name at every use.
extern const std::int32_t LIMIT;         ///< 10 points: span of the corner scan
extern const double RATIO_ANGLE;         ///< 0.95: chord / path below which a span may bend
extern const double RATIO_LINE;          ///< 0.965: chord / path that a straight leg reaches
extern const double ROTATION_THRESHOLD;  ///< 0.1: slope below which an edge is levelled
extern const double NEAR;                ///< 10 drawing-area units: snapping distance
extern const double NUM_POINT;           ///< 20 steps of a drawn segment

/// Loads the template files into the process-wide recogniser. A path is
/// assigned by the name that it contains, tested in this order:
/// "rectangle.template", "isosceles_triangle.template", "triangle.template",
/// "ellipse.template"; of two paths for one slot the later one counts, others
/// are ignored. Missing or unreadable files contribute nothing. A further call
/// adds to what is loaded. Always returns true.
bool initScrivo(std::vector<std::string> paths);

/// Classifies a stroke given in drawing-area units. `extent` holds its width
/// and height as `scaleOfGraph` measures them. Returns 0, 1, 2, 6 or 7; the
/// angle is no answer of this function, it is found by trying to redraw one.
std::int32_t judge(std::vector<Point2D> stroke, Point2D extent);

/// Redraws one stroke as the figure that it was meant to be.
/// `stroke` and `otherStrokes` are in fractions of the drawing area, `width`
/// and `height` in any unit; all thresholds count in that unit. The centroids
/// of `otherStrokes` are what the ends of a straight line may snap to.
/// Returns the stroke as drawn with type 0 when nothing was recognised, when
/// the figure's routine declined, or when memory ran out: never throws.
/// The answer depends on the arguments and the loaded templates alone.
StrokeResult optimizeAStroke(std::vector<Point2D> stroke, float width, float height,
                             std::vector<std::vector<Point2D>> otherStrokes);

}  // namespace Scrivo
