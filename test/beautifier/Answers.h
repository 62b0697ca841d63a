#pragma once

#include "Beautifier/Beautifier.h"
#include "Beautifier/ink/Resampling.h"
#include "Examples.h"
#include "Matchers.h"
#include "Random.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

/// Answers for strokes, both in drawing-area units.
namespace Scrivo::test {

inline constexpr double WIDTH = 800.0;
inline constexpr double HEIGHT = 600.0;

inline ink::Path inFractions(const ink::Path& path) {
    return Scrivo::test::fractions(path, WIDTH, HEIGHT);
}

/// The answer for a stroke; its path is in units too.
inline Beautified beautify(const ink::Path& path, const BeautifierOptions& options = {},
                           std::vector<ink::Path> others = {}) {
    std::transform(others.begin(), others.end(), others.begin(), inFractions);
    Beautified answer = Beautifier(options).beautify(inFractions(path), WIDTH, HEIGHT, others);
    answer.path = Scrivo::test::fractions(answer.path, 1 / WIDTH, 1 / HEIGHT);
    return answer;
}

/// The even outline of a curve, in units of the frame.
inline beautifier::Fine fineOutline(const ink::Curve& curve) {
    const ink::Path path = ink::sample(curve, 400);
    const beautifier::Frame frame = beautifier::measure({path, 1, 1});
    return beautifier::resample(beautifier::trackOf({path, 1, 1}, frame), frame);
}

/// Checks that the figure's parameters describe the path, in units.
struct Agrees {
    const ink::Path& path;

    void corner(std::size_t i, const Point2D& p) const {
        EXPECT_LT(length(path.at(i) - p), 1e-6) << "point " << i;
    }
    void operator()(const std::monostate&) const { ADD_FAILURE() << "no figure"; }
    void operator()(const DotFigure& f) const { corner(63, f.centre); }
    void operator()(const LineFigure& f) const {
        corner(0, f.from);
        corner(20, f.to);
    }
    void operator()(const AngleFigure& f) const {
        corner(0, f.from);
        corner(20, f.vertex);
        corner(41, f.to);
        const Point2D u = f.from - f.vertex;
        const Point2D v = f.to - f.vertex;
        EXPECT_NEAR(std::cos(f.opening), dot(u, v) / (length(u) * length(v)), 1e-9);
    }
    void operator()(const CircleFigure& f) const {
        for (const Point2D& p : path) {
            EXPECT_NEAR(length(p - f.centre), f.radius, 1e-6);
        }
    }
    void operator()(const EllipseFigure& f) const {
        for (const Point2D& p : path) {
            const Point2D axis = polar(1.0, f.rotation);
            const double u = dot(axis, p - f.centre) / f.radii.x;
            const double v = cross(axis, p - f.centre) / f.radii.y;
            EXPECT_NEAR(std::hypot(u, v), 1.0, 1e-9);
        }
    }
    template <typename Polygon>
    void operator()(const Polygon& f) const {
        for (std::size_t i = 0; i < f.corners.size(); ++i) {
            corner(21 * i, f.corners[i]);
            corner(21 * i + 20, f.corners[(i + 1) % f.corners.size()]);
        }
    }
};

}  // namespace Scrivo::test
