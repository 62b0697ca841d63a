#include "Beautifier/figures/Regularity.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

constexpr double EXACT = 1e-4;

}  // namespace

Vec difference(const Point2D& a, const Point2D& b) {
    return {b.x - a.x, b.y - a.y};
}

bool equal(double a, double b) {
    return std::abs(a - b) <= EXACT * std::max(std::abs(a), std::abs(b));
}

bool perpendicular(Vec a, Vec b) {
    return std::abs(dot(a, b)) <= EXACT * norm(a) * norm(b);
}

bool parallel(Vec a, Vec b) {
    return std::abs(cross(a, b)) <= EXACT * norm(a) * norm(b);
}

}  // namespace Scrivo::beautifier
