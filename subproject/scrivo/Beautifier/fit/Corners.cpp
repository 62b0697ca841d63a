#include "Beautifier/fit/Corners.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

/// Point `i`; the indices of a loop continue past its end.
Vec at(const Coarse& points, int i) {
    return points[static_cast<std::size_t>(i < COARSE ? i : i - LOOP)];
}

/// The line of a piece. Its end points, which corners round off, count only
/// when the piece is short.
FittedLine lineOf(const Scatter& scatter, const PolylineFit& fit, int piece) {
    const int first = fit.knots[static_cast<std::size_t>(piece)];
    const int last = fit.knots[static_cast<std::size_t>(piece) + 1];
    const int margin = last - first >= 6 ? 1 : 0;
    return scatter.line(first + margin, last - margin);
}

double worstDistance(const Coarse& points, const FittedLine& line, int first, int last) {
    double worst = 0.0;
    for (int i = first; i <= last; ++i) {
        worst = std::max(worst, std::abs(cross(line.along, at(points, i) - line.centre)));
    }
    return worst;
}

}  // namespace

Vec cornerOf(const FittedLine& a, const FittedLine& b, Vec ink, double size) {
    if (std::abs(cross(a.along, b.along)) < 0.1) {
        return ink;
    }
    const Vec p = intersection(a.centre, a.along, b.centre, b.along);
    return norm(p - ink) > 0.25 * size ? ink : p;
}

Corners cornersOf(const Coarse& points, const Scatter& scatter, const PolylineFit& fit, bool closed,
                  double size) {
    Corners corners;
    std::array<FittedLine, MAX_PIECES> lines;
    for (int k = 0; k < fit.pieces; ++k) {
        lines[static_cast<std::size_t>(k)] = lineOf(scatter, fit, k);
    }
    for (int k = 0; k < fit.pieces; ++k) {
        const int first = fit.knots[static_cast<std::size_t>(k)];
        const int last = fit.knots[static_cast<std::size_t>(k) + 1];
        const FittedLine& line = lines[static_cast<std::size_t>(k)];
        const FittedLine& before = lines[static_cast<std::size_t>((k > 0 ? k : fit.pieces) - 1)];
        if (closed || k > 0) {
            corners.at[static_cast<std::size_t>(corners.count++)] =
                cornerOf(before, line, at(points, first), size);
        }
        corners.worst = std::max(corners.worst, worstDistance(points, line, first + 1, last - 1));
    }
    return corners;
}

}  // namespace Scrivo::beautifier
