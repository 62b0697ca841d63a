#include "Scrivo/ScrivoUtil.h"

#include "Scrivo/detail/Geometry.h"

#include <cmath>
#include <cstddef>
#include <vector>

using Scrivo::Point2D;

namespace Scrivo::detail {

namespace {

/// Below this many points a stroke has no extent.
constexpr std::size_t MEASURABLE_POINTS = 10;

/// chord / path length above which a piece of a stroke is straight.
constexpr double STRAIGHT_RATIO = 0.95;

/// Running extremes of a list of numbers. A NaN is neither greater nor smaller
/// and leaves no trace.
struct Range {
    double max;
    double min = UNKNOWN_EXTENT;

    void add(double value) {
        if (value > max) {
            max = value;
        }
        if (value < min) {
            min = value;
        }
    }
};

/// Start value of a running maximum: the smallest 32-bit signed integer.
constexpr double LOWEST = -2147483648.0;

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

double arcLength(Stroke stroke, std::int64_t i, std::int64_t j) {
    // Summed in float on purpose: whether a polygon is regularised depends on
    // this length, and a double sum would decide differently on the boundary.
    float total = 0.0F;
    for (std::int64_t k = i; k < j - 1; ++k) {
        const auto at = static_cast<std::size_t>(k);
        total =
            static_cast<float>(static_cast<double>(total) + distance(stroke[at], stroke[at + 1]));
    }
    return total;
}

bool isSimpleLine(Stroke stroke) {
    if (stroke.empty()) {
        return false;
    }
    double arc = 0.0;
    for (std::size_t k = 1; k < stroke.size(); ++k) {
        arc += distance(stroke[k - 1], stroke[k]);
    }
    return distance(stroke.front(), stroke.back()) / arc > STRAIGHT_RATIO;
}

Point2D scaleOfGraph(Stroke stroke) {
    if (stroke.size() < MEASURABLE_POINTS) {
        return {UNKNOWN_EXTENT, UNKNOWN_EXTENT, 0.0};
    }
    Range x{0.0};
    Range y{0.0};
    for (const Point2D& p : stroke) {
        x.add(p.x);
        y.add(p.y);
    }
    return {std::abs(x.max - x.min), std::abs(y.max - y.min), 0.0};
}

}  // namespace Scrivo::detail

double distance(Point2D a, Point2D b) {
    return Scrivo::detail::distance(a, b);
}

double cosine(Point2D u, Point2D v) {
    return Scrivo::detail::cosine(u, v);
}

Point2D projection(Point2D a, Point2D b, Point2D p) {
    return Scrivo::detail::projection(a, b, p);
}

double direction(Point2D a, Point2D b, Point2D c) {
    return Scrivo::detail::direction(a, b, c);
}

double arc_length(std::vector<Point2D> stroke, std::int64_t i, std::int64_t j) {
    return Scrivo::detail::arcLength(stroke, i, j);
}

Point2D rotationLine(Point2D centre, Point2D p, double angle) {
    return Scrivo::detail::rotationLine(centre, p, angle);
}

bool isSimpleLine(std::vector<Point2D> stroke) {
    return Scrivo::detail::isSimpleLine(stroke);
}

Point2D scaleOfGraph(std::vector<Point2D> stroke) {
    return Scrivo::detail::scaleOfGraph(stroke);
}

void boundCheck(std::vector<Point2D>& stroke, float width, float height) {
    using Scrivo::detail::LOWEST;
    Scrivo::detail::Range x{LOWEST};
    Scrivo::detail::Range y{LOWEST};
    for (const Point2D& p : stroke) {
        x.add(p.x);
        y.add(p.y);
    }
    // Both axes are looked at before either moves: a figure that cannot be
    // made to fit stays entirely where it is.
    if (sticksOutOnBothSides(x, width) || sticksOutOnBothSides(y, height)) {
        return;
    }
    const double shiftX = overhang(x, width);
    const double shiftY = overhang(y, height);
    for (Point2D& p : stroke) {
        p.x -= shiftX;
        p.y -= shiftY;
    }
}

void recover(std::vector<Point2D>& stroke, float width, float height) {
    for (Point2D& p : stroke) {
        p.x /= width;
        p.y /= height;
    }
}
