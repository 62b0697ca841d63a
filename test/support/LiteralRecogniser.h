#pragma once

#include "Scrivo/ScrivoUtil.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <stdexcept>
#include <vector>

/// A straightforward implementation of the recogniser: every step works on a copy of
/// the path, every template is searched in full. Independent of the library; tests
/// compare answers with it, the benchmark compares speed.
namespace Scrivo::test::literal {

using Path = std::vector<Point2D>;

inline double getDistance(Point2D a, Point2D b) {
    return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

inline double pathLength(Path path) {
    double length = 0.0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        length += getDistance(path[i - 1], path[i]);
    }
    return length;
}

/// Quadratic. Throws std::length_error after `maxPoints` points, where the loop would
/// not end.
inline Path resampleByCnt(Path path, int n, std::size_t maxPoints = 5000) {
    Path result{path[0]};
    if (path.size() >= 2) {
        const double step = pathLength(path) / static_cast<double>(n - 1);
        double walked = 0.0;
        for (std::size_t i = 1; i < path.size(); ++i) {
            const double d = getDistance(path[i - 1], path[i]);
            if (walked + d >= step) {
                Point2D q;
                q.x = path[i - 1].x + ((step - walked) / d) * (path[i].x - path[i - 1].x);
                q.y = path[i - 1].y + ((step - walked) / d) * (path[i].y - path[i - 1].y);
                result.push_back(q);
                path.insert(path.begin() + static_cast<std::ptrdiff_t>(i), q);
                walked = 0.0;
                if (result.size() > maxPoints) {
                    throw std::length_error("endless");
                }
            } else {
                walked = walked + d;
            }
        }
    }
    if (static_cast<int>(result.size()) == n - 1) {
        result.push_back(path.back());
    }
    return result;
}

inline Point2D centroid(Path path) {
    double x = 0.0;
    double y = 0.0;
    for (const Point2D p : path) {
        x += p.x;
        y += p.y;
    }
    return {x / static_cast<double>(path.size()), y / static_cast<double>(path.size()), 0.0};
}

inline Path rotateBy(Path path, double angle) {
    const Point2D c = centroid(path);
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    Path result;
    result.reserve(path.size());
    for (const Point2D p : path) {
        result.push_back({(p.x - c.x) * cosine - (p.y - c.y) * sine + c.x,
                          (p.x - c.x) * sine + (p.y - c.y) * cosine + c.y, 0.0});
    }
    return result;
}

inline Path normalizePath(Path path, const TemplatesGraphicsRecognizer& settings) {
    path = resampleByCnt(path, settings.numPoints);
    if (settings.rotationInvariant) {
        const Point2D c = centroid(path);
        path = rotateBy(path, -std::atan2(c.y - path[0].y, c.x - path[0].x));
    }
    constexpr double MAX_DOUBLE = std::numeric_limits<double>::max();
    Point2D low{MAX_DOUBLE, MAX_DOUBLE, 0.0};
    Point2D high{-MAX_DOUBLE, -MAX_DOUBLE, 0.0};
    for (const Point2D p : path) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), 0.0};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), 0.0};
    }
    for (Point2D& p : path) {
        p = {p.x * (settings.squareSize / (high.x - low.x)),
             p.y * (settings.squareSize / (high.y - low.y)), 0.0};
    }
    const Point2D c = centroid(path);
    for (Point2D& p : path) {
        p = {p.x - c.x, p.y - c.y, 0.0};
    }
    return path;
}

inline double pathDistance(Path a, Path b) {
    if (b.size() < a.size()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += getDistance(a[i], b[i]);
    }
    return sum / static_cast<double>(a.size());
}

inline double distanceAtAngle(Path path, GraphicTemplate t, double angle) {
    return pathDistance(rotateBy(path, angle), t.points);
}

inline double distanceAtBestAngle(Path path, GraphicTemplate t,
                                  const TemplatesGraphicsRecognizer& settings) {
    const double ratio = settings.goldenRatio;
    double a = -settings.angleRange;
    double b = settings.angleRange;
    double x1 = ratio * a + (1.0 - ratio) * b;
    double f1 = distanceAtAngle(path, t, x1);
    double x2 = (1.0 - ratio) * a + ratio * b;
    double f2 = distanceAtAngle(path, t, x2);
    while (std::abs(b - a) > settings.anglePrecision) {
        if (f1 < f2) {
            b = x2;
            x2 = x1;
            f2 = f1;
            x1 = ratio * a + (1.0 - ratio) * b;
            f1 = distanceAtAngle(path, t, x1);
        } else {
            a = x1;
            x1 = x2;
            f1 = f2;
            x2 = (1.0 - ratio) * a + ratio * b;
            f2 = distanceAtAngle(path, t, x2);
        }
    }
    return std::min(f1, f2);
}

