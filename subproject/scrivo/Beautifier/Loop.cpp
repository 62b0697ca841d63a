#include "Beautifier/Loop.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

constexpr int REACH = FINE / 4;  // steps that may be cut at either end
constexpr double CHARGE = 0.3;   // gap that a unit of cut length must close

Vec at(const Fine& fine, int i) {
    return fine[static_cast<std::size_t>(i)];
}

/// Index of the point farthest from the mean.
std::size_t farthest(const Coarse& points) {
    Vec centre;
    for (const Vec& p : points) {
        centre = centre + (1.0 / COARSE) * p;
    }
    std::size_t best = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (norm(points[i] - centre) > norm(points[best] - centre)) {
            best = i;
        }
    }
    return best;
}

double distanceToPiece(Vec p, Vec a, Vec b) {
    const Vec along = b - a;
    const double squared = dot(along, along);
    const double t = squared > 0.0 ? std::clamp(dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return norm(p - a - t * along);
}

bool crosses(Vec a, Vec b, Vec c, Vec d) {
    return cross(b - a, c - a) * cross(b - a, d - a) < 0.0 &&
           cross(d - c, a - c) * cross(d - c, b - c) < 0.0;
}

double pieceDistance(Vec a, Vec b, Vec c, Vec d) {
    if (crosses(a, b, c, d)) {
        return 0.0;
    }
    return std::min({distanceToPiece(a, c, d), distanceToPiece(b, c, d), distanceToPiece(c, a, b),
                     distanceToPiece(d, a, b)});
}

/// Smallest distance of the outline about `first` from the outline about
/// `last`: the ends that are left may cross between two points.
double exactGap(const Fine& fine, int first, int last) {
    double gap = norm(at(fine, first) - at(fine, last));
    for (int i = std::max(first - 1, 0); i <= first; ++i) {
        for (int k = last - 1; k <= std::min(last, FINE - 2); ++k) {
            gap = std::min(
                gap, pieceDistance(at(fine, i), at(fine, i + 1), at(fine, k), at(fine, k + 1)));
        }
    }
    return gap;
}

}  // namespace

double lengthBetween(const Fine& fine, int first, int last) {
    double sum = 0.0;
    for (int i = first; i < last; ++i) {
        sum += norm(at(fine, i + 1) - at(fine, i));
    }
    return sum;
}

Closure close(const Fine& fine) {
    const double step = lengthBetween(fine, 0, FINE - 1) / (FINE - 1);
    Closure best;
    best.gap = norm(at(fine, 0) - at(fine, FINE - 1));
    double bestCost = best.gap;
    for (int i = 0; i <= REACH; ++i) {
        for (int k = 0; k <= REACH; ++k) {
            const double charge = CHARGE * step * (i + k);
            if (charge >= bestCost) {
                break;
            }
            const double gap = norm(at(fine, i) - at(fine, FINE - 1 - k));
            if (gap + charge < bestCost) {
                bestCost = gap + charge;
                best = {i, FINE - 1 - k, gap, static_cast<double>(i + k) / (FINE - 1)};
            }
        }
    }
    best.gap = exactGap(fine, best.first, best.last);
    return best;
}

Coarse loop(const Fine& fine, const Closure& closure) {
    const Coarse open = resample(fine, closure.first, closure.last);
    const std::size_t start = farthest(open);
    Coarse out;
    // The last point is left out: where the ends meet it is the first one, where
    // a gap stays the closing piece is a step longer.
    for (std::size_t i = 0; i + 1 < out.size(); ++i) {
        out[i] = open[(start + i) % LOOP];
    }
    out.back() = out.front();
    return out;
}

}  // namespace Scrivo::beautifier
