#pragma once

#include "Beautifier/Figure.h"

#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

/// Hand-drawn outlines as curves in time, so that the same outline can be
/// sampled at any rate. Drawing-area units.
namespace curves {

using Scrivo::Point2D;
using Path = std::vector<Point2D>;

/// Position of the pen at time `t` from 0 to 1.
using Curve = std::function<Point2D(double)>;

inline Path sample(const Curve& curve, int count) {
    Path path;
    for (int i = 0; i < count; ++i) {
        path.push_back(curve(static_cast<double>(i) / (count - 1)));
    }
    return path;
}

/// Straight pieces from corner to corner, each at a share of the time that is
/// its share of the length.
inline Curve polyline(const Path& corners) {
    return [corners](double t) {
        const auto along = [&](std::size_t i, double share) {
            return Point2D{share * (corners[i].x - corners[i - 1].x),
                           share * (corners[i].y - corners[i - 1].y), 0.0};
        };
        const auto length = [&](std::size_t i) {
            return std::hypot(along(i, 1.0).x, along(i, 1.0).y);
        };
        double rest = 0.0;
        for (std::size_t i = 1; i < corners.size(); ++i) {
            rest += t * length(i);
        }
        std::size_t i = 1;
        for (; i + 1 < corners.size() && rest > length(i); ++i) {
            rest -= length(i);
        }
        const Point2D step = along(i, rest / length(i));
        return Point2D{corners[i - 1].x + step.x, corners[i - 1].y + step.y, 0.0};
    };
}

inline Curve ellipse(double a, double b, double tilt) {
    return [=](double t) {
        const double phi = 2.0 * std::numbers::pi * t + 0.7;
        const double x = a * std::cos(phi);
        const double y = b * std::sin(phi);
        return Point2D{400.0 + x * std::cos(tilt) - y * std::sin(tilt),
                       300.0 + x * std::sin(tilt) + y * std::cos(tilt), 0.0};
    };
}

/// A slow tremor of `size` units.
inline Curve shaky(const Curve& curve, double size) {
    return [=](double t) {
        Point2D p = curve(t);
        p.x += size * std::sin(13.0 * t + 1.0);
        p.y += size * std::sin(17.0 * t + 2.0);
        return p;
    };
}

template <typename F>
bool is(const Scrivo::Figure& figure) {
    return std::holds_alternative<F>(figure);
}

/// An outline and what it is recognised as.
struct Example {
    std::string name;
    Curve curve;
    std::int32_t type = Scrivo::FIGURE_NONE;
    bool (*isFigure)(const Scrivo::Figure&) = is<std::monostate>;  ///< what it is recognised as

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
        const double phi = 18.0 * t;
        return Point2D{400.0 + 100.0 * t * std::cos(phi), 300.0 + 100.0 * t * std::sin(phi), 0.0};
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

}  // namespace curves
