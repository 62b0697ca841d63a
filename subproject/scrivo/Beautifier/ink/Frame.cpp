#include "Beautifier/ink/Frame.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// Below this extent, drawing-area units, squares of lengths are not precise, and a
// stroke is a place.
constexpr double MIN_EXTENT = 1e-150;

}  // namespace

Frame measure(const Ink& ink) {
    Frame frame;
    Vec low{INF, INF};
    Vec high{-INF, -INF};
    Vec before;
    double sum = 0.0;
    double squares = 0.0;
    for (std::size_t i = 0; i < ink.samples.size(); ++i) {
        const Vec p = ink.at(ink.samples[i]);
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        const double piece = i == 0 ? 0.0 * (p.x + p.y) : norm(p - before);
        sum += piece;
        squares += piece * piece;
        before = p;
    }
    frame.centre = 0.5 * (low + high);
    const double extent = std::max(high.x - low.x, high.y - low.y);
    if (!(extent < MIN_EXTENT)) {
        frame.extent = extent;
        frame.diagonal = norm(high - low);
        frame.length = sum;
        frame.pieces = squares > 0.0 ? sum * sum / squares : 0.0;
    }
    // NaN and infinite samples propagate to the sum; min and max may skip a NaN.
    const double farthest = std::max({-low.x, -low.y, high.x, high.y});
    frame.measurable = !ink.samples.empty() && std::isfinite(sum) && farthest < UNKNOWN_EXTENT;
    return frame;
}

double travel(const Ink& ink, const Frame& frame) {
    if (ink.samples.empty() || frame.extent == 0.0) {
        return 0.0;
    }
    const double shortest = std::max(0.5, frame.extent / 8.0);
    Vec from = ink.at(ink.samples.front());
    double sum = 0.0;
    for (const Point2D& p : ink.samples) {
        const double move = norm(ink.at(p) - from);
        if (move >= shortest) {
            sum += move;
            from = ink.at(p);
        }
    }
    return sum + norm(ink.at(ink.samples.back()) - from);
}

}  // namespace Scrivo::beautifier
