#include "Beautifier/figures/LineSnap.h"

#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace Scrivo::beautifier {

namespace {

// Drawing-area units. Short lines snap within a quarter of their length, so that
// their ends never land on the same anchor.
constexpr double MAX_REACH = 10.0;
constexpr double SHARE = 0.25;

// Largest lean, radians, of a line that was meant level.
constexpr double MAX_LINE_LEAN = 0.122;

std::optional<Vec> anchorAt(Vec end, double reach, std::span<const Vec> anchors) {
    std::optional<Vec> best;
    for (const Vec& anchor : anchors) {
        const double distance = norm(anchor - end);
        if (distance < reach) {
            reach = distance;
            best = anchor;
        }
    }
    return best;
}

/// The line turned about `pivot` by its lean, exactly level or upright.
Segment levelled(const Segment& line, Vec pivot) {
    const Vec along = line.to - line.from;
    const double angle = lean(std::atan2(along.y, along.x));
    if (std::abs(angle) > MAX_LINE_LEAN) {
        return line;
    }
    Segment result{turned(line.from, pivot, -angle), turned(line.to, pivot, -angle)};
    double Vec::*const across = std::abs(along.x) > std::abs(along.y) ? &Vec::y : &Vec::x;
    result.from.*across = pivot.*across;
    result.to.*across = pivot.*across;
    return result;
}

}  // namespace

double reachOf(const Segment& line) {
    return std::min(MAX_REACH, SHARE * norm(line.to - line.from));
}

bool isInReach(const Segment& drawn, Vec p) {
    return std::min(norm(p - drawn.from), norm(p - drawn.to)) < reachOf(drawn);
}

Segment snapped(const Segment& drawn, std::span<const Vec> anchors, bool levels) {
    const double reach = reachOf(drawn);
    const std::optional<Vec> from = anchorAt(drawn.from, reach, anchors);
    const std::optional<Vec> to = anchorAt(drawn.to, reach, anchors);
    const Segment line{from.value_or(drawn.from), to.value_or(drawn.to)};
    if (!levels || (from && to)) {
        return line;
    }
    const Vec middle = 0.5 * (line.from + line.to);
    return levelled(line, from ? *from : to.value_or(middle));
}

}  // namespace Scrivo::beautifier
