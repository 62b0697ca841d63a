/// @file
/// The beautifier: recognises figures in freehand strokes. It fits every family of
/// figures to a stroke and answers with the ideal figure of the likeliest one, or with
/// the stroke as drawn. Needs no templates. The answer is independent of the sampling
/// rate and of how evenly the stroke was sampled.
#pragma once

#include "Beautifier/Figure.h"
#include "Beautifier/Options.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Scrivo {

/// Outline of `figure` as `Beautified::path` has it, in fractions of the drawing
/// area: from the parameters alone, which the host may have changed. Empty when a point
/// would not lie within 2^31 - 1 sides of the area.
std::vector<Point2D> outlineOf(const Figure& figure, double width, double height);

/// The points that figures are fitted to, in fractions of the drawing area: 97 at even
/// distances along the stroke, which takes the same arguments as `Beautifier::beautify`.
/// Hooks and repeated parts at its ends are left out, tremor is smoothed. Empty for a
/// stroke that is `INVALID` itself, not because of its figure, or whose samples all
/// coincide.
std::vector<Point2D> resample(std::span<const Point2D> stroke, double width, double height);

/// Why a stroke stays as drawn.
enum class Reason : std::uint8_t {
    RECOGNISED,  ///< it does not: a figure was recognised
    INVALID,     ///< no point, a coordinate that is not finite or at least 2^31 - 1
                 ///< units or sides, an area without a size; a stroke or a figure that
                 ///< spreads over more than 50 areas, as pixels instead of fractions do
    TOO_SMALL,   ///< below `minSize`
    NOT_WANTED,  ///< the figure that it resembles is not among `figures`
    NOT_SURE,    ///< it resembles a figure, but not enough for this sensitivity
    NO_FIGURE,   ///< it resembles none
};

/// Another family that the stroke may have been meant as.
struct Alternative {
    FigureFamily family = FigureFamily::LINE;  ///< the other family
    double probability = 0.0;  ///< from 0 to 1; together with the answer's at most 1
};

/// The answer to one stroke.
struct Beautified {
    /// Fractions of the drawing area: the figure's outline with as many points as
    /// the template engine draws (a dot 64, a line 21, an angle 42, an ellipse 85,
    /// a polygon 21 an edge), or the stroke as drawn.
    std::vector<Point2D> path;
    std::int32_t type = FIGURE_NONE;  ///< a `FigureType`
    /// Probability, from 0 to 1, that the answer is right, calibrated on strokes of
    /// people outside the training set. 1 where options or validity decide
    /// (`INVALID`, `TOO_SMALL`, `NOT_WANTED`).
    double confidence = 0.0;
    Figure figure;                      ///< in drawing-area units
    Reason reason = Reason::NO_FIGURE;  ///< why there is no figure
    /// Families worth offering besides the answer, likeliest first: those with a
    /// probability of at least 1 %. A stroke that stays ink may have them too.
    std::vector<Alternative> alternatives;
};

/// What a stroke is to become: a family, or one of its kinds. Dots, lines and
/// angles have no kinds.
class Wish {
public:
    /// The kind is chosen as `beautify` chooses it.
    Wish(FigureFamily family) : m_family(family) {}
    /// A triangle of this kind.
    Wish(TriangleKind kind) : Wish(FigureFamily::TRIANGLE, static_cast<std::uint8_t>(kind)) {}
    /// A quadrangle of this kind.
    Wish(QuadrangleKind kind) : Wish(FigureFamily::QUADRANGLE, static_cast<std::uint8_t>(kind)) {}
    /// An ellipse of this kind.
    Wish(EllipseKind kind) : Wish(FigureFamily::ELLIPSE, static_cast<std::uint8_t>(kind)) {}
    /// A kind by its value in the enumeration of its family.
    Wish(FigureFamily family, std::uint8_t kind) : m_family(family), m_kind(kind) {}

    /// The family that is wished for.
    FigureFamily family() const { return m_family; }
    /// The kind as a value of its enumeration; none for any kind.
    std::optional<std::uint8_t> kind() const { return m_kind; }

private:
    FigureFamily m_family;
    std::optional<std::uint8_t> m_kind;
};

/// Immutable; may be shared by any number of threads.
class Beautifier {
public:
    /// Throws std::invalid_argument when `minSize`, `tapSize` or `sensitivity` is
    /// out of range or `figures` holds a value that is not a `FigureFamily`.
    explicit Beautifier(BeautifierOptions options = {});

    /// As given to the constructor.
    const BeautifierOptions& options() const { return m_options; }

    /// Answers for one stroke. `stroke` and `others` (the strokes that line ends
    /// may snap to) are in fractions of the drawing area, `width` and `height`
    /// in any unit; sizes count in that unit. Force is ignored. Every input has
    /// an answer; throws std::bad_alloc only.
    Beautified beautify(std::span<const Point2D> stroke, double width, double height,
                        std::span<const std::vector<Point2D>> others = {}) const;

    /// The best figure of the wished family or kind for this stroke, whatever its
    /// score: `figures`, `minSize` and `sensitivity` are ignored, the other options
    /// apply. `confidence` is the probability that the family is right. The
    /// stroke as drawn comes back as `INVALID`, as from `beautify`, and as
    /// `NO_FIGURE` when there is no such figure, as from samples that all coincide.
    /// Throws std::invalid_argument for a value outside its enumeration.
    Beautified beautifyAs(std::span<const Point2D> stroke, const Wish& wish, double width,
                          double height, std::span<const std::vector<Point2D>> others = {}) const;

private:
    BeautifierOptions m_options;
};

}  // namespace Scrivo
