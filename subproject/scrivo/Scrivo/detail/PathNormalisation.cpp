#include "Scrivo/detail/PathNormalisation.h"

#include "Common/Failure.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace Scrivo::detail {

namespace {

/// Points that memory is reserved for: how many there will be is not certain.
constexpr std::int32_t MAX_RESERVED = 1024;

template <typename Map>
std::vector<Point2D> mapped(Stroke path, Map map) {
    std::vector<Point2D> out(path.size());
    std::transform(path.begin(), path.end(), out.begin(), map);
    return out;
}

/// Whether a walk that has placed a point will end. It will not when the point
/// rounds to the one before it, nor when a negative step (`n` below 1) leads
/// away from the next point.
bool makesProgress(double step, const Point2D& from, const Point2D& placed) {
    const bool away = step < 0.0 && std::isfinite(placed.x) && std::isfinite(placed.y);
    return !away && !(from.x == placed.x && from.y == placed.y);
}

/// Places a point after every `step` of path length. A placed point becomes the
/// start of the rest of its segment, so distances are measured from the rounded
/// point, not from the segment's own start. False when the walk would not end.
bool walk(std::vector<Point2D>& out, Stroke path, double step) {
    Point2D from = path.front();
    double walked = 0.0;
    for (std::size_t next = 1; next < path.size();) {
        const Point2D& to = path[next];
        const double d = doubleDistance(from, to);
        if (walked + d >= step) {
            const double part = (step - walked) / d;
            const Point2D placed{from.x + part * (to.x - from.x), from.y + part * (to.y - from.y),
                                 0.0};
            if (walked == 0.0 && !makesProgress(step, from, placed)) {
                return false;
            }
            out.push_back(placed);
            from = placed;
            walked = 0.0;
        } else {
            walked += d;
            from = to;
            ++next;
        }
    }
    return true;
}

/// What `result` holds; throws for nothing.
std::vector<Point2D> require(std::optional<std::vector<Point2D>> result) {
    if (!result) {
        raise<std::domain_error>(UNRESAMPLED);
    }
    return std::move(*result);
}

}  // namespace

Point2D centroid(Stroke path) {
    double x = 0.0;
    double y = 0.0;
    for (const Point2D& p : path) {
        x += p.x;
        y += p.y;
    }
    const auto n = static_cast<double>(path.size());
    return {x / n, y / n, 0.0};
}

Rect2D boundingBox(Stroke path) {
    constexpr double MAX_DOUBLE = std::numeric_limits<double>::max();
    double minX = MAX_DOUBLE;
    double minY = MAX_DOUBLE;
    double maxX = -MAX_DOUBLE;
    double maxY = -MAX_DOUBLE;
    for (const Point2D& p : path) {
        minX = std::min(minX, p.x);
        minY = std::min(minY, p.y);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
    }
    return {minX, minY, maxX - minX, maxY - minY};
}

std::optional<std::vector<Point2D>> tryResample(Stroke path, std::int32_t n) {
    std::vector<Point2D> out;
    if (path.empty()) {
        return out;
    }
    const std::int64_t intervals = static_cast<std::int64_t>(n) - 1;
    out.reserve(static_cast<std::size_t>(std::clamp(n, 0, MAX_RESERVED)));
    out.push_back(path.front());
    if (!walk(out, path, doubleLength(path) / static_cast<double>(intervals))) {
        return std::nullopt;
    }
    if (static_cast<std::int64_t>(out.size()) == intervals) {
        out.push_back(path.back());
    }
    return out;
}

std::vector<Point2D> resample(Stroke path, std::int32_t n) {
    return require(tryResample(path, n));
}

std::vector<Point2D> rotateBy(Stroke path, double angle) {
    const Point2D c = centroid(path);
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return mapped(path, [&](const Point2D& p) { return rotated(p, c, cosine, sine); });
}

std::vector<Point2D> rotateToZero(Stroke path) {
    if (path.empty()) {
        return {};
    }
    const Point2D c = centroid(path);
    return rotateBy(path, -std::atan2(c.y - path.front().y, c.x - path.front().x));
}

std::vector<Point2D> scaleToSquare(Stroke path, double side) {
    const Rect2D box = boundingBox(path);
    return mapped(path, [&](const Point2D& p) {
        return Point2D{p.x * (side / box.width), p.y * (side / box.height), 0.0};
    });
}

std::vector<Point2D> translateToOrigin(Stroke path) {
    const Point2D c = centroid(path);
    return mapped(path, [&](const Point2D& p) { return Point2D{p.x - c.x, p.y - c.y, 0.0}; });
}

std::optional<std::vector<Point2D>> tryNormalisePath(Stroke path, const NormalForm& form) {
    auto out = tryResample(path, form.numPoints);
    if (!out) {
        return std::nullopt;
    }
    if (form.rotationInvariant) {
        out = rotateToZero(*out);
    }
    return translateToOrigin(scaleToSquare(*out, static_cast<double>(form.squareSize)));
}

std::vector<Point2D> normalisePath(Stroke path, const NormalForm& form) {
    return require(tryNormalisePath(path, form));
}

}  // namespace Scrivo::detail
