#include "Beautifier/fit/Bends.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// Fine steps.
constexpr int CHORD = 4;

/// Calls `visit` with the chords before and after every `step`th point between the tails.
void visitChords(const Fine& fine, const Closure& closure, int step, auto visit) {
    for (int i = closure.first + 2 * CHORD; i + 2 * CHORD <= closure.last; i += step) {
        const Vec p = pointAt(fine, i);
        visit(p - pointAt(fine, i - CHORD), pointAt(fine, i + CHORD) - p);
    }
}

}  // namespace

void Bends::add(double bend) {
    absolute += std::abs(bend);
    sum += bend;
}

Bends bendsOf(const Coarse& points) {
    Bends bends;
    Vec before = points[2] - points[0];
    for (std::size_t i = 4; i < points.size(); i += 2) {
        const Vec chord = points[i] - points[i - 2];
        bends.add(turn(before, chord));
        before = chord;
    }
    return bends;
}

Bends innerBends(const Fine& fine, const Closure& closure) {
    Bends bends;
    visitChords(fine, closure, CHORD,
                [&](Vec before, Vec after) { bends.add(turn(before, after)); });
    return bends;
}

double sharpestBend(const Fine& fine, const Closure& closure) {
    // An arc tangent takes long. Bends whose direction lies clearly within the sharpest so
    // far, by more than it and the products can be off, need none.
    constexpr double ROUNDING = 1e-9;
    double sharpest = 0.0;
    Vec direction{1.0, 0.0};
    visitChords(fine, closure, 1, [&](Vec before, Vec after) {
        const Vec bend{dot(before, after), std::abs(cross(before, after))};
        const double margin = ROUNDING * (std::abs(bend.x) + bend.y);
        if (cross(direction, bend) < -margin * (std::abs(direction.x) + direction.y)) {
            return;
        }
        const double angle = std::abs(turn(before, after));
        if (angle > sharpest) {
            sharpest = angle;
            direction = bend;
        }
    });
    return sharpest;
}

}  // namespace Scrivo::beautifier
