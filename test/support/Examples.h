#pragma once

#include "Beautifier/Figure.h"
#include "Ink.h"

#include <ostream>
#include <string>
#include <variant>
#include <vector>

/// Ink for the beautifier and the figures that it is recognised as.
namespace Scrivo::test::ink {

template <typename F>
bool is(const Scrivo::Figure& figure) {
    return std::holds_alternative<F>(figure);
}

/// An outline and what it is recognised as.
struct Example {
    std::string name;
    Curve curve;
    std::int32_t type = Scrivo::FIGURE_NONE;
    bool (*isFigure)(const Scrivo::Figure&) = is<std::monostate>;

    friend void PrintTo(const Example& example, std::ostream* out) { *out << example.name; }
};

/// One or two of every figure, about 200 units large.
inline std::vector<Example> examples() {
    using namespace Scrivo;
    return {
        {"line", shaky(polyline({{300, 200}, {480, 290}}), 1.0), FIGURE_LINE, is<LineFigure>},
        {"angle", shaky(polyline({{300, 200}, {350, 380}, {480, 250}}), 1.0), FIGURE_ANGLE,
         is<AngleFigure>},
        {"triangle", shaky(polyline({{300, 380}, {390, 210}, {500, 390}, {303, 383}}), 1.0),
         FIGURE_POLYGON, is<TriangleFigure>},
        {"rectangle",
         shaky(polyline({{300, 200}, {500, 205}, {498, 330}, {302, 326}, {301, 204}}), 1.0),
         FIGURE_POLYGON, is<QuadrangleFigure>},
        {"rhombus",
         shaky(polyline({{300, 300}, {400, 220}, {500, 300}, {400, 382}, {303, 302}}), 1.0),
         FIGURE_POLYGON, is<QuadrangleFigure>},
        {"circle", shaky(ellipse(100, 100, 0.0), 1.0), FIGURE_ELLIPSE, is<CircleFigure>},
        {"ellipse", shaky(ellipse(110, 60, 0.5), 1.0), FIGURE_ELLIPSE, is<EllipseFigure>},
    };
}

/// Ink that is no figure.
inline std::vector<Example> others() {
    const Curve zigzag = polyline({{300, 300}, {330, 200}, {360, 300}, {390, 200}, {420, 300}});
    const Curve spiral = [](double t) {
        return Point2D{400.0, 300.0} + polar(100.0 * t, 18.0 * t);
    };
    const Curve wave = [](double t) {
        return Point2D{300.0 + 200.0 * t, 300.0 + 40.0 * std::sin(9.0 * t), 0.0};
    };
    const Curve pentagon =
        polyline({{400, 200}, {495, 269}, {459, 381}, {341, 381}, {305, 269}, {400, 200}});
    const Curve star =
        polyline({{400, 200}, {459, 381}, {305, 269}, {495, 269}, {341, 381}, {400, 200}});
    return {{"zigzag", zigzag},
            {"spiral", spiral},
            {"wave", wave},
            {"pentagon", pentagon},
            {"star", star}};
}

}  // namespace Scrivo::test::ink
