#include "Beautifier/figures/Box.h"

#include <algorithm>

namespace Scrivo::beautifier {

Box boxOf(std::span<const Point2D> points) {
    const auto [left, right] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [top, bottom] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
    return {{left->x, top->y}, {right->x, bottom->y}};
}

}  // namespace Scrivo::beautifier
