#include "Beautifier/fit/Bends.h"

#include <algorithm>

namespace Scrivo::beautifier {

void Bends::add(double bend) {
    absolute += std::abs(bend);
    sum += bend;
    sharpest = std::max(sharpest, std::abs(bend));
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

Bends innerBends(const Fine& fine, const Closure& closure, int step) {
    constexpr int CHORD = 4;
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    Bends bends;
    for (int i = closure.first + 2 * CHORD; i + 2 * CHORD <= closure.last; i += step) {
        bends.add(turn(at(i) - at(i - CHORD), at(i + CHORD) - at(i)));
    }
    return bends;
}

}  // namespace Scrivo::beautifier
