#include "Beautifier/fit/Evidence.h"

#include "Beautifier/ink/Strays.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// Strokes whose ends stay further apart than this share of the size are open.
constexpr double OPEN_GAP = 0.45;

// Pieces of the longest open polyline that is fitted.
constexpr int OPEN_PIECES = 4;

double sizeOf(const Coarse& points) {
    Vec sum;
    double squares = 0.0;
    for (const Vec& p : points) {
        sum = sum + p;
        squares += dot(p, p);
    }
    const Vec mean = (1.0 / COARSE) * sum;
    return 4.0 * std::sqrt(std::max(squares / COARSE - dot(mean, mean), 0.0));
}

ClosedEvidence examineClosed(const Fine& fine, const Closure& closure) {
    const Coarse points = loop(fine, closure);
    const Scatter scatter(points);
    return {closure, points, scatter, fitPolygons(scatter), {fine, closure, points}};
}

RoundEvidence examineRound(const Fine& outline) {
    const Fine fine = withoutStrays(outline).fine;
    const Closure closure = close(fine);
    return {fine, closure, loop(fine, closure)};
}

}  // namespace

Evidence examine(const Fine& outline) {
    const Cleaned cleaned = withoutStrays(outline);
    const Fine& fine = cleaned.fine;
    const Coarse points = coarse(fine);
    const Scatter scatter(points);
    Evidence e{fine,
               points,
               scatter,
               bendsOf(points),
               sizeOf(points),
               lengthBetween(fine, 0, FINE - 1),
               fitPolylines(scatter, OPEN_PIECES),
               outline,
               1.0,
               MANY_PIECES,
               cleaned.retraced,
               cleaned.overlap,
               cleaned.hook,
               std::nullopt};
    const Closure closure = close(fine);
    if (closure.gap < OPEN_GAP * e.size) {
        e.closed = examineClosed(fine, closure);
    }
    return e;
}

Evidence examine(const Ink& ink, const Frame& frame) {
    const Track track = trackOf(ink, frame);
    Evidence e = examine(resample(track, frame));
    e.roughness = frame.length / frame.extent / lengthBetween(e.outline, 0, FINE - 1);
    e.pieces = frame.pieces;
    if (e.closed && e.pieces < MANY_PIECES) {
        e.closed->round = examineRound(resampleRound(track, frame));
    }
    return e;
}

void takeAsClosed(Evidence& evidence) {
    if (!evidence.closed) {
        Closure whole;
        whole.gap = norm(evidence.fine.back() - evidence.fine.front());
        evidence.closed = examineClosed(evidence.fine, whole);
    }
}

}  // namespace Scrivo::beautifier
