#include "Scrivo/detail/Geometry.h"

#include <cstddef>

namespace Scrivo::detail {

namespace {

/// chord / path length above which a piece of a stroke is straight.
constexpr double STRAIGHT_RATIO = 0.95;

}  // namespace

Point2D rotatedClockwise(const Point2D& p, const Point2D& centre, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double dx = p.x - centre.x;
    const double dy = p.y - centre.y;
    return {centre.x + c * dx + s * dy, centre.y + c * dy - s * dx, 0.0};
}

Point2D rotatedCounterClockwise(const Point2D& p, const Point2D& centre, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double dx = p.x - centre.x;
    const double dy = p.y - centre.y;
    return {centre.x + dx * c - dy * s, centre.y + dx * s + dy * c, 0.0};
}

double singleLength(Stroke stroke) {
    double length = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        length += singleDistance(stroke[i - 1], stroke[i]);
    }
    return length;
}

double doubleLength(Stroke stroke) {
    double length = 0.0;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        length += doubleDistance(stroke[i - 1], stroke[i]);
    }
    return length;
}

double arcLength(Stroke stroke, std::int64_t i, std::int64_t j) {
    // Summed in float on purpose: this length decides whether a polygon is
    // regularised, and a double sum could decide differently at the threshold.
    float total = 0.0F;
    for (std::int64_t k = i; k < j - 1; ++k) {
        const auto at = static_cast<std::size_t>(k);
        total = static_cast<float>(static_cast<double>(total) +
                                   singleDistance(stroke[at], stroke[at + 1]));
    }
    return total;
}

bool isSimpleLine(Stroke stroke) {
    return !stroke.empty() &&
           singleDistance(stroke.front(), stroke.back()) / singleLength(stroke) > STRAIGHT_RATIO;
}

}  // namespace Scrivo::detail
