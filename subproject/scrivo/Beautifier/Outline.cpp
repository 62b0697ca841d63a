#include "Beautifier/Outline.h"

#include <algorithm>
#include <limits>

namespace Scrivo::beautifier {

namespace {

// Samples nearer to each other than this share of the size are one sample: a
// resting pen.
constexpr double SAME_POINT = 1e-9;

/// Bends between which the curve fades into straight pieces, in radians.
struct BendLimits {
    double smooth = 0.0;
    double sharp = 0.0;
};

// A single corner stays a corner, ten samples still make a circle.
constexpr BendLimits AMONG_STRAIGHT{0.79, 1.13};

// Where every sample bends, as the seven of a slim ellipse do. The corners of a
// triangle bend more, and so do those of a square on average.
constexpr BendLimits AMONG_BENT{1.7, 1.95};
constexpr double CORNER = 2.0;
constexpr double SQUARE_CORNERS = 1.35;

// Strokes of more samples show their curves without guessing.
constexpr int FEW_SAMPLES = 24;

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

/// How a stroke of few samples is to be joined: as a curve when its bends are
/// spread over all samples and none of them is a corner.
BendLimits limitsOf(Cursor cursor) {
    Vec a;
    Vec b;
    Vec c;
    if (!cursor.next(a) || !cursor.next(b)) {
        return AMONG_STRAIGHT;
    }
    double sum = 0.0;
    double squares = 0.0;
    int bends = 0;
    for (; cursor.next(c); a = b, b = c) {
        const double bend = std::abs(turn(b - a, c - b));
        if (bend > CORNER || bends > FEW_SAMPLES) {
            return AMONG_STRAIGHT;
        }
        sum += bend;
        squares += bend * bend;
        ++bends;
    }
    // 1 when all bends are alike, 1 / bends when there is a single one.
    const bool isCurved = bends >= 4 && squares > 0.0 && sum < SQUARE_CORNERS * bends;
    const double spread = isCurved ? sum * sum / (bends * squares) : 0.0;
    const double t = std::clamp((spread - 0.65) / 0.2, 0.0, 1.0);
    return {(1.0 - t) * AMONG_STRAIGHT.smooth + t * AMONG_BENT.smooth,
            (1.0 - t) * AMONG_STRAIGHT.sharp + t * AMONG_BENT.sharp};
}

/// Catmull-Rom tangent at `b`, times the parameter length of the piece b-c;
/// `toNext` tells whether that piece follows or precedes.
Vec tangent(Vec a, Vec b, Vec c, bool toNext, const BendLimits& limits) {
    const double before = norm(b - a);
    const double after = norm(c - b);
    const Vec chord = toNext ? c - b : b - a;
    const double bend = std::abs(turn(b - a, c - b));
    const double smooth =
        std::clamp((limits.sharp - bend) / (limits.sharp - limits.smooth), 0.0, 1.0);
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
    void tangents(const BendLimits& limits, Vec& atB, Vec& atC) const {
        const Vec chord = c - b;
        atB = hasA ? tangent(a, b, c, true, limits) : chord;
        atC = hasD ? tangent(b, c, d, false, limits) : chord;
        if (!hasA && hasD) {
            atB = 2.0 * chord - atC;
        } else if (hasA && !hasD) {
            atC = 2.0 * chord - atB;
        }
    }
};

/// Sums the path through the samples: the integral of the position over the arc
/// length, from the start to any place further on than the one before.
class PathIntegral {
public:
    explicit PathIntegral(Cursor cursor) : cursor_(cursor) {
        cursor_.next(from_);
        more_ = cursor_.next(to_);
    }

    Vec upTo(double length) {
        while (more_ && length > start_ + norm(to_ - from_)) {
            const double piece = norm(to_ - from_);
            sum_ = sum_ + (0.5 * piece) * (from_ + to_);
            start_ += piece;
            from_ = to_;
            more_ = cursor_.next(to_);
        }
        const double piece = more_ ? norm(to_ - from_) : 0.0;
        const double t = length - start_;
        return sum_ + t * from_ + (piece > 0.0 ? 0.5 * t * t / piece : 0.0) * (to_ - from_);
    }

private:
    Cursor cursor_;
    Vec from_;
    Vec to_;
    bool more_ = false;
    double start_ = 0.0;
    Vec sum_;
};

/// `N` points at even distances along the samples, each the mean of the path
/// within `reach` of it, or within as much as there is to the nearer end.
template <std::size_t N>
std::array<Vec, N> averaged(const Cursor& cursor, double length, double reach) {
    std::array<Vec, N> out;
    PathIntegral behind(cursor);
    PathIntegral ahead(cursor);
    for (std::size_t k = 0; k < N; ++k) {
        const double place = length * static_cast<double>(k) / (N - 1);
        const double r = std::max(std::min({reach, place, length - place}), 1e-6 * length);
        const double low = std::max(place - r, 0.0);
        const double high = std::min(place + r, length);
        out[k] = (1.0 / (high - low)) * (ahead.upTo(high) - behind.upTo(low));
    }
    return out;
}

// Tremor is what an average over this share of the size removes.
constexpr double TREMOR_REACH = 0.04;

/// How much longer the path is than its average, where it is about as rough as
/// elsewhere: 1 for lines, curves and polygons, more for a hand that shakes.
double roughnessOf(const Cursor& cursor, double length) {
    constexpr std::size_t PLACES = 49;
    const auto even = averaged<PLACES>(cursor, length, TREMOR_REACH);
    std::array<double, PLACES - 1> steps;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i] = norm(even[i + 1] - even[i]);
    }
    const auto middle = steps.begin() + steps.size() / 2;
    std::nth_element(steps.begin(), middle, steps.end());
    return length / (PLACES - 1) / std::max(*middle, 1e-3 * length / (PLACES - 1));
}

