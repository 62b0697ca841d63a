#pragma once

#include "Input.h"
#include "Matchers.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <stdexcept>

/// What holds for every answer.
namespace Scrivo::test::fuzz {

inline void require(bool holds, const char* promise) {
    if (!holds) {
        throw std::logic_error(promise);
    }
}

inline bool isFinite(const Stroke& stroke) {
    return std::all_of(stroke.begin(), stroke.end(),
                       [](const Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

inline bool areSame(const Stroke& a, const Stroke& b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](const Point2D& p, const Point2D& q) {
            return sameBits(p.x, q.x) && sameBits(p.y, q.y) && sameBits(p.force, q.force);
        });
}

/// The shipped template files.
std::vector<std::string> templateFiles();

/// What a function returns when another thread calls it.
template <typename F>
auto onAnotherThread(F function) {
    return std::async(std::launch::async, function).get();
}

/// Whether a path has as many points as the figure of a code is drawn with.
inline bool isDrawn(const Stroke& path, std::int32_t type) {
    switch (type) {
        case FIGURE_POINT:
            return path.size() == 64;
        case FIGURE_LINE:
            return path.size() == 21;
        case FIGURE_ANGLE:
            return path.size() == 42;
        case FIGURE_POLYGON:
            return path.size() >= 63 && path.size() % 21 == 0;
        case FIGURE_ELLIPSE:
            return path.size() == 85;
        default:
            return false;
    }
}

}  // namespace Scrivo::test::fuzz
