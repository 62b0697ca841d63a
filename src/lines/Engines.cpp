#include "lines/Engines.h"

#include "Beautifier/figures/Families.h"
#include "Scrivo/Scrivo.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>
#include <variant>

namespace lines {
namespace {

using Path = std::vector<Scrivo::Point2D>;

/// Points that the template engine draws an edge of a polygon with.
constexpr std::size_t EDGE = 21;

/// Fractions of the drawing area: rounding moves a point by far less.
constexpr double SAME_PLACE = 1e-9;

/// Sides of the drawing area that a figure can be as long as; lib/warnings.js warns of longer ones.
constexpr double MAX_SPREAD = 50.0;

/// Edges of a polygon that was redrawn, 0 for one that was left as drawn: the corners of a redrawn
/// one come twice, as the end of an edge and the start of the next.
std::size_t edgesOf(const Path& path) {
    if (path.size() % EDGE != 0) return 0;
    const std::size_t edges = path.size() / EDGE;
    for (std::size_t edge = 0; edge < edges; ++edge) {
        const Scrivo::Point2D& end = path[(edge + 1) * EDGE - 1];
        const Scrivo::Point2D& start = path[(edge + 1) % edges * EDGE];
        const double x = end.x - start.x;
        const double y = end.y - start.y;
        if (std::sqrt(x * x + y * y) > SAME_PLACE) return 0;
    }
    return edges;
}

std::string_view familyOf(std::int32_t type, const Path& path) {
    switch (type) {
        case Scrivo::FIGURE_POINT:
            return "dot";
        case Scrivo::FIGURE_LINE:
            return "line";
        case Scrivo::FIGURE_ANGLE:
            return "angle";
        case Scrivo::FIGURE_ELLIPSE:
            return "ellipse";
        case Scrivo::FIGURE_POLYGON:
            break;
        default:
            return "none";
    }
    const std::size_t edges = edgesOf(path);
    if (edges == 3) return "triangle";
    return edges == 4 ? "quadrangle" : "polygon";
}

/// False for NaN, too.
bool isInProportion(const Path& path) {
    constexpr double FAR = std::numeric_limits<double>::infinity();
    Scrivo::Point2D low{FAR, FAR};
    Scrivo::Point2D high{-FAR, -FAR};
    for (const Scrivo::Point2D& p : path) {
        if (std::isnan(p.x) || std::isnan(p.y)) return false;
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    return std::max(high.x - low.x, high.y - low.y) <= MAX_SPREAD;
}

/// Circles are reported apart, as a kind of ellipse.
void nameFigure(Answer& answer) {
    std::visit(
        [&answer]<typename F>(const F& figure) {
            if constexpr (std::is_same_v<F, Scrivo::CircleFigure>) {
                answer.family = "ellipse";
                answer.kind = "circle";
            } else if constexpr (!std::is_same_v<F, std::monostate>) {
                using Traits = Scrivo::beautifier::FigureTraits<F>;
                answer.family = Traits::NAME;
                if constexpr (requires { figure.subtype; }) {
                    answer.kind = Traits::KINDS[static_cast<std::size_t>(figure.subtype)];
                }
            }
        },
        answer.figure);
}

}  // namespace

std::optional<Answer> TemplateEngine::answer(const Path& stroke, double width,
                                             double height) const {
    auto result =
        Scrivo::optimizeAStroke(stroke, static_cast<float>(width), static_cast<float>(height), {});
    if (result.type != Scrivo::FIGURE_NONE && !isInProportion(result.path)) return std::nullopt;
    Answer answer;
    answer.type = result.type;
    answer.family = familyOf(result.type, result.path);
    answer.path = std::move(result.path);
    return answer;
}

std::optional<Answer> BeautifierEngine::answer(const Path& stroke, double width,
                                               double height) const {
    auto result = m_beautifier.beautify(stroke, width, height);
    Answer answer;
    answer.type = result.type;
    answer.path = std::move(result.path);
    answer.confidence = result.confidence;
    answer.figure = result.figure;
    nameFigure(answer);
    return answer;
}

}  // namespace lines
