#include "Beautifier/fit/Retrace.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// A shorter way back is a hook.
constexpr int MIN_FOLD = FINE / 4;

// Mean distance between the ways there and back, share of the longer side.
constexpr double MAX_DISTANCE = 0.05;

// The way back may lead or lag by this many steps.
constexpr int MAX_LAG = 5;

double nearest(const Fine& outline, Vec p, int about) {
    double best = norm(p - pointAt(outline, about));
    for (int i = std::max(about - MAX_LAG, 0); i <= std::min(about + MAX_LAG, FINE - 1); ++i) {
        best = std::min(best, norm(p - pointAt(outline, i)));
    }
    return best;
}

/// Whether what follows point `fold` runs back along what precedes it.
bool runsBack(const Fine& outline, int fold) {
    const int steps = FINE - 1 - fold;
    double sum = 0.0;
    for (int k = 1; k <= steps; ++k) {
        sum += nearest(outline, pointAt(outline, fold + k), std::max(fold - k, 0));
        if (sum > MAX_DISTANCE * steps) {
            return false;
        }
    }
    return true;
}

/// Index of the point where the outline turns back, `FINE` - 1 for none.
int foldOf(const Fine& outline) {
    // A fold before the middle leaves too little outline to retrace.
    for (int fold = FINE / 2 - MAX_LAG; fold <= FINE - 1 - MIN_FOLD; ++fold) {
        const Vec before = pointAt(outline, fold) - pointAt(outline, fold - 3);
        const Vec after = pointAt(outline, fold + 3) - pointAt(outline, fold);
        if (dot(before, after) < 0.0 && runsBack(outline, fold)) {
            return fold;
        }
    }
    return FINE - 1;
}

}  // namespace

Part withoutRetrace(const Fine& fine) {
    const int end = foldOf(fine);
    if (end < FINE - 1) {
        return {0, end};
    }
    Fine reversed;
    std::reverse_copy(fine.begin(), fine.end(), reversed.begin());
    return {FINE - 1 - foldOf(reversed), FINE - 1};
}

}  // namespace Scrivo::beautifier
