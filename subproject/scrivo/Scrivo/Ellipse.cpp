#include "Scrivo/Ellipse.h"

#include "Scrivo/detail/Ellipse.h"

#include <Eigen/Eigenvalues>
#include <Eigen/LU>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace Scrivo {

namespace {

constexpr double PI = std::numbers::pi;
static_assert(PI == 3.141592653589793);

/// Segments of an ellipse's outline.
constexpr int OUTLINE_SEGMENTS = 84;
/// Radii whose ratio lies strictly between these become a circle.
constexpr double CIRCLE_RATIO_MIN = 0.8;
constexpr double CIRCLE_RATIO_MAX = 1.25;
/// Radians below which a rotation becomes 0.
constexpr double LEVEL_ANGLE = 0.26;

/// A stroke of more points is a dot whatever its pressure.
constexpr std::size_t DOT_POINTS_MAX = 25;
/// A stroke of fewer points never is.
constexpr std::size_t DOT_POINTS_MIN = 9;
/// Mean pressure that a dot in between exceeds.
constexpr double DOT_FORCE = 0.65;
/// Segments of a dot's ring, and the rings' radii in drawing-area units.
constexpr int RING_SEGMENTS = 20;
constexpr double RING_RADII[] = {2.5, 1.5, 0.5};

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
    // In single precision on purpose: the radii decide the snap to a circle,
    // and a figure must not change sides of that bound between releases.
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

using detail::EllipseShape;

bool isComplete(const EllipseShape& e) {
    return !std::isnan(e.centre.x) && !std::isnan(e.centre.y) && !std::isnan(e.radii.x) &&
           !std::isnan(e.radii.y) && !std::isnan(e.angle);
}

EllipseShape fitShape(detail::Stroke stroke) {
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

void appendRing(std::vector<Point2D>& out, const Point2D& centre, double radius) {
    for (int i = 0; i <= RING_SEGMENTS; ++i) {
        const double a = (i % RING_SEGMENTS) * PI * 2 / RING_SEGMENTS;
        out.push_back({centre.x + radius * std::cos(a), centre.y + radius * std::sin(a), 0.0});
    }
}

}  // namespace

namespace detail {

EllipseShape rounded(EllipseShape e) {
    const double ratio = e.radii.x / e.radii.y;
    if (ratio > CIRCLE_RATIO_MIN && ratio < CIRCLE_RATIO_MAX) {
        e.radii.x = e.radii.y = (e.radii.x + e.radii.y) / 2;
    }
    return e;
}

EllipseShape levelled(EllipseShape e) {
    if (std::abs(e.angle) < LEVEL_ANGLE) {
        e.angle = 0.0;
    }
    return e;
}

void appendEllipse(std::vector<Point2D>& out, const EllipseShape& e) {
    for (int i = 0; i <= OUTLINE_SEGMENTS; ++i) {
        // The last point takes the first one's parameter and closes the outline.
        const double t = (i % OUTLINE_SEGMENTS) / static_cast<double>(OUTLINE_SEGMENTS);
        const double phi = (t + t) * PI;
        const Point2D p{e.centre.x + e.radii.x * std::cos(phi),
                        e.centre.y + e.radii.y * std::sin(phi), 0.0};
        out.push_back(rotation(p, e.centre, e.angle));
    }
}

bool isPoint(Stroke stroke) {
    const std::size_t n = stroke.size();
    if (n > DOT_POINTS_MAX) {
        return true;
    }
    if (n < DOT_POINTS_MIN) {
        return false;
    }
    double sum = 0.0;
    for (const Point2D& p : stroke) {
        if (p.force > 0.0) {
            sum += p.force;
        }
    }
    return sum / static_cast<double>(n) > DOT_FORCE;
}

std::int64_t reDrawPoint(std::vector<Point2D>& out, Stroke stroke) {
    Point2D sum;
    for (const Point2D& p : stroke) {
        sum.x += p.x;
        sum.y += p.y;
    }
    const auto n = static_cast<double>(stroke.size());
    const Point2D centre{sum.x / n, sum.y / n, 0.0};
    for (const double radius : RING_RADII) {
        appendRing(out, centre, radius);
    }
    out.push_back(centre);
    return static_cast<std::int64_t>(out.size());
}

std::int64_t reDrawEllipse(std::vector<Point2D>& out, Stroke stroke, std::int32_t /*width*/,
                           std::int32_t /*height*/) {
    const EllipseShape shape = fitShape(stroke);
    if (!isComplete(shape)) {
        return 0;
    }
    appendEllipse(out, levelled(rounded(shape)));
    return static_cast<std::int64_t>(out.size());
}

}  // namespace detail

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
    /// Below this the abscissa counts as an end of the ellipse.
    constexpr double END = 0.001;
    double u = 1 - (x - cx) * (x - cx) / (ra * ra);
    if (u < END) {
        u = 0.0;
    }
    const double s = std::sqrt(u) * rb;
    return {cy + s, cy - s, 0.0};
}

Point2D rotation(Point2D p, Point2D c, double angle) {
    const double dx = p.x - c.x;
    const double dy = p.y - c.y;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return {c.x + dx * cosine - dy * sine, c.y + dx * sine + dy * cosine, 0.0};
}

bool isPoint(std::vector<Point2D> stroke) {
    return detail::isPoint(stroke);
}

std::int64_t reDrawPoint(std::vector<Point2D>& out, std::vector<Point2D> stroke) {
    return detail::reDrawPoint(out, stroke);
}

std::int64_t reDrawEllipse(std::vector<Point2D>& out, std::vector<Point2D> stroke,
                           std::int32_t width, std::int32_t height) {
    return detail::reDrawEllipse(out, stroke, width, height);
}

}  // namespace Scrivo
