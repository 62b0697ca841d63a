#include "Beautifier/ink/Strays.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

constexpr int CHORD = 4;  // steps on either side of a bend

// A retraced part begins where the pen turns back sharply, and lies beside the rest.
constexpr double TURN_BACK = -0.5;    // cosine of the bend, at most
constexpr double BESIDE = 0.06;       // at most, of the longer side
constexpr double BESIDE_LOOP = 0.09;  // of a closed figure: letters do not retrace those
constexpr double LOOP_GAP = 0.25;     // between the ends of a closed figure
constexpr double MEAN_BESIDE = 0.03;  // on average
constexpr int MIN_RETRACED = 12;      // steps; less is a hook
constexpr int MAX_RETRACED = 3;       // times; more is a scribble

constexpr int MIN_OVERLAP = 6;  // steps; less is trimmed where the ends meet

// A hook is short and leaves at an angle.
constexpr double MAX_HOOK = 0.11;  // of the longer side
constexpr int HOOK_STEPS = 12;
constexpr double HOOK_BEND = 0.5;  // cosine, at most
constexpr double STRAIGHT = 1.25;  // path over reach; arrow heads go back and forth

/// Cosine of the bend at point `i` between chords of `before` and `after` steps; 1
/// when a chord has no length.
double bendAt(const Fine& fine, int i, int before, int after) {
    const Vec a = pointAt(fine, i) - pointAt(fine, i - before);
    const Vec b = pointAt(fine, i + after) - pointAt(fine, i);
    const double lengths = dot(a, a) * dot(b, b);
    return lengths > 0.0 ? dot(a, b) / std::sqrt(lengths) : 1.0;
}

/// Whether the bend at point `i` between such chords is above a right angle.
bool isBack(const Fine& fine, int i, int before, int after) {
    const Vec p = pointAt(fine, i);
    return dot(p - pointAt(fine, i - before), pointAt(fine, i + after) - p) < 0.0;
}

/// Distance, clamped to `most`, of the point `k` steps after `turn` from the outline
/// about `k` steps before it; the reverse when `step` is -1.
double besideAt(const Fine& fine, int turn, int k, int step, double most) {
    constexpr int SLACK = 4;
    const int other = turn - step * k;
    const int first = std::clamp(other - SLACK, 0, FINE - 2);
    const int last = std::clamp(other + SLACK, 1, FINE - 1);
    double least = most;
    for (int i = first; i < last; ++i) {
        least = std::min(least, distanceToPiece(pointAt(fine, turn + step * k), pointAt(fine, i),
                                                pointAt(fine, i + 1)));
    }
    return least;
}

/// Whether all that follows `turn` (for a `step` of 1, else all before it) lies
/// beside the other, longer part.
bool isRetraced(const Fine& fine, int turn, int step) {
    const int steps = step > 0 ? FINE - 1 - turn : turn;
    const Vec other = step > 0 ? fine.front() : fine.back();
    const bool isLoop = norm(pointAt(fine, turn) - other) < LOOP_GAP;
    const double most = isLoop ? BESIDE_LOOP : BESIDE;
    double sum = 0.0;
    for (int k = 1; k <= steps; ++k) {
        const double beside = besideAt(fine, turn, k, step, most);
        sum += beside;
        if (beside >= most) {
            return false;
        }
    }
    return sum <= MEAN_BESIDE * steps;
}

/// The part as an outline of its own.
Fine cut(const Fine& fine, const Part& part) {
    Fine out;
    for (int k = 0; k < FINE; ++k) {
        const double target =
            part.first + static_cast<double>(k) * (part.last - part.first) / (FINE - 1);
        const int i = std::min(static_cast<int>(target), FINE - 2);
        out[static_cast<std::size_t>(k)] =
            pointAt(fine, i) + (target - i) * (pointAt(fine, i + 1) - pointAt(fine, i));
    }
    return out;
}

/// Whether the pen turns back sharply at least twice near an end, as it does in an
/// arrow head, which is no stray.
bool isArrowHead(const Fine& fine, bool atEnd) {
    constexpr int REACH = 26;  // steps
    constexpr double SHARP = -0.3;
    int turns = 0;
    for (int i = 2; i <= REACH; ++i) {
        const int toEnd = std::min(i, CHORD);
        const int place = atEnd ? FINE - 1 - i : i;
        const int before = atEnd ? CHORD : toEnd;
        const int after = atEnd ? toEnd : CHORD;
        if (isBack(fine, place, before, after) && bendAt(fine, place, before, after) < SHARP) {
            ++turns;
            i += CHORD;
        }
    }
    return turns >= 2;
}

