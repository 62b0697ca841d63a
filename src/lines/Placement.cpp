#include "lines/Placement.h"

#include <algorithm>
#include <cmath>

namespace lines {
namespace {

/// Room around a stroke in addition to its own size, in drawing units.
constexpr double ROOM = 64.0;

/// Cells of the grid that areas lie on, along a side.
constexpr double GRID = 1024.0;

bool isFinite(const Scrivo::Point2D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// The smallest power of two that is not below a number.
double powerOfTwoFrom(double value) {
    if (!std::isfinite(value)) return value;
    int exponent = 0;
    const double fraction = std::frexp(value, &exponent);
    return std::ldexp(1.0, fraction == 0.5 ? exponent - 1 : exponent);
}

}  // namespace

Area areaAround(std::span<const Scrivo::Point2D> stroke, double scale) {
    Scrivo::Point2D low = stroke.front();
    Scrivo::Point2D high = low;
    for (const Scrivo::Point2D& p : stroke) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const double room = std::max(high.x - low.x, high.y - low.y) + ROOM / scale;
    const double side = powerOfTwoFrom(3.0 * room * scale) / scale;
    const double cell = side / GRID;
    const auto before = [&](double value) { return std::floor((value - room) / cell) * cell; };
    return {before(low.x), before(low.y), side, side};
}

bool toFractions(std::span<const Scrivo::Point2D> stroke, const Area& area,
                 std::vector<Scrivo::Point2D>& fractions) {
    fractions.assign(stroke.begin(), stroke.end());
    for (Scrivo::Point2D& p : fractions) {
        p.x = (p.x - area.x) / area.width;
        p.y = (p.y - area.y) / area.height;
    }
    return std::all_of(fractions.begin(), fractions.end(), isFinite);
}

bool fromFractions(std::span<Scrivo::Point2D> path, const Area& area) {
    for (Scrivo::Point2D& p : path) {
        p = {p.x * area.width + area.x, p.y * area.height + area.y, p.force};
    }
    return std::all_of(path.begin(), path.end(), isFinite);
}

}  // namespace lines
