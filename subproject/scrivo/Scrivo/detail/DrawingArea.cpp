#include "Scrivo/detail/DrawingArea.h"

#include <cmath>
#include <cstddef>

namespace Scrivo::detail {

namespace {

/// Below this many points a stroke has no extent.
constexpr std::size_t MIN_MEASURABLE_POINTS = 10;

/// Running extremes of a list of numbers. NaN is skipped because it compares false.
struct Range {
    double max;
    double min = UNKNOWN_EXTENT;

    void add(double value) {
        max = value > max ? value : max;
        min = value < min ? value : min;
    }
};

struct Ranges {
    Range x;
    Range y;
};

Ranges rangesOf(Stroke stroke, double startOfMaximum) {
    Ranges ranges{{startOfMaximum}, {startOfMaximum}};
    for (const Point2D& p : stroke) {
        ranges.x.add(p.x);
        ranges.y.add(p.y);
    }
    return ranges;
}

/// How far a range has to move to lie in [0, size], as a float.
float overhang(const Range& range, double size) {
    float shift = 0.0F;
    if (range.max > size) {
        shift = static_cast<float>(range.max - size);
    }
    if (range.min < 0.0) {
        shift = static_cast<float>(range.min);
    }
    return shift;
}

bool sticksOutOnBothSides(const Range& range, double size) {
    return range.max > size && range.min < 0.0;
}

}  // namespace

Point2D extentOf(Stroke stroke) {
    if (stroke.size() < MIN_MEASURABLE_POINTS) {
        return {UNKNOWN_EXTENT, UNKNOWN_EXTENT, 0.0};
    }
    const auto [x, y] = rangesOf(stroke, 0.0);
    return {std::abs(x.max - x.min), std::abs(y.max - y.min), 0.0};
}

std::vector<Point2D> toUnits(Stroke stroke, float width, float height) {
    std::vector<Point2D> result(stroke.begin(), stroke.end());
    for (Point2D& p : result) {
        p.x *= width;
        p.y *= height;
    }
    return result;
}

void toFractions(std::vector<Point2D>& stroke, float width, float height) {
    for (Point2D& p : stroke) {
        p.x /= width;
        p.y /= height;
    }
}

void moveInside(std::vector<Point2D>& figure, float width, float height) {
    const auto [x, y] = rangesOf(figure, LOWEST);
    // Both axes are tested before either moves: a figure that cannot be made to
    // fit stays entirely where it is.
    if (sticksOutOnBothSides(x, width) || sticksOutOnBothSides(y, height)) {
        return;
    }
    const double shiftX = overhang(x, width);
    const double shiftY = overhang(y, height);
    for (Point2D& p : figure) {
        p.x -= shiftX;
        p.y -= shiftY;
    }
}

}  // namespace Scrivo::detail