inline float floatDistance(Point2D a, Point2D b) {
    return static_cast<float>(::distance(a, b));
}

/// The index of the corner in the span before point `i`, or -1.
inline int cornerBefore(const Path& p, int i) {
    const auto at = [&](int k) { return p[static_cast<std::size_t>(k)]; };
    const float base = floatDistance(at(i - 10), at(i - 1));
    float largest = 0.0F;
    int chosen = -1;
    for (int j = i - 9; j <= i - 2; ++j) {
        const float value =
            (floatDistance(at(i - 10), at(j)) + floatDistance(at(j), at(i - 1))) / base;
        if (value > largest) {
            largest = value;
            chosen = j;
        }
    }
    const int n = static_cast<int>(p.size());
    return chosen < 5 || n < chosen + 5 ? -1 : chosen;
}

inline std::vector<int> getAnglesFromPath(Path p) {
    const int n = static_cast<int>(p.size());
    if (n < 10) {
        return {0, n - 1};
    }
    const auto segment = [&](int j) {
        return floatDistance(p[static_cast<std::size_t>(j - 1)], p[static_cast<std::size_t>(j)]);
    };
    std::vector<int> corners{0};
    float length = 0.0F;
    for (int j = 1; j <= 9; ++j) {
        length = length + segment(j);
    }
    float previous = 1.0F;
    for (int i = 10; i < n; ++i) {
        if (i + 5 > n) {
            corners.push_back(n - 1);
            return corners;
        }
        length = length + segment(i);
        length = length - segment(i - 9);
        const float ratio =
            floatDistance(p[static_cast<std::size_t>(i - 9)], p[static_cast<std::size_t>(i)]) /
            length;
        if (!(previous < 0.95 && ratio >= previous)) {
            previous = ratio;
            continue;
        }
        previous = 1.0F;
        const int corner = cornerBefore(p, i);
        if (corner == -1) {
            continue;
        }
        corners.push_back(corner);
        length = 0.0F;
        int j = i - 1;
        for (; j <= i + 7 && j < n; ++j) {
            length = length + segment(j);
        }
        if (j == n) {
            corners.push_back(n - 1);
            return corners;
        }
        i += 7;
    }
    return corners;
}

inline double shareOfStraightPieces(Path stroke, std::vector<int> corners) {
    int count = 0;
    for (std::size_t k = 0; k + 1 < corners.size(); ++k) {
        if (isSimpleLine(Path(stroke.begin() + corners[k], stroke.begin() + corners[k + 1] + 1))) {
            ++count;
        }
    }
    return static_cast<double>(count) / static_cast<double>(corners.size() - 1);
}

inline RecognitionResult recognize(const TemplatesGraphicsRecognizer& r, Path stroke) {
    if (stroke.size() < 2) {
        return {0, "Unknown", -1.0};
    }
    const double length = pathLength(stroke);
    if (length == 0.0 || getDistance(stroke.back(), stroke.front()) / length > 0.15) {
        return {0, "Unknown", -1.0};
    }
    const std::vector<int> corners = getAnglesFromPath(stroke);
    const auto c = corners.size();
    std::span<const GraphicTemplate> candidates(r.allTemplates.begin(), r.allTemplates.end());
    double weight = 1.0;
    double share = 1.0;
    if (c >= 3) {
        share = shareOfStraightPieces(stroke, corners);
        if (share > 0.5) {
            candidates = {r.polygonTemplates.begin(), r.polygonTemplates.end()};
            weight = c < 9 ? 1.0 : 0.0;
        } else {
            candidates = {r.ellipseTemplates.begin(), r.ellipseTemplates.end()};
            weight = c < 8 ? 1.0 : 0.0;
            share = 1.0 - share;
        }
    }
    if (candidates.empty()) {
        return {0, "Unknown", -1.0};
    }
    const Path path = normalizePath(stroke, r);
    double best = std::numeric_limits<double>::max();
    int bestIndex = -1;
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        const double d = distanceAtBestAngle(path, candidates[k], r);
        if (d < best) {
            best = d;
            bestIndex = static_cast<int>(k);
        }
    }
    const double score = 1.0 - best / r.halfDiagonal;
    const double value = share < 0.66 || score < 0.83 ? share * score : score;
    const double result = weight * value;
    if (bestIndex == -1 || 0.8 > result) {
        return {0, "Unknown", result};
    }
    const GraphicTemplate& winner = candidates[static_cast<std::size_t>(bestIndex)];
    return {winner.id, winner.name, result};
}

}  // namespace Scrivo::test::literal
