#pragma once

#include "Random.h"
#include "Strokes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Closed strokes as a hand draws them, made from a seed.
namespace Scrivo::test::ink {

/// The first three are the recogniser's families, with their ids.
enum Shape { RECTANGLE = 1, TRIANGLE = 2, ELLIPSE = 3, KNOT = 4 };

class Hand : public Random {
public:
    explicit Hand(std::uint64_t seed) : Random(seed) {}

    /// 40 to 130 points about (400, 300), in drawing-area units: any size,
    /// orientation, starting point and direction; gap or overshoot, uneven
    /// speed, a slow wobble and jitter.
    Stroke stroke(Shape shape) {
        const Stroke outline = outlineOf(shape);
        double extent = 0.0;
        for (const auto& p : outline) {
            extent = std::max({extent, std::abs(p.x), std::abs(p.y)});
        }
        const int n = 40 + below(90);
        const double start = in(0.0, 1.0);
        const double turns = (below(2) == 0 ? 1.0 : -1.0) * in(0.96, 1.06);
        const double unevenness = in(0.0, 0.05);
        const double phase = in(0.0, TURN);
        const Wobble wobbleX = wobble(extent);
        const Wobble wobbleY = wobble(extent);
        const double tilt = below(2) == 0 ? in(-0.15, 0.15) : in(0.0, TURN);
        Stroke path;
        for (int i = 0; i < n; ++i) {
            const double t = static_cast<double>(i) / (n - 1);
            const double eased =
                t + unevenness * (std::sin(2.0 * TURN * t + phase) - std::sin(phase));
            auto p = at(outline, start + turns * eased);
            p.x += wobbleX.at(t) + in(-0.003, 0.003) * extent;
            p.y += wobbleY.at(t) + in(-0.003, 0.003) * extent;
            path.push_back({400.0 + p.x * std::cos(tilt) - p.y * std::sin(tilt),
                            300.0 + p.x * std::sin(tilt) + p.y * std::cos(tilt), 0.0});
        }
        return path;
    }

    /// `count` strokes, the three families in turn.
    std::vector<Stroke> strokes(int count) {
        std::vector<Stroke> result;
        result.reserve(static_cast<std::size_t>(count));
        for (int k = 0; k < count; ++k) {
            result.push_back(stroke(static_cast<Shape>(1 + k % 3)));
        }
        return result;
    }

private:
    static constexpr double TURN = 2.0 * PI;
    static constexpr int OUTLINE_POINTS = 240;

    struct Wobble {
        std::array<double, 2> amplitude;
        std::array<double, 2> phase;
        [[nodiscard]] double at(double t) const {
            return amplitude[0] * std::sin(1.2 * TURN * t + phase[0]) +
                   amplitude[1] * std::sin(2.9 * TURN * t + phase[1]);
        }
    };

    Wobble wobble(double extent) {
        return {{in(0.0, 0.018) * extent, in(0.0, 0.018) * extent}, {in(0.0, TURN), in(0.0, TURN)}};
    }

    Stroke outlineOf(Shape shape) {
        const double width = in(60.0, 300.0);
        const double height = width * in(0.4, 1.0);
        switch (shape) {
            case RECTANGLE: {
                const double skew = in(-0.08, 0.08) * height;
                return rounded(polygon({{0.0, 0.0, 0.0},
                                        {width, 0.0, 0.0},
                                        {width + skew, height, 0.0},
                                        {skew, height, 0.0}}));
            }
            case TRIANGLE:
                return rounded(polygon({{0.0, 0.0, 0.0},
                                        {width, 0.0, 0.0},
                                        {width * in(0.1, 0.9), height * 1.2, 0.0}}));
            case ELLIPSE:
                return curve(width, height, 1.0);
            default:
                return curve(width, height, 2.0 + below(3));
        }
    }

    static Stroke polygon(const Stroke& corners) {
        Stroke outline;
        const auto edges = corners.size();
        const auto steps = OUTLINE_POINTS / edges;
        for (std::size_t k = 0; k < edges; ++k) {
            const auto& a = corners[k];
            const auto& b = corners[(k + 1) % edges];
            for (std::size_t i = 0; i < steps; ++i) {
                const double t = static_cast<double>(i) / static_cast<double>(steps);
                outline.push_back({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, 0.0});
            }
        }
        return outline;
    }

    /// An ellipse, or a closed curve that crosses itself when `waves` is not 1.
    static Stroke curve(double width, double height, double waves) {
        Stroke outline;
        for (int i = 0; i < OUTLINE_POINTS; ++i) {
            const double t = TURN * i / OUTLINE_POINTS;
            outline.push_back({width * std::cos(t), height * std::sin(waves * t), 0.0});
        }
        return outline;
    }

    /// Corners cut by a running mean.
    Stroke rounded(const Stroke& outline) {
        const int reach = below(10);
        const int n = static_cast<int>(outline.size());
        Stroke result;
        for (int i = 0; i < n; ++i) {
            Point2D sum;
            for (int k = i - reach; k <= i + reach; ++k) {
                const auto& p = outline[static_cast<std::size_t>((k + n) % n)];
                sum.x += p.x;
                sum.y += p.y;
            }
            result.push_back({sum.x / (2 * reach + 1), sum.y / (2 * reach + 1), 0.0});
        }
        return result;
    }

    /// The point of the closed outline at `position`, counted in whole turns.
    static Point2D at(const Stroke& outline, double position) {
        const auto n = static_cast<double>(outline.size());
        const double f = (position - std::floor(position)) * n;
        const auto k = static_cast<std::size_t>(f) % outline.size();
        const auto& a = outline[k];
        const auto& b = outline[(k + 1) % outline.size()];
        const double part = f - std::floor(f);
        return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part, 0.0};
    }
};

}  // namespace Scrivo::test::ink
