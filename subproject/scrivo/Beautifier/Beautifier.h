/// @file
/// The beautifier: options, figures in parameters, answers.
#pragma once

#include "Scrivo/Scrivo.h"

#include <array>
#include <cstdint>
#include <set>
#include <span>
#include <variant>
#include <vector>

/// Right about real ink: fits every figure to a stroke and answers with the one
/// that wins, or with the stroke as drawn. Needs no templates. The answer does
/// not depend on how densely or evenly the stroke was sampled.
namespace Scrivo {

/// What a stroke can be taken for. Circles are ellipses.
enum class FigureFamily : std::uint8_t { DOT, LINE, ANGLE, TRIANGLE, QUADRANGLE, ELLIPSE };

/// Marks of other strokes that the ends of a line may snap to.
enum class AnchorSort : std::uint8_t {
    CENTRE,  ///< mean of the samples
    END,     ///< of an open stroke of 20 units and more
    CORNER   ///< of a stroke of 20 units and more
};

/// What a beautifier is to look for, and how eagerly.
struct BeautifierOptions {
    /// The figures wanted. A stroke that is taken for another one stays ink;
    /// only the short dash, a dot by default, becomes a line without dots.
    std::set<FigureFamily> figures{FigureFamily::DOT,        FigureFamily::LINE,
                                   FigureFamily::ANGLE,      FigureFamily::TRIANGLE,
                                   FigureFamily::QUADRANGLE, FigureFamily::ELLIPSE};
    /// Strokes whose longer side is below this many drawing-area units stay ink,
    /// dots included: small strokes are handwriting. At least 0 and finite.
    double minSize = 0.0;
    /// From 0 (only sure figures) to 1 (eager). Raising it never turns a figure
    /// back into ink and never makes another figure of it.
    double sensitivity = 0.5;
    /// Figures that are nearly level or upright by an edge, a diagonal, a leg or an
    /// axis are turned as a whole until they are.
    bool horizontalVertical = true;
    /// Nearly regular triangles, quadrangles and ellipses become regular.
    bool regularFigures = true;
    /// The ends of lines snap to nearby strokes,
    bool nearbyStrokes = true;
    /// namely to these marks of theirs.
    std::set<AnchorSort> anchors{AnchorSort::CENTRE, AnchorSort::END, AnchorSort::CORNER};
    /// Figures, but not lines, that stick out of the drawing area are moved back
    /// into it as a whole, where they fit.
    bool insideArea = true;
};

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

/// A right triangle that is isosceles too counts as right.
enum class TriangleKind : std::uint8_t { GENERAL, EQUILATERAL, ISOSCELES, RIGHT };

/// A closed outline of three edges.
struct TriangleFigure {
    std::array<Point2D, 3> corners;             ///< in drawing order
    TriangleKind kind = TriangleKind::GENERAL;  ///< what it was made to be
};

/// The most special kind counts: a square is called neither rectangle nor rhombus.
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
    std::array<Point2D, 4> corners;                 ///< in drawing order
    QuadrangleKind kind = QuadrangleKind::GENERAL;  ///< what it was made to be
};

/// An ellipse whose axes are equally long.
struct CircleFigure {
    Point2D centre;       ///< of the outline
    double radius = 0.0;  ///< above 0
};

/// An ellipse that is no circle.
struct EllipseFigure {
    Point2D centre;         ///< of the outline
    Point2D radii;          ///< along the first (x) and the second axis (y)
    double rotation = 0.0;  ///< of the first axis, radians, within [-pi/4, pi/4]
};

/// `std::monostate` when the stroke stays as drawn.
using Figure = std::variant<std::monostate, DotFigure, LineFigure, AngleFigure, TriangleFigure,
                            QuadrangleFigure, CircleFigure, EllipseFigure>;

/// Why a stroke stays as drawn.
enum class Reason : std::uint8_t {
    RECOGNISED,  ///< it does not: a figure was recognised
    INVALID,     ///< no point, a coordinate that is no finite number or 2^31 - 1 units
                 ///< and more, an area without a size or too small to divide by
    TOO_SMALL,   ///< below `minSize`
    NOT_WANTED,  ///< the figure that it resembles is not among `figures`
    NOT_SURE,    ///< it resembles a figure, but not enough for this sensitivity
    NO_FIGURE,   ///< it resembles none
};

/// The answer to one stroke.
struct Beautified {
    /// Fractions of the drawing area: the figure's outline as the other engine
    /// draws it (a dot of 64, a line of 21, an angle of 42, an ellipse of 85
    /// points, 21 an edge), or the stroke as drawn.
    std::vector<Point2D> path;
    std::int32_t type = FIGURE_NONE;  ///< a `FigureType`
    /// Probability, from 0 to 1, that the answer is right: calibrated on strokes
    /// of people that the model had not seen. 1 where the options or the numbers
    /// decide (`INVALID`, `TOO_SMALL`, `NOT_WANTED`).
    double confidence = 0.0;
    Figure figure;                      ///< in drawing-area units
    Reason reason = Reason::NO_FIGURE;  ///< why there is no figure
};

/// Immutable: any number of threads may share one.
class Beautifier {
public:
    /// Throws std::invalid_argument when `minSize` or `sensitivity` is out of
    /// range or `figures` holds no member of the enumeration.
    explicit Beautifier(BeautifierOptions options = {});

    /// As given to the constructor.
    const BeautifierOptions& options() const { return m_options; }

    /// Answers for one stroke. `stroke` and `others` (the strokes that line ends
    /// may snap to) are in fractions of the drawing area, `width` and `height`
    /// in any unit; sizes count in that unit. Force is ignored. Every input has
    /// an answer; throws std::bad_alloc only.
    Beautified beautify(std::span<const Point2D> stroke, double width, double height,
                        std::span<const std::vector<Point2D>> others = {}) const;

private:
    BeautifierOptions m_options;
};

}  // namespace Scrivo