/// `FINE` points at even distances along `points`.
template <std::size_t N>
Fine even(const std::array<Vec, N>& points) {
    std::array<double, N> upTo{};
    for (std::size_t i = 1; i < N; ++i) {
        upTo[i] = upTo[i - 1] + norm(points[i] - points[i - 1]);
    }
    Fine out;
    std::size_t i = 1;
    for (std::size_t k = 0; k < FINE; ++k) {
        const double place = upTo.back() * static_cast<double>(k) / (FINE - 1);
        while (i + 1 < N && upTo[i] < place) {
            ++i;
        }
        const double piece = upTo[i] - upTo[i - 1];
        const double t = piece > 0.0 ? (place - upTo[i - 1]) / piece : 0.0;
        out[k] = points[i - 1] + t * (points[i] - points[i - 1]);
    }
    return out;
}

/// Cubic Hermite piece from `b` to `c` at parameter `t` in [0, 1].
Vec hermite(Vec b, Vec c, Vec atB, Vec atC, double t) {
    const double u = 1.0 - t;
    return (u * u * (1.0 + 2.0 * t)) * b + (t * t * (1.0 + 2.0 * u)) * c + (t * u * u) * atB -
           (t * t * u) * atC;
}

/// `FINE` points along the curve that joins the samples.
Fine joined(Cursor cursor, const Frame& frame) {
    Fine out;
    const BendLimits limits = limitsOf(cursor);
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
                w.tangents(limits, atB, atC);
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
    // skip a NaN. The routines that draw look for extremes within UNKNOWN_EXTENT.
    const double farthest = std::max({-low.x, -low.y, high.x, high.y});
    frame.measurable = !stroke.empty() && std::isfinite(sum) && farthest < UNKNOWN_EXTENT;
    return frame;
}

double travel(std::span<const Point2D> stroke, double width, double height, const Frame& frame) {
    if (stroke.empty()) {
        return 0.0;
    }
    const double least = std::max(0.5, frame.extent / 8.0);
    const auto at = [&](const Point2D& p) { return Vec{p.x * width, p.y * height}; };
    Vec from = at(stroke.front());
    double sum = 0.0;
    for (const Point2D& p : stroke) {
        const double move = norm(at(p) - from);
        if (move >= least) {
            sum += move;
            from = at(p);
        }
    }
    return sum + norm(at(stroke.back()) - from);
}

Fine resample(std::span<const Point2D> stroke, double width, double height, const Frame& frame) {
    // Between these the average gradually takes the place of the samples.
    constexpr double STEADY = 1.04;
    constexpr double ROUGH = 1.15;
    constexpr std::size_t PLACES = 2 * FINE - 1;
    const Cursor cursor(stroke, width, height, frame);
    const double length = frame.length / frame.extent;
    const double roughness = roughnessOf(cursor, length);
    if (!(roughness > STEADY)) {
        return joined(cursor, frame);
    }
    const double strength = std::min((roughness - STEADY) / (ROUGH - STEADY), 1.0);
    return even(averaged<PLACES>(cursor, length, strength * roughness * TREMOR_REACH));
}

Coarse coarse(const Fine& fine) {
    Coarse out;
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = fine[2 * i];
    }
    return out;
}

Coarse resample(const Fine& fine, int first, int last, const Metric& metric) {
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    double length = 0.0;
    for (int i = first; i < last; ++i) {
        length += metric.length(at(i + 1) - at(i));
    }
    Coarse out;
    out.front() = at(first);
    double start = 0.0;
    int i = first;
    for (int k = 1; k < COARSE; ++k) {
        const double target = length * k / (COARSE - 1);
        double piece = metric.length(at(i + 1) - at(i));
        while (i + 1 < last && start + piece < target) {
            start += piece;
            ++i;
            piece = metric.length(at(i + 1) - at(i));
        }
        const double t = piece > 0.0 ? std::min((target - start) / piece, 1.0) : 0.0;
        out[static_cast<std::size_t>(k)] = at(i) + t * (at(i + 1) - at(i));
    }
    return out;
}

}  // namespace Scrivo::beautifier
