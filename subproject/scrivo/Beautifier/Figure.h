/// @file
/// The figures of the beautifier and their parameters.
#pragma once

#include "Scrivo/Types.h"

#include <array>
#include <cstdint>
#include <variant>

namespace Scrivo {

/// What a stroke can be taken for. Circles are ellipses.
enum class FigureFamily : std::uint8_t { DOT, LINE, ANGLE, TRIANGLE, QUADRANGLE, ELLIPSE };

// Parameters of the ideal figures, in drawing-area units, y downwards. Points
// have force 0.

/// A tap.
struct DotFigure {
    Point2D centre;  ///< of the rings that are drawn
};

/// A straight line.
struct LineFigure {
    Point2D from;  ///< where the pen was put down
    Point2D to;    ///< where it was lifted
};

/// Two straight legs.
struct AngleFigure {
    Point2D from;          ///< where the pen was put down
    Point2D vertex;        ///< where the legs meet
    Point2D to;            ///< where the pen was lifted
    double opening = 0.0;  ///< radians, from 0 to pi
};

/// An isosceles right triangle counts as right.
enum class TriangleKind : std::uint8_t { GENERAL, EQUILATERAL, ISOSCELES, RIGHT };

/// A closed outline of three edges.
struct TriangleFigure {
    std::array<Point2D, 3> corners;                ///< in drawing order
    TriangleKind subtype = TriangleKind::GENERAL;  ///< the kind that was chosen
};

/// The most specific kind counts: a square is neither a rectangle nor a rhombus.
enum class QuadrangleKind : std::uint8_t {
    GENERAL,
    SQUARE,
    RECTANGLE,
    RHOMBUS,
    PARALLELOGRAM,
    TRAPEZOID,
    KITE
};

/// A closed outline of four edges.
struct QuadrangleFigure {
    std::array<Point2D, 4> corners;                    ///< in drawing order
    QuadrangleKind subtype = QuadrangleKind::GENERAL;  ///< the kind that was chosen
};

/// Kinds of ellipses that can be wished for.
enum class EllipseKind : std::uint8_t { ELLIPSE, CIRCLE };

/// An ellipse whose axes are equally long.
struct CircleFigure {
    Point2D centre;       ///< of the outline
    double radius = 0.0;  ///< above 0
};

/// An ellipse that is not a circle.
struct EllipseFigure {
    Point2D centre;         ///< of the outline
    Point2D radii;          ///< along the first (x) and the second axis (y)
    double rotation = 0.0;  ///< of the first axis, radians, within [-pi/4, pi/4]
};

/// `std::monostate` when the stroke stays as drawn.
using Figure = std::variant<std::monostate, DotFigure, LineFigure, AngleFigure, TriangleFigure,
                            QuadrangleFigure, CircleFigure, EllipseFigure>;

}  // namespace Scrivo
