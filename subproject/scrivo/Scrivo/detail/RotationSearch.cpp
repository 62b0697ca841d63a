#include "Scrivo/detail/RotationSearch.h"

#include "Scrivo/detail/PathNormalisation.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::detail {

namespace {

constexpr double NOT_COMPARABLE = std::numeric_limits<double>::quiet_NaN();

double lowerAngle(double a, double b, double ratio) {
    return ratio * a + (1.0 - ratio) * b;
}
double upperAngle(double a, double b, double ratio) {
    return (1.0 - ratio) * a + ratio * b;
}

/// Turns and measures in one pass: the turned path is never stored. `centre` is
/// the path's centroid, `points` has as many points as the path.
double distanceAbout(Stroke path, const Point2D& centre, Stroke points, double angle) {
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    double total = 0.0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Point2D turned = rotated(path[i], centre, cosine, sine);
        total += doubleDistance(turned, points[i]);
    }
    return total / static_cast<double>(path.size());
}

bool isComparable(Stroke path, Stroke points) {
    return !path.empty() && points.size() >= path.size();
}

double searchAbout(Stroke path, const Point2D& centre, Stroke points,
                   const RotationSearch& search) {
    const auto f = [&](double angle) { return distanceAbout(path, centre, points, angle); };
    SearchInterval interval = SearchInterval::first(search);
    double f1 = f(interval.x1);
    double f2 = f(interval.x2);
    while (interval.isOpen(search)) {
        if (f1 < f2) {
            interval = interval.left(search.goldenRatio);
            f2 = f1;
            f1 = f(interval.x1);
        } else {
            interval = interval.right(search.goldenRatio);
            f1 = f2;
            f2 = f(interval.x2);
        }
    }
    return std::min(f1, f2);
}

}  // namespace

SearchInterval SearchInterval::first(const RotationSearch& search) {
    const double a = -search.range;
    const double b = search.range;
    return {a, b, lowerAngle(a, b, search.goldenRatio), upperAngle(a, b, search.goldenRatio)};
}

bool SearchInterval::isOpen(const RotationSearch& search) const {
    return std::abs(b - a) > search.precision;
}

SearchInterval SearchInterval::left(double goldenRatio) const {
    return {a, x2, lowerAngle(a, x2, goldenRatio), x1};
}

SearchInterval SearchInterval::right(double goldenRatio) const {
    return {x1, b, x2, upperAngle(x1, b, goldenRatio)};
}

double pathDistance(Stroke a, Stroke b) {
    if (!isComparable(a, b)) {
        return NOT_COMPARABLE;
    }
    double total = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        total += doubleDistance(a[i], b[i]);
    }
    return total / static_cast<double>(a.size());
}

double distanceAtAngle(Stroke path, Stroke points, double angle) {
    return isComparable(path, points) ? distanceAbout(path, centroid(path), points, angle)
                                      : NOT_COMPARABLE;
}

double distanceAtBestAngle(Stroke path, Stroke points, const RotationSearch& search) {
    return isComparable(path, points) ? searchAbout(path, centroid(path), points, search)
                                      : NOT_COMPARABLE;
}

PlainMatching::PlainMatching(Stroke path, const RotationSearch& search)
    : m_path(path), m_centre(centroid(path)), m_search(search) {}

void PlainMatching::consider(Stroke points) {
    if (isComparable(m_path, points)) {
        const double distance = searchAbout(m_path, m_centre, points, m_search);
        if (distance < m_best.distance) {
            m_best = {m_next, distance};
        }
    }
    ++m_next;
}

Match matchPlainly(Stroke path, std::span<const GraphicTemplate> templates,
                   const RotationSearch& search) {
    PlainMatching matching(path, search);
    for (const GraphicTemplate& t : templates) {
        matching.consider(t.points);
    }
    return matching.best();
}

}  // namespace Scrivo::detail
