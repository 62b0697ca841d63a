#include "Scrivo/detail/Dot.h"

#include "Scrivo/detail/Sampling.h"

#include <cstddef>

namespace Scrivo::detail {

namespace {

// For numbers of points in this range the mean force decides. With fewer points a
// stroke is not a dot, with more it always is.
constexpr std::size_t MIN_FORCE_POINTS = 9;
constexpr std::size_t MAX_FORCE_POINTS = 25;
/// Mean force that a dot exceeds.
constexpr double DOT_FORCE = 0.65;

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
    appendDot(out, {sum.x / n, sum.y / n, 0.0});
    return sizeOf(out);
}

}  // namespace Scrivo::detail
