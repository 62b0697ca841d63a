#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/detail/Geometry.h"

#include <cstdint>
#include <limits>
#include <span>

/// Compares a path with templates over the rotation, one template after the
/// other: the reference implementation, which defines every answer.
namespace Scrivo::detail {

/// A golden-section search (Kiefer: Sequential minimax search for a maximum,
/// 1953) over [-range, range], until the interval is no wider than `precision`;
/// both in radians.
struct RotationSearch {
    double range = 0.0;
    double precision = 0.0;
    double goldenRatio = 0.0;

    bool operator==(const RotationSearch&) const = default;
};

/// One interval of the search with its two inner angles.
struct SearchInterval {
    double a;
    double b;
    double x1;
    double x2;

    static SearchInterval first(const RotationSearch& search);
    [[nodiscard]] bool isOpen(const RotationSearch& search) const;
    /// [a, x2], where x2 becomes the old x1.
    [[nodiscard]] SearchInterval left(double goldenRatio) const;
    /// [x1, b], where x1 becomes the old x2.
    [[nodiscard]] SearchInterval right(double goldenRatio) const;
};

/// The template of the smallest distance, or -1 when none has a distance below
/// the largest double.
struct Match {
    std::int64_t index = -1;
    double distance = std::numeric_limits<double>::max();
};

/// Mean distance of points of the same index; NaN when `a` is empty or `b` has
/// fewer points. Further points of `b` are ignored.
double pathDistance(Stroke a, Stroke b);

/// The distance of `points` to `path` turned about its centroid by `angle`.
double distanceAtAngle(Stroke path, Stroke points, double angle);

/// The smallest distance that the search meets. The interval must shrink below
/// the precision: with a ratio outside (0, 1) or a precision of 0 the search
/// need not end.
double distanceAtBestAngle(Stroke path, Stroke points, const RotationSearch& search);

/// Compares one path with a list of templates, one after the other.
class PlainMatching {
public:
    PlainMatching(Stroke path, const RotationSearch& search);

    /// Compares the path with the next template of the list.
    void consider(Stroke points);

    /// The first of the templates at the smallest distance. NaN never wins.
    [[nodiscard]] const Match& best() const { return m_best; }

private:
    Stroke m_path;
    Point2D m_centre;
    RotationSearch m_search;
    std::int64_t m_next = 0;
    Match m_best;
};

/// The match among `templates`.
Match matchPlainly(Stroke path, std::span<const GraphicTemplate> templates,
                   const RotationSearch& search);

}  // namespace Scrivo::detail
