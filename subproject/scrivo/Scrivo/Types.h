/// @file
/// Points, figure codes and tuning constants.
#pragma once

#include <cstdint>
#include <vector>

/// Turns a freehand stroke into the figure that was meant.
namespace Scrivo {

/// A sample of a stroke, or a plain pair of doubles (`force` then is 0).
/// Coordinates are fractions of the drawing area in the pipeline's arguments
/// and results, and drawing-area units everywhere else. No value is rejected:
/// NaN and infinities propagate through the arithmetic.
struct Point2D {
    double x = 0.0;  ///< to the right
    double y = 0.0;  ///< downwards
    /// Pen pressure as the caller delivered it; 0 when unknown, and 0 in every
    /// point that the library makes itself.
    double force = 0.0;
};

/// What a stroke was recognised as. 3 and 5 are never produced.
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

// <windows.h> defines NEAR, for compilers of 16-bit programs.
#undef NEAR

// Shared tuning constants, never written.
extern const std::int32_t LIMIT;         ///< 10 points: span of the corner scan
extern const double RATIO_ANGLE;         ///< 0.95: chord / path below which a span may bend
extern const double RATIO_LINE;          ///< 0.965: chord / path that a straight leg reaches
extern const double ROTATION_THRESHOLD;  ///< 0.1: slope below which an edge is levelled
extern const double NEAR;                ///< 10 drawing-area units: snapping distance
extern const double NUM_POINT;           ///< 20 steps of a drawn segment

}  // namespace Scrivo
