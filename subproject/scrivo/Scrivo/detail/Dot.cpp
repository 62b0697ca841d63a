#include "Scrivo/detail/Dot.h"

#include "Scrivo/detail/Sampling.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace Scrivo::detail {

namespace {

// From the first to the second number of points the mean force decides. Fewer
// points are no dot, more are one whatever their force.
constexpr std::size_t MIN_FORCE_POINTS = 9;
constexpr std::size_t MAX_FORCE_POINTS = 25;
/// Mean force that a dot exceeds.
constexpr double DOT_FORCE = 0.65;

/// Segments of a dot's ring, and the rings' radii in drawing-area units.
constexpr int RING_SEGMENTS = 20;
constexpr double RING_RADII[] = {2.5, 1.5, 0.5};

void appendRing(std::vector<Point2D>& out, const Point2D& centre, double radius) {
    for (int i = 0; i <= RING_SEGMENTS; ++i) {
        const double a = (i % RING_SEGMENTS) * std::numbers::pi * 2 / RING_SEGMENTS;
        out.push_back({centre.x + radius * std::cos(a), centre.y + radius * std::sin(a), 0.0});
    }
}

}  // namespace

bool isPoint(Stroke stroke) {
    const std::size_t n = stroke.size();
    if (n > MAX_FORCE_POINTS) {
        return true;
    }
    if (n < MIN_FORCE_POINTS) {
        return false;
    }
    double sum = 0.0;
    for (const Point2D& p : stroke) {
        if (p.force > 0.0) {
            sum += p.force;
        }
    }
    return sum / static_cast<double>(n) > DOT_FORCE;
}

std::int64_t reDrawPoint(std::vector<Point2D>& out, Stroke stroke) {
    Point2D sum;
    for (const Point2D& p : stroke) {
        sum.x += p.x;
        sum.y += p.y;
    }
    const auto n = static_cast<double>(stroke.size());
    const Point2D centre{sum.x / n, sum.y / n, 0.0};
    for (const double radius : RING_RADII) {
        appendRing(out, centre, radius);
    }
    out.push_back(centre);
    return sizeOf(out);
}

}  // namespace Scrivo::detail
