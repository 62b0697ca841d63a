#pragma once

#include "Random.h"
#include "Strokes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

/// Hand-drawn strokes in drawing-area units.
namespace Scrivo::test::ink {

using Path = Stroke;

/// Position of the pen at time `t` from 0 to 1, so that one outline can be sampled
/// at any rate.
using Curve = std::function<Point2D(double)>;

inline Path sample(const Curve& curve, int count) {
    Path path;
    for (int i = 0; i < count; ++i) {
        path.push_back(curve(static_cast<double>(i) / (count - 1)));
    }
    return path;
}

/// Straight pieces from corner to corner, at constant speed.
inline Curve polyline(const Path& corners) {
    std::vector<double> ends{0.0};
    for (std::size_t i = 1; i < corners.size(); ++i) {
        ends.push_back(ends.back() + length(corners[i] - corners[i - 1]));
    }
    return [corners, ends](double t) {
        const double at = t * ends.back();
        std::size_t i = 1;
        while (i + 1 < corners.size() && at > ends[i]) {
            ++i;
        }
        const double share = (at - ends[i - 1]) / (ends[i] - ends[i - 1]);
        return corners[i - 1] + share * (corners[i] - corners[i - 1]);
    };
}

inline Curve ellipse(double a, double b, double tilt) {
    return [=](double t) {
        const double phi = 2.0 * PI * t + 0.7;
        return Point2D{400.0, 300.0} + polar(a * std::cos(phi), tilt) +
               polar(b * std::sin(phi), tilt + PI / 2);
    };
}

/// A slow tremor of `size` units.
inline Curve shaky(const Curve& curve, double size) {
    return [=](double t) {
        return curve(t) + size * Point2D{std::sin(13.0 * t + 1.0), std::sin(17.0 * t + 2.0)};
    };
}

/// Closed strokes, made from a seed.
class Hand : public Random {
public:
    /// The first three are the recogniser's families, with their ids.
    enum Shape { RECTANGLE = 1, TRIANGLE = 2, ELLIPSE = 3, KNOT = 4 };

    explicit Hand(std::uint64_t seed) : Random(seed) {}

    /// 40 to 130 points about (400, 300): any size, orientation, starting point and
    /// direction; gap or overshoot, uneven speed, a slow wobble and jitter.
    Stroke stroke(Shape shape) {
        const Curve outline = outlineOf(shape);
        double extent = 0.0;
        for (const Point2D& p : sample(outline, 60)) {
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
        return sample(
            [&](double t) {
                const double eased =
                    t + unevenness * (std::sin(2.0 * TURN * t + phase) - std::sin(phase));
                const Point2D p = outline(fraction(start + turns * eased)) +
                                  Point2D{wobbleX.at(t), wobbleY.at(t)} + jitter(0.003 * extent);
                return Point2D{400.0, 300.0} + polar(p.x, tilt) + polar(p.y, tilt + PI / 2);
            },
            n);
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

    Curve outlineOf(Shape shape) {
        const double width = in(60.0, 300.0);
        const double height = width * in(0.4, 1.0);
        switch (shape) {
            case RECTANGLE: {
                const double skew = in(-0.08, 0.08) * height;
                return rounded(
                    {{0, 0}, {width, 0}, {width + skew, height}, {skew, height}, {0, 0}});
            }
            case TRIANGLE:
                return rounded({{0, 0}, {width, 0}, {width * in(0.1, 0.9), height * 1.2}, {0, 0}});
            case ELLIPSE:
                return wave(width, height, 1.0);
            default:
                return wave(width, height, 2.0 + below(3));
        }
    }

    /// An ellipse, or a closed curve that crosses itself when `waves` is not 1.
    static Curve wave(double width, double height, double waves) {
        return [=](double t) {
            return Point2D{width * std::cos(TURN * t), height * std::sin(waves * TURN * t)};
        };
    }

    /// A polygon whose corners are cut by a running mean.
    Curve rounded(const Path& corners) {
        const int reach = below(10);
        return [outline = polyline(corners), reach](double t) {
            Point2D sum;
            for (int k = -reach; k <= reach; ++k) {
                sum = sum + outline(fraction(t + k / 240.0));
            }
            return (1.0 / (2 * reach + 1)) * sum;
        };
    }

    static double fraction(double t) { return t - std::floor(t); }
};

}  // namespace Scrivo::test::ink
