#include "Beautifier/fit/Explained.h"

#include <algorithm>
#include <numbers>

namespace Scrivo::beautifier {

double farShare(const Evidence& e, std::span<const Vec> corners) {
    // Most points lie far from the line of most edges. That is known without a division or
    // a root, to within rounding errors.
    constexpr double ROUNDING = 1e-6;
    const double limit = FAR * e.size;
    const auto isFarFrom = [&](Vec p, Vec a, Vec b) {
        const Vec along = b - a;
        const double off = cross(along, p - a);
        return off * off > (1.0 + ROUNDING) * limit * limit * dot(along, along) ||
               !(distanceToPiece(p, a, b) <= limit);
    };
    const auto isFar = [&](Vec p) {
        for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
            if (!isFarFrom(p, corners[i], corners[i + 1])) {
                return false;
            }
        }
        return true;
    };
    return static_cast<double>(std::count_if(e.points.begin(), e.points.end(), isFar)) / COARSE;
}

CornerInk inkAt(const Fine& fine, Vec corner, int first, int last, int reach) {
    const auto at = [&](int i) { return fine[static_cast<std::size_t>(i)]; };
    int nearest = first;
    double least = dot(at(first) - corner, at(first) - corner);
    for (int i = first + 1; i <= last; ++i) {
        const double squared = dot(at(i) - corner, at(i) - corner);
        if (squared < least) {
            least = squared;
            nearest = i;
        }
    }
    CornerInk ink{std::sqrt(least), std::numbers::pi};
    const int before = nearest - reach;
    const int after = nearest + reach;
    if (before >= first && after <= last) {
        ink.bend =
            std::abs(turn(at(before + reach / 2) - at(before), at(after) - at(after - reach / 2)));
    }
    return ink;
}

double lengthRatio(const Evidence& e, double length) {
    return std::log(std::clamp(e.length / length, 0.1, 5.0));
}

}  // namespace Scrivo::beautifier
