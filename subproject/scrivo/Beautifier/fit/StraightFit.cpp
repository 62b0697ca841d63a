#include "Beautifier/fit/StraightFit.h"

#include "Beautifier/fit/Corners.h"
#include "Beautifier/fit/Retrace.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

namespace {

constexpr int REWEIGHTINGS = 2;

// Scale of the Cauchy weights, share of the size: points further from the line have
// less than half of the weight.
constexpr double STRAY = 0.01;

/// Total least squares line through weighted points.
FittedLine throughWeighted(std::span<const Vec> points, std::span<const double> weights) {
    double n = 0.0;
    Vec sum;
    for (std::size_t i = 0; i < points.size(); ++i) {
        n += weights[i];
        sum = sum + weights[i] * points[i];
    }
    const Vec mean = (1.0 / n) * sum;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vec d = points[i] - mean;
        xx += weights[i] * d.x * d.x;
        xy += weights[i] * d.x * d.y;
        yy += weights[i] * d.y * d.y;
    }
    const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
    return {mean, {std::cos(angle), std::sin(angle)}};
}

/// The line that most of the points lie along (Cauchy weights).
FittedLine robustLine(std::span<const Vec> points, double size) {
    std::array<double, FINE> weights;
    weights.fill(1.0);
    FittedLine line;
    for (int k = 0; k <= REWEIGHTINGS; ++k) {
        line = throughWeighted(points, {weights.data(), points.size()});
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double off = cross(line.along, points[i] - line.centre) / (STRAY * size);
            weights[i] = 1.0 / (1.0 + off * off);
        }
    }
    return line;
}

Vec foot(const FittedLine& line, Vec p) {
    return line.centre + dot(p - line.centre, line.along) * line.along;
}

/// The foot of the point that lies furthest along `direction`.
Vec outermost(std::span<const Vec> points, const FittedLine& line, Vec direction) {
    const Vec far = *std::max_element(points.begin(), points.end(), [&](Vec a, Vec b) {
        return dot(a, direction) < dot(b, direction);
    });
    return foot(line, far);
}

}  // namespace

Segment fitSegment(const Evidence& evidence) {
    const std::span<const Vec> points(evidence.fine);
    const FittedLine line = robustLine(points, evidence.size);
    const Vec ends[] = {outermost(points, line, -1.0 * line.along),
                        outermost(points, line, line.along)};
    const bool swapped = norm(points.front() - ends[1]) < norm(points.front() - ends[0]);
    return {ends[swapped ? 1 : 0], ends[swapped ? 0 : 1]};
}

LegsFit fitLegs(const Evidence& evidence) {
    const Part part = withoutRetrace(evidence.fine);
    const bool isWhole = part.first == 0 && part.last == FINE - 1;
    const Coarse points =
        isWhole ? evidence.points : resample(evidence.fine, part.first, part.last, {});
    const auto knot = static_cast<std::size_t>(
        isWhole ? evidence.polylines[1].knots[1] : fitPolylines(Scatter(points), 2)[1].knots[1]);
    // The bend itself is rounded off and belongs to neither leg.
    const std::size_t margin = std::min({std::size_t{2}, knot / 4, (COARSE - 1 - knot) / 4});
    const std::span<const Vec> all(points);
    const auto first = all.first(knot - margin + 1);
    const auto second = all.subspan(knot + margin);
    const FittedLine a = robustLine(first, evidence.size);
    const FittedLine b = robustLine(second, evidence.size);
    const Vec vertex = cornerOf(a, b, points[knot], evidence.size);
    const Vec back = points.front() - vertex;
    const Vec on = points.back() - vertex;
    return {outermost(first, a, back), vertex, outermost(second, b, on)};
}

}  // namespace Scrivo::beautifier