/// The outline without the longest part that retraces the rest.
Part beforeRetracing(const Fine& fine) {
    const std::array arrows{isArrowHead(fine, false), isArrowHead(fine, true)};
    for (int i = FINE / 2; i >= MIN_RETRACED; --i) {
        for (const bool atEnd : {true, false}) {
            const int turn = atEnd ? FINE - 1 - i : i;
            if (isBack(fine, turn, CHORD, CHORD) && !arrows[atEnd ? 1 : 0] &&
                bendAt(fine, turn, CHORD, CHORD) <= TURN_BACK &&
                isRetraced(fine, turn, atEnd ? 1 : -1)) {
                return atEnd ? Part{0, turn} : Part{turn, FINE - 1};
            }
        }
    }
    return {};
}

/// Number of steps at the end that continue past the start of a closed outline, in
/// the same direction; 0 when fewer than `MIN_OVERLAP` or when they diverge from it.
int overlapOf(const Fine& fine) {
    constexpr int SLACK = 3;
    int meets = 0;
    double least = norm(fine.front() - fine.back());
    for (int i = 1; i <= FINE / 2; ++i) {
        const double distance = norm(pointAt(fine, i) - fine.back());
        meets = distance < least ? i : meets;
        least = std::min(least, distance);
    }
    double sum = 0.0;
    for (int k = 0; k < meets; ++k) {
        double beside = BESIDE;
        for (int i = std::max(meets - k - SLACK, 0); i < meets - k + SLACK; ++i) {
            beside = std::min(beside, distanceToPiece(pointAt(fine, FINE - 1 - k), pointAt(fine, i),
                                                      pointAt(fine, i + 1)));
        }
        sum += beside;
        if (beside >= BESIDE) {
            return 0;
        }
    }
    const bool isOverlap = meets >= MIN_OVERLAP && sum <= MEAN_BESIDE * meets;
    return isOverlap ? meets : 0;
}

/// Last step before the sharp bend that ends a detour of up to a quarter of the
/// longer side: a pen that overshot the closure and came back to the start.
int beforeSpur(const Fine& fine) {
    constexpr double MAX_DETOUR = 0.25;
    constexpr int MIN_STEPS = 2;
    int best = FINE - 1;
    double sharpest = 0.0;
    for (int i = FINE - 1 - MIN_STEPS; i > FINE / 2; --i) {
        if (norm(pointAt(fine, i) - fine.back()) > MAX_DETOUR) {
            break;
        }
        const double bend = bendAt(fine, i, CHORD, std::min(CHORD, FINE - 1 - i));
        if (bend < sharpest) {
            sharpest = bend;
            best = i;
        }
    }
    return best;
}

/// Steps of the hook before the sharpest bend near the start; 0 without one. An
/// end that meets the other one is the short side of a closed figure.
int hookAt(const Fine& fine) {
    if (isArrowHead(fine, false)) {
        return 0;
    }
    const double gap = norm(fine.front() - fine.back());
    int best = 0;
    double sharpest = HOOK_BEND;
    double path = 0.0;
    for (int i = 1; i <= HOOK_STEPS; ++i) {
        const double reach = norm(pointAt(fine, i) - pointAt(fine, 0));
        path += norm(pointAt(fine, i) - pointAt(fine, i - 1));
        const bool isFlick = reach <= MAX_HOOK && path <= STRAIGHT * reach;
        if (!isFlick || !(gap > 0.5 * reach)) {
            continue;
        }
        const double bend = bendAt(fine, i, std::min(i, CHORD), CHORD);
        if (bend < sharpest) {
            sharpest = bend;
            best = i;
        }
    }
    return best;
}

Fine reversed(Fine fine) {
    std::reverse(fine.begin(), fine.end());
    return fine;
}

}  // namespace

Cleaned withoutStrays(const Fine& fine) {
    Cleaned cleaned;
    cleaned.fine = fine;
    for (int i = 0; i < MAX_RETRACED; ++i) {
        const Part rest = beforeRetracing(cleaned.fine);
        const double share = static_cast<double>(rest.last - rest.first) / (FINE - 1);
        if (share == 1.0) {
            break;
        }
        cleaned.fine = cut(cleaned.fine, rest);
        cleaned.retraced = 1.0 - (1.0 - cleaned.retraced) * share;
    }
    const int overlap = overlapOf(cleaned.fine);
    if (overlap > 0) {
        cleaned.fine = cut(cleaned.fine, {0, FINE - 1 - overlap});
        cleaned.fine = cut(cleaned.fine, {0, beforeSpur(cleaned.fine)});
        cleaned.overlap = static_cast<double>(overlap) / (FINE - 1);
    }
    const int first = hookAt(cleaned.fine);
    const int last = FINE - 1 - hookAt(reversed(cleaned.fine));
    cleaned.hook = std::max(norm(pointAt(cleaned.fine, first) - pointAt(cleaned.fine, 0)),
                            norm(pointAt(cleaned.fine, last) - pointAt(cleaned.fine, FINE - 1)));
    if (first > 0 || last < FINE - 1) {
        cleaned.fine = cut(cleaned.fine, {first, last});
    }
    return cleaned;
}

}  // namespace Scrivo::beautifier
