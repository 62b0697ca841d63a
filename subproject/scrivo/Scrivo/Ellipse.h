/// @file
/// Ellipses (direct least-squares conic fit) and dots: fits and redraws.
#pragma once

#include "Scrivo/Types.h"

#include <cstdint>
#include <vector>

// The matrix types are only declared here, so that users of the library need no
// Eigen headers. Include <Eigen/Core> to call the functions that take them.
namespace Eigen {
template <typename Scalar, int Rows, int Cols, int Options, int MaxRows, int MaxCols>
class Matrix;
}  // namespace Eigen

namespace Scrivo {

/// `Eigen::MatrixXd`: dense, of any size.
using MatrixXd = Eigen::Matrix<double, -1, -1, 0, -1, -1>;
/// `Eigen::VectorXd`: a column of any length.
using VectorXd = Eigen::Matrix<double, -1, 1, 0, -1, 1>;

/// Fits a conic a0 x^2 + a1 xy + a2 y^2 + a3 x + a4 y + a5 = 0 under the
/// constraint 4 a0 a2 - a1^2 = 1 (Fitzgibbon, Pilu, Fisher: Direct least square
/// fitting of ellipses, 1999). `x` and `y` are n-by-1. Returns the 6
/// coefficients, of arbitrary scale and sign; NaN when the points determine no
/// conic.
VectorXd fitEllipse(MatrixXd x, MatrixXd y);

/// Centre of the conic of these 6 coefficients, where its gradient vanishes
/// (Weisstein: Ellipse, MathWorld, equations 19 and 20). Not finite for a
/// parabola. Aborts on a vector of fewer than 5 coefficients.
Point2D ellipse_center(VectorXd coefficients);

/// Semi-axis lengths as (x, y) (Weisstein: Ellipse, MathWorld, equations 21 and
/// 22); NaN when the conic is no ellipse, and for an exact circle (a0 = a2,
/// a1 = 0). One square root is taken in single precision. Aborts on a vector of
/// fewer than 6 coefficients.
Point2D ellipse_axis_length(VectorXd coefficients);

/// Angle of the first axis in radians, atan(a1 / (a0 - a2)) / 2, within
/// [-pi/4, pi/4]; NaN for an exact circle. Aborts on a vector of fewer than 3
/// coefficients.
float ellipse_angle_of_rotation(VectorXd coefficients);

/// The two ordinates (upper sum, lower difference) at abscissa `x` of the
/// axis-parallel ellipse about (`cx`, `cy`) with radii `ra` and `rb`. Where
/// 1 - (x - cx)^2 / ra^2 is below 0.001, at its ends and beyond, both are `cy`.
/// The last argument is ignored.
Point2D ellipseAxis(double cx, double cy, double ra, double rb, double x, double unused);

/// `p` turned about `c` by `angle` radians, counter-clockwise with y up.
Point2D rotation(Point2D p, Point2D c, double angle);

/// Replaces a stroke by its best ellipse: 85 points, the last one equal to the
/// first, force 0. Radii whose ratio lies strictly between 0.8 and 1.25 become
/// equal, a rotation strictly below 0.26 radians becomes 0. Appends to `out`
/// and returns out.size(); returns 0 and appends nothing when the fit fails.
/// The two integers are ignored.
std::int64_t reDrawEllipse(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                           std::int32_t width, std::int32_t height);

/// Whether a small stroke is a dot: more than 25 points, or at least 9 points
/// with a mean force strictly above 0.65 (only positive forces are summed, all
/// points are counted).
bool isPoint(std::vector<Point2D> stroke);

/// Appends a dot at the stroke's centroid: closed rings of 21 points with radii
/// 2.5, 1.5 and 0.5 drawing-area units, then the centroid; 64 points of force 0
/// (all NaN for an empty stroke). Returns out.size().
std::int64_t reDrawPoint(std::vector<Point2D>& out, std::vector<Point2D> stroke);

}  // namespace Scrivo
