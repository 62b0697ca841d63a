#include "Beautifier/Evidence.h"

#include "Beautifier/Strays.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

// Strokes whose ends stay further apart than this share of the size are open.
constexpr double OPEN_GAP = 0.45;

/// Point `i`, where a loop goes on behind its end.
Vec at(const Coarse& points, int i) {
    return points[static_cast<std::size_t>(i < COARSE ? i : i - LOOP)];
}

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

/// The line of a piece; its end points, which corners round off, count only
/// when the piece is short.
FittedLine lineOf(const Scatter& scatter, const PolylineFit& fit, int piece) {
    const int first = fit.knots[static_cast<std::size_t>(piece)];
    const int last = fit.knots[static_cast<std::size_t>(piece) + 1];
    const int margin = last - first >= 6 ? 1 : 0;
    return scatter.line(first + margin, last - margin);
}

/// Where two lines meet; `ink` when they are nearly parallel or meet far away.
Vec meet(const FittedLine& a, const FittedLine& b, Vec ink, double size) {
    const double sine = cross(a.along, b.along);
    if (std::abs(sine) < 0.1) {
        return ink;
    }
    const Vec p = a.centre + (cross(b.centre - a.centre, b.along) / sine) * a.along;
    return norm(p - ink) > 0.25 * size ? ink : p;
}

double worstDistance(const Coarse& points, const FittedLine& line, int first, int last) {
    double worst = 0.0;
    for (int i = first; i <= last; ++i) {
        worst = std::max(worst, std::abs(cross(line.along, at(points, i) - line.centre)));
    }
    return worst;
}

/// Corners between successive pieces, for a closed fit also at the start.
Corners cornersOf(const Coarse& points, const Scatter& scatter, const PolylineFit& fit, bool closed,
                  double size) {
    Corners corners;
    FittedLine before = lineOf(scatter, fit, closed ? fit.pieces - 1 : 0);
    for (int k = 0; k < fit.pieces; ++k) {
        const int first = fit.knots[static_cast<std::size_t>(k)];
        const int last = fit.knots[static_cast<std::size_t>(k) + 1];
        const FittedLine line = lineOf(scatter, fit, k);
        if (closed || k > 0) {
            const Vec ink = at(points, first);
            const Vec corner = meet(before, line, ink, size);
            corners.at[static_cast<std::size_t>(corners.count++)] = corner;
        }
        corners.worst = std::max(corners.worst, worstDistance(points, line, first + 1, last - 1));
        before = line;
    }
    return corners;
}

ClosedEvidence examineClosed(const Fine& fine, const Closure& closure, double size) {
    ClosedEvidence closed;
    closed.closure = closure;
    closed.loop = loop(fine, closure);
    const Scatter scatter(closed.loop);
    closed.polygons = fitPolygons(scatter);
    closed.triangle = cornersOf(closed.loop, scatter, closed.polygons[2], true, size);
    closed.quadrangle = cornersOf(closed.loop, scatter, closed.polygons[3], true, size);
    closed.ellipse = fitEllipseTo(closed.loop);
    return closed;
}

}  // namespace

Evidence examine(const Fine& outline, double inkLength) {
    const Cleaned cleaned = withoutStrays(outline);
    const Fine& fine = cleaned.fine;
    Evidence e;
    e.fine = fine;
    e.outline = outline;
    e.retraced = cleaned.retraced;
    e.overlap = cleaned.overlap;
    e.hook = cleaned.hook;
    e.points = coarse(fine);
    e.size = sizeOf(e.points);
    e.length = lengthBetween(fine, 0, FINE - 1);
    e.roughness = inkLength > 0.0 ? inkLength / lengthBetween(outline, 0, FINE - 1) : 1.0;
    const Scatter scatter(e.points);
    e.line = scatter.line(0, COARSE - 1);
    e.polylines = fitPolylines(scatter, 4);
    e.vertex = cornersOf(e.points, scatter, e.polylines[1], false, e.size);
    const Closure closure = close(fine);
    if (closure.gap < OPEN_GAP * e.size) {
        e.closed = examineClosed(fine, closure, e.size);
    }
    return e;
}

}  // namespace Scrivo::beautifier
