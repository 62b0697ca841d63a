#include "Beautifier/Outline.h"

#include <algorithm>
#include <limits>

namespace Scrivo::beautifier {

namespace {

// Samples nearer to each other than this share of the size are one sample: a
// resting pen.
constexpr double SAME_POINT = 1e-9;

// Cosines of the bends between which the curve fades into straight pieces (45
// and 65 degrees): nine samples still make a circle, a corner stays a corner.
constexpr double SMOOTH_BEND = 0.71;
constexpr double SHARP_BEND = 0.42;

/// Walks the distinct samples of a stroke in the frame's units.
class Cursor {
public:
    Cursor(std::span<const Point2D> stroke, double width, double height, const Frame& frame)
        : stroke_(stroke), width_(width), height_(height), frame_(frame) {}

    /// Moves to the next sample that differs from the current one.
    bool next(Vec& point) {
        while (index_ < stroke_.size()) {
            const Vec candidate = at(index_++);
            if (started_ && norm(candidate - last_) <= SAME_POINT) {
                continue;
            }
            started_ = true;
            point = last_ = candidate;
            return true;
        }
        return false;
    }

private:
    Vec at(std::size_t i) const {
        return {(stroke_[i].x * width_ - frame_.centre.x) / frame_.extent,
                (stroke_[i].y * height_ - frame_.centre.y) / frame_.extent};
    }

    std::span<const Point2D> stroke_;
    double width_;
    double height_;
    const Frame& frame_;
    std::size_t index_ = 0;
    bool started_ = false;
    Vec last_;
};

/// Catmull-Rom tangent at `b`, times the parameter length of the piece b-c;
/// `toNext` tells whether that piece follows or precedes.
Vec tangent(Vec a, Vec b, Vec c, bool toNext) {
    const double before = norm(b - a);
    const double after = norm(c - b);
    const Vec chord = toNext ? c - b : b - a;
    const double bend = dot(b - a, c - b) / (before * after);
    const double smooth = std::clamp((bend - SHARP_BEND) / (SMOOTH_BEND - SHARP_BEND), 0.0, 1.0);
    if (smooth == 0.0) {
        return chord;
    }
    const double s = std::sqrt(before);
    const double t = std::sqrt(after);
    const Vec speed = (1.0 / s) * (b - a) - (1.0 / (s + t)) * (c - a) + (1.0 / t) * (c - b);
    return smooth * (toNext ? t : s) * speed + (1.0 - smooth) * chord;
}

/// Four successive samples; the piece in question runs from `b` to `c`.
struct Window {
    Vec a, b, c, d;
    bool hasA = false;
    bool hasD = false;

    /// Tangents at `b` and `c`; at an end of the stroke that of a parabola.
    void tangents(Vec& atB, Vec& atC) const {
        const Vec chord = c - b;
        atB = hasA ? tangent(a, b, c, true) : chord;
        atC = hasD ? tangent(b, c, d, false) : chord;
        if (!hasA && hasD) {
            atB = 2.0 * chord - atC;
        } else if (hasA && !hasD) {
            atC = 2.0 * chord - atB;
        }
    }
};

/// Cubic Hermite piece from `b` to `c` at parameter `t` in [0, 1].
Vec hermite(Vec b, Vec c, Vec atB, Vec atC, double t) {
    const double u = 1.0 - t;
    return (u * u * (1.0 + 2.0 * t)) * b + (t * t * (1.0 + 2.0 * u)) * c + (t * u * u) * atB -
           (t * t * u) * atC;
}

}  // namespace

Frame measure(std::span<const Point2D> stroke, double width, double height) {
    Frame frame;
    constexpr double INF = std::numeric_limits<double>::infinity();
    Vec low{INF, INF};
    Vec high{-INF, -INF};
    Vec before;
    double sum = 0.0;
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        const Vec p{stroke[i].x * width, stroke[i].y * height};
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        sum += i == 0 ? 0.0 * (p.x + p.y) : norm(p - before);
        before = p;
    }
    frame.centre = 0.5 * (low + high);
    frame.extent = std::max(high.x - low.x, high.y - low.y);
    frame.diagonal = norm(high - low);
    frame.length = sum;
    // The sum turns NaN or infinite with any sample, also where min and max
    // skip a NaN.
    frame.finite = !stroke.empty() && std::isfinite(sum) && std::isfinite(frame.diagonal) &&
                   std::isfinite(frame.centre.x) && std::isfinite(frame.centre.y);
    return frame;
}

Fine resample(std::span<const Point2D> stroke, double width, double height, const Frame& frame) {
    Fine out;
    Cursor cursor(stroke, width, height, frame);
    Window w;
    if (!cursor.next(w.b) || !cursor.next(w.c)) {
        return out;
    }
    w.hasD = cursor.next(w.d);
    const double step = frame.length / frame.extent / (FINE - 1);
    out[0] = w.b;
    int made = 1;
    double start = 0.0;  // arc length at w.b
    while (made < FINE) {
        const double piece = norm(w.c - w.b);
        const bool last = !w.hasD;
        if (made * step <= start + piece || last) {
            Vec atB = w.c - w.b;
            Vec atC = atB;
            if (piece > step) {
                w.tangents(atB, atC);
            }
            for (; made < FINE && (made * step <= start + piece || last); ++made) {
                const double t = std::clamp((made * step - start) / piece, 0.0, 1.0);
                out[static_cast<std::size_t>(made)] = hermite(w.b, w.c, atB, atC, t);
            }
        }
        start += piece;
        w = {w.b, w.c, w.d, {}, true, false};
        w.hasD = cursor.next(w.d);
    }
    return out;
}

Coarse coarse(const Fine& fine) {
    Coarse out;
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = fine[2 * i];
    }
    return out;
}

Coarse resample(const Fine& fine, int first, int last) {
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    double length = 0.0;
    for (int i = first; i < last; ++i) {
        length += norm(at(i + 1) - at(i));
    }
    Coarse out;
    out.front() = at(first);
    double start = 0.0;
    int i = first;
    for (int k = 1; k < COARSE; ++k) {
        const double target = length * k / (COARSE - 1);
        double piece = norm(at(i + 1) - at(i));
        while (i + 1 < last && start + piece < target) {
            start += piece;
            ++i;
            piece = norm(at(i + 1) - at(i));
        }
        const double t = piece > 0.0 ? std::min((target - start) / piece, 1.0) : 0.0;
        out[static_cast<std::size_t>(k)] = at(i) + t * (at(i + 1) - at(i));
    }
    return out;
}

}  // namespace Scrivo::beautifier
