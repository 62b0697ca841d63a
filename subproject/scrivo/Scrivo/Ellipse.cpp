// Eigen sums products in blocks, whose length it would otherwise derive from the first-level
// cache that it asks the processor for: the last bits of ellipses of more than 504 points would
// depend on the machine.
#define EIGEN_NO_CPUID
#define EIGEN_DEFAULT_L1_CACHE_SIZE 49152

#include "Scrivo/Ellipse.h"

#include "Scrivo/detail/Dot.h"
#include "Scrivo/detail/EllipseShape.h"
#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/Sampling.h"

#include <Eigen/Eigenvalues>
#include <Eigen/LU>
#include <cmath>
#include <limits>
#include <vector>

namespace Scrivo {

namespace {

/// a x^2 + 2b xy + c y^2 + 2d x + 2f y + g = 0, all but the constant g. Reading
/// a coefficient that the vector does not have aborts, in release builds too.
struct Conic {
    double a, b, c, d, f;

    explicit Conic(const VectorXd& v) : a(v(0)), b(v(1) / 2), c(v(2)), d(v(3) / 2), f(v(4) / 2) {}
};

Point2D centre(const Conic& q) {
    const double num = q.b * q.b - q.a * q.c;
    return {(q.c * q.d - q.b * q.f) / num, (q.a * q.f - q.b * q.d) / num, 0.0};
}

/// Weisstein: Ellipse, MathWorld, equations 19 to 22.
Point2D axisLengths(const Conic& q, double g) {
    const double up = 2 * (q.a * (q.f * q.f) + q.c * (q.d * q.d) + g * (q.b * q.b) -
                           2 * q.b * q.d * q.f - q.a * q.c * g);
    const double difference = q.a - q.c;
    // In single precision on purpose: the radii decide whether the ellipse becomes a
    // circle, and that decision must not change between releases.
    const double s = std::sqrt(static_cast<float>(1 + 4 * (q.b * q.b) / (difference * difference)));
    const double num = q.b * q.b - q.a * q.c;
    const double down1 = num * ((q.c - q.a) * s - (q.c + q.a));
    const double down2 = num * ((q.a - q.c) * s - (q.c + q.a));
    return {std::sqrt(up / down1), std::sqrt(up / down2), 0.0};
}

VectorXd fit(const MatrixXd& x, const MatrixXd& y) {
    MatrixXd design(x.rows(), 6);
    design.col(0) = x.cwiseProduct(x);
    design.col(1) = x.cwiseProduct(y);
    design.col(2) = y.cwiseProduct(y);
    design.col(3) = x;
    design.col(4) = y;
    design.col(5).setOnes();
    const MatrixXd scatter = design.transpose() * design;

    MatrixXd constraint = MatrixXd::Zero(6, 6);
    constraint(0, 2) = 2.0;
    constraint(2, 0) = 2.0;
    constraint(1, 1) = -1.0;

    const MatrixXd inverse = scatter.inverse();
    const MatrixXd system = inverse * constraint;
    const Eigen::EigenSolver<MatrixXd> solver(system);
    if (solver.info() != Eigen::Success) {
        return VectorXd::Constant(6, std::numeric_limits<double>::quiet_NaN());
    }
    const auto& eigenvalues = solver.eigenvalues();
    Eigen::Index largest = 0;
    for (Eigen::Index i = 1; i < eigenvalues.size(); ++i) {
        if (std::abs(eigenvalues(i).real()) > std::abs(eigenvalues(largest).real())) {
            largest = i;
        }
    }
    return solver.eigenvectors().col(largest).real();
}

detail::EllipseShape fitShape(detail::Stroke stroke) {
    const auto n = static_cast<Eigen::Index>(stroke.size());
    MatrixXd x(n, 1);
    MatrixXd y(n, 1);
    for (Eigen::Index i = 0; i < n; ++i) {
        const Point2D& p = stroke[static_cast<std::size_t>(i)];
        x(i, 0) = p.x;
        y(i, 0) = p.y;
    }
    const VectorXd coefficients = fit(x, y);
    const Conic conic(coefficients);
    return {centre(conic), axisLengths(conic, coefficients(5)),
            ellipse_angle_of_rotation(coefficients)};
}

}  // namespace

VectorXd fitEllipse(MatrixXd x, MatrixXd y) {
    return fit(x, y);
}

Point2D ellipse_center(VectorXd coefficients) {
    return centre(Conic(coefficients));
}

Point2D ellipse_axis_length(VectorXd coefficients) {
    return axisLengths(Conic(coefficients), coefficients(5));
}

float ellipse_angle_of_rotation(VectorXd coefficients) {
    const double b = coefficients(1) / 2;
    return static_cast<float>(0.5 * std::atan(2 * b / (coefficients(0) - coefficients(2))));
}

Point2D ellipseAxis(double cx, double cy, double ra, double rb, double x, double /*unused*/) {
    /// Below this the abscissa is treated as an end of the ellipse.
    constexpr double END = 0.001;
    double u = 1 - (x - cx) * (x - cx) / (ra * ra);
    if (u < END) {
        u = 0.0;
    }
    const double s = std::sqrt(u) * rb;
    return {cy + s, cy - s, 0.0};
}

Point2D rotation(Point2D p, Point2D c, double angle) {
    return detail::rotatedCounterClockwise(p, c, angle);
}

bool isPoint(std::vector<Point2D> stroke) {
    return detail::isPoint(stroke);
}

std::int64_t reDrawPoint(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawPoint(out, stroke);
}

std::int64_t reDrawEllipse(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                           std::int32_t /*width*/, std::int32_t /*height*/) {
    const detail::EllipseShape shape = fitShape(stroke);
    if (!detail::isComplete(shape)) {
        return 0;
    }
    detail::appendEllipse(out, detail::levelled(detail::rounded(shape)));
    return detail::sizeOf(out);
}

}  // namespace Scrivo
