#include "Scrivo/detail/StraightLine.h"

#include <cmath>
#include <cstddef>

namespace Scrivo::detail {

namespace {

/// |slope| of the chord above which the fitted line is vertical.
constexpr double STEEP_SLOPE = 20.0;
/// chord / path above which a stroke is straight without a test of its band.
constexpr double MIN_LINE_RATIO = 0.98;
/// chord / path below which it is not.
constexpr double BENT_RATIO = 0.75;

/// Indices of a stroke's extreme points.
struct Extremes {
    std::size_t maxX = 0;
    std::size_t minX = 0;
    std::size_t maxY = 0;
    std::size_t minY = 0;
};

/// The two points that span the longer extent of a stroke, height on a tie.
struct ExtremePair {
    Point2D low;
    Point2D high;
};

ExtremePair longerExtent(Stroke stroke, const Extremes& e) {
    const double extentX = singleDistance(stroke[e.maxX], stroke[e.minX]);
    const double extentY = singleDistance(stroke[e.maxY], stroke[e.minY]);
    if (extentX > extentY) {
        return {stroke[e.minX], stroke[e.maxX]};
    }
    return {stroke[e.minY], stroke[e.maxY]};
}

/// The sums for the least-squares line and the extremes, from one pass.
struct LineSums {
    double x = 0.0;
    double y = 0.0;
    double xx = 0.0;
    double xy = 0.0;
    Extremes extremes;
};

LineSums sumUp(Stroke stroke) {
    LineSums s;
    double maxX = LOWEST;
    double minX = UNKNOWN_EXTENT;
    double maxY = LOWEST;
    double minY = UNKNOWN_EXTENT;
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        const Point2D& p = stroke[i];
        s.x += p.x;
        s.y += p.y;
        s.xx += p.x * p.x;
        s.xy += p.x * p.y;
        if (p.x > maxX) {
            maxX = p.x;
            s.extremes.maxX = i;
        }
        if (p.x < minX) {
            minX = p.x;
            s.extremes.minX = i;
        }
        if (p.y > maxY) {
            maxY = p.y;
            s.extremes.maxY = i;
        }
        if (p.y < minY) {
            minY = p.y;
            s.extremes.minY = i;
        }
    }
    return s;
}

/// Whether the chord is too steep to fit y as a function of x.
bool isSteep(Stroke stroke) {
    const double dx = stroke.back().x - stroke.front().x;
    const double dy = stroke.back().y - stroke.front().y;
    // A chord exactly one unit wide is measured one unit further right. The geometry
    // does not require this, but answers must not change between releases.
    const double divisor = std::abs(dx) == 1.0 ? dx + 1.0 : dx;
    return std::abs(dy / divisor) > STEEP_SLOPE;
}

void appendFittedLine(std::vector<Point2D>& out, Stroke stroke, const LineSums& sums,
                      const ExtremePair& ends, std::int32_t steps) {
    const auto n = static_cast<double>(stroke.size());
    const double determinant = sums.x * sums.x - sums.xx * n;
    const double a = (sums.x * sums.y - n * sums.xy) / determinant;
    const double b = (sums.xy * sums.x - sums.xx * sums.y) / determinant;
    const Point2D onAxis{0.0, b, 0.0};
    const Point2D besideAxis{1.0, a + b, 0.0};
    const Point2D from = projection(onAxis, besideAxis, ends.low);
    const Point2D to = projection(onAxis, besideAxis, ends.high);
    const double step = (to.x - from.x) / steps;
    for (std::int32_t i = 0; i <= steps; ++i) {
        const double x = i * step + from.x;
        out.push_back({x, a * x + b, 0.0});
    }
}

void appendVertical(std::vector<Point2D>& out, double x, double fromY, double toY,
                    std::int32_t steps) {
    const double step = (toY - fromY) / steps;
    for (std::int32_t i = 0; i <= steps; ++i) {
        out.push_back({x, i * step + fromY, 0.0});
    }
}

Extremes extremesOf(Stroke stroke) {
    Extremes e;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        const Point2D& p = stroke[i];
        if (p.x > stroke[e.maxX].x) {
            e.maxX = i;
        }
        if (p.x < stroke[e.minX].x) {
            e.minX = i;
        }
        if (p.y > stroke[e.maxY].y) {
            e.maxY = i;
        }
        if (p.y < stroke[e.minY].y) {
            e.minY = i;
        }
    }
    return e;
}

/// Width of the band about the line through `a` and `b` that holds all points.
double bandWidth(Stroke stroke, const Point2D& a, const Point2D& b) {
    double max = LOWEST;
    double min = UNKNOWN_EXTENT;
    for (const Point2D& p : stroke) {
        const double offset = singleDistance(p, projection(a, b, p));
        const double signedOffset = direction(a, b, p) < 0.0 ? offset : -offset;
        if (signedOffset > max) {
            max = signedOffset;
        }
        if (signedOffset < min) {
            min = signedOffset;
        }
    }
    return std::abs(max - min);
}

}  // namespace

std::int64_t fitLine(std::vector<Point2D>& out, Stroke stroke) {
    if (stroke.size() < 2) {
        return 0;
    }
    const LineSums sums = sumUp(stroke);
    const ExtremePair ends = longerExtent(stroke, sums.extremes);
    const auto steps = static_cast<std::int32_t>(NUM_POINT);
    if (isSteep(stroke)) {
        const double meanX = sums.x / static_cast<double>(stroke.size());
        appendVertical(out, meanX, ends.low.y, ends.high.y, steps);
    } else {
        appendFittedLine(out, stroke, sums, ends, steps);
    }
    return steps + 1;
}

double maxRelativeBand(double length) {
    return (length / -1000.0) * 0.08 + 0.1;
}

bool isStrictLine(Stroke stroke) {
    const double ratio = singleDistance(stroke.front(), stroke.back()) / singleLength(stroke);
    if (ratio > MIN_LINE_RATIO) {
        return true;
    }
    if (ratio < BENT_RATIO) {
        return false;
    }
    const ExtremePair ends = longerExtent(stroke, extremesOf(stroke));
    const double extent = singleDistance(ends.low, ends.high);
    return bandWidth(stroke, ends.high, ends.low) / extent < maxRelativeBand(extent);
}

}  // namespace Scrivo::detail
