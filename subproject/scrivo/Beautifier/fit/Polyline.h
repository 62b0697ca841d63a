#pragma once

#include "Beautifier/ink/Resampling.h"

#include <array>
#include <span>

/// Best open polylines and closed polygons through an even outline.
namespace Scrivo::beautifier {

inline constexpr int MAX_PIECES = 6;
inline constexpr int LOOP = COARSE - 1;  ///< points of a loop

/// Total-least-squares line through a run of points.
struct FittedLine {
    Vec centre;
    Vec along;  ///< unit vector of the larger variance
};

/// Range of points along an axis: from `low` behind its origin to `high`.
struct Reach {
    double low = 0.0;
    double high = 0.0;
};

Reach reachOf(std::span<const Vec> points, Vec origin, Vec along);

/// Sums of coordinates and their products up to every point: the scatter of any
/// run of points in constant time. Indices of a run may go once around.
class Scatter {
public:
    Scatter() = default;
    explicit Scatter(const Coarse& points);

    /// As many runs are measured at once, by vector instructions.
    static constexpr int RUNS = 8;

    /// Sum of the squared distances of the points `first` to `last` from their line.
    double squares(int first, int last) const;
    /// The same for each of the last points `last` to `last` + `RUNS` - 1. Those of runs
    /// that are longer than once around are meaningless.
    std::array<double, RUNS> squaresOfRuns(int first, int last) const;
    FittedLine line(int first, int last) const;

private:
    // The rest is for runs that are measured in vain.
    using Sums = std::array<double, COARSE + LOOP + 1 + RUNS>;

    struct Central {
        double x, y, xx, xy, yy;
        /// The smaller eigenvalue of the scatter matrix.
        double smaller() const;
    };
    Central central(int first, int last) const;

    Sums m_x{}, m_y{}, m_xx{}, m_xy{}, m_yy{};
};

/// The polyline of `pieces` straight pieces that has the smallest sum of squared
/// distances of the points from the lines of their pieces.
struct PolylineFit {
    int pieces = 0;
    /// First and last point of each piece; beyond `LOOP` for a piece that goes
    /// through the start of a loop.
    std::array<int, MAX_PIECES + 1> knots{};
    double rms = 0.0;  ///< root of the mean square
};

using PolylineFits = std::array<PolylineFit, MAX_PIECES>;  ///< of 1, 2, ... pieces

/// Open polylines of 1 to `maxPieces` pieces by dynamic programming (Bellman,
/// Roth: Curve fitting by segmented straight lines, 1969).
PolylineFits fitPolylines(const Scatter& scatter, int maxPieces);

/// Closed polygons of 3 to 6 corners through a loop that starts at a likely
/// corner; there are none of 1 and 2. The search is repeated from a corner of its
/// result, and the better result of the two is returned.
PolylineFits fitPolygons(const Scatter& scatter);

}  // namespace Scrivo::beautifier
