#include "Beautifier/fit/EllipseFit.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <utility>

namespace Scrivo::beautifier {

namespace {

constexpr int ELLIPSE_STEPS = 3;
constexpr std::size_t UNKNOWNS = 5;
constexpr double MIN_RADIUS = 0.01;  // of a figure whose longer side is 1

using Row = std::array<double, UNKNOWNS>;
using NormalMatrix = std::array<std::array<double, UNKNOWNS + 1>, UNKNOWNS>;

/// Area moments of the polygon through the points (Green's theorem).
EllipseFit fromMoments(const Coarse& loop) {
    double area = 0.0;
    Vec first;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Vec p = loop[i];
        const Vec q = loop[(i + 1) % loop.size()];
        const double c = cross(p, q);
        area += c / 2.0;
        first = first + (c / 6.0) * (p + q);
        xx += c / 12.0 * (p.x * p.x + p.x * q.x + q.x * q.x);
        yy += c / 12.0 * (p.y * p.y + p.y * q.y + q.y * q.y);
        xy += c / 24.0 * (2.0 * p.x * p.y + p.x * q.y + q.x * p.y + 2.0 * q.x * q.y);
    }
    EllipseFit fit;
    if (std::abs(area) < MIN_RADIUS * MIN_RADIUS) {
        return fit;
    }
    fit.centre = (1.0 / area) * first;
    xx = xx / area - fit.centre.x * fit.centre.x;
    xy = xy / area - fit.centre.x * fit.centre.y;
    yy = yy / area - fit.centre.y * fit.centre.y;
    const double mean = 0.5 * (xx + yy);
    // Not std::hypot, which would make the library require a glibc of 2022.
    const double half = 0.5 * (xx - yy);
    const double spread = std::sqrt(half * half + xy * xy);
    fit.found = mean > spread;  // self-crossing curves may enclose negative area
    fit.a = std::max(2.0 * std::sqrt(std::max(mean + spread, 0.0)), MIN_RADIUS);
    fit.b = std::max(2.0 * std::sqrt(std::max(mean - spread, 0.0)), MIN_RADIUS);
    fit.angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
    return fit;
}

/// First-order distance of a point from the ellipse (positive outside) and its
/// derivatives by centre x, centre y, a, b, angle.
double residual(const EllipseFit& fit, Vec p, double c, double s, Row* derivatives) {
    const Vec d = p - fit.centre;
    const Vec u{c * d.x + s * d.y, -s * d.x + c * d.y};
    const Vec g{u.x / (fit.a * fit.a), u.y / (fit.b * fit.b)};  // half the gradient
    const double value = u.x * g.x + u.y * g.y - 1.0;
    const double slope = std::max(2.0 * norm(g), 1e-9);
    if (derivatives != nullptr) {
        const double k = 2.0 / slope;
        *derivatives = {-k * (c * g.x - s * g.y), -k * (s * g.x + c * g.y), -k * u.x * g.x / fit.a,
                        -k * u.y * g.y / fit.b, k * (g.x * u.y - g.y * u.x)};
    }
    return value / slope;
}

/// Gaussian elimination with partial pivoting; false when singular.
bool solve(NormalMatrix& m, Row& x) {
    for (std::size_t k = 0; k < UNKNOWNS; ++k) {
        std::size_t pivot = k;
        for (std::size_t r = k + 1; r < UNKNOWNS; ++r) {
            pivot = std::abs(m[r][k]) > std::abs(m[pivot][k]) ? r : pivot;
        }
        std::swap(m[k], m[pivot]);
        if (!(std::abs(m[k][k]) > 1e-12)) {
            return false;
        }
        for (std::size_t r = k + 1; r < UNKNOWNS; ++r) {
            const double f = m[r][k] / m[k][k];
            for (std::size_t c = k; c <= UNKNOWNS; ++c) {
                m[r][c] -= f * m[k][c];
            }
        }
    }
    for (std::size_t k = UNKNOWNS; k-- > 0;) {
        x[k] = m[k][UNKNOWNS];
        for (std::size_t c = k + 1; c < UNKNOWNS; ++c) {
            x[k] -= m[k][c] * x[c];
        }
        x[k] /= m[k][k];
    }
    return true;
}

void addRow(NormalMatrix& m, const Row& j, double r) {
    for (std::size_t a = 0; a < UNKNOWNS; ++a) {
        for (std::size_t b = a; b < UNKNOWNS; ++b) {
            m[a][b] += j[a] * j[b];
        }
        m[a][UNKNOWNS] -= j[a] * r;
    }
}

/// Measures the distances of the points from the ellipse, in the same pass as the
/// normal equations of the next step where there is one.
void measureResiduals(EllipseFit& fit, std::span<const Vec> points, NormalMatrix* next) {
    const double c = std::cos(fit.angle);
    const double s = std::sin(fit.angle);
    double squares = 0.0;
    fit.worst = 0.0;
    for (const Vec& p : points) {
        Row j;
        const double r = residual(fit, p, c, s, next != nullptr ? &j : nullptr);
        squares += r * r;
        fit.worst = std::max(fit.worst, std::abs(r));
        if (next != nullptr) {
            addRow(*next, j, r);
        }
    }
    fit.rms = std::sqrt(squares / static_cast<double>(points.size()));
}

/// One Gauss-Newton step, slightly damped because the angle of a circle is
/// undetermined.
bool improve(EllipseFit& fit, NormalMatrix m) {
    for (std::size_t a = 0; a < UNKNOWNS; ++a) {
        m[a][a] += 1e-3;
        for (std::size_t b = 0; b < a; ++b) {
            m[a][b] = m[b][a];
        }
    }
    Row step{};
    if (!solve(m, step)) {
        return false;
    }
    fit.centre = fit.centre + Vec{step[0], step[1]};
    fit.a = std::max(fit.a + step[2], MIN_RADIUS);
    fit.b = std::max(fit.b + step[3], MIN_RADIUS);
    fit.angle += step[4];
    return true;
}

}  // namespace

EllipseView::EllipseView(const EllipseFit& fit)
    : m_fit(fit), m_cos(std::cos(fit.angle)), m_sin(std::sin(fit.angle)) {}

EllipsePoint EllipseView::at(Vec p) const {
    const Vec d = p - m_fit.centre;
    const Vec g{(m_cos * d.x + m_sin * d.y) / (m_fit.a * m_fit.a),
                (m_cos * d.y - m_sin * d.x) / (m_fit.b * m_fit.b)};
    return {residual(m_fit, p, m_cos, m_sin, nullptr),
            {m_cos * g.x - m_sin * g.y, m_sin * g.x + m_cos * g.y}};
}

double circumference(const EllipseFit& fit) {
    const double h = (fit.a - fit.b) / (fit.a + fit.b);
    return std::numbers::pi * (fit.a + fit.b) *
           (1.0 + 3.0 * h * h / (10.0 + std::sqrt(4.0 - 3.0 * h * h)));
}

EllipseFit fitEllipseTo(const Coarse& loop) {
    const EllipseFit start = fromMoments(loop);
    // The last point is the first one.
    return start.found ? refined(start, std::span(loop).first(COARSE - 1)) : start;
}

EllipseFit refined(EllipseFit fit, std::span<const Vec> points) {
    NormalMatrix next{};
    measureResiduals(fit, points, &next);
    EllipseFit best = fit;
    for (int i = 1; i <= ELLIPSE_STEPS && improve(fit, next); ++i) {
        next = {};
        measureResiduals(fit, points, i < ELLIPSE_STEPS ? &next : nullptr);
        best = fit.rms < best.rms ? fit : best;
    }
    if (best.a < best.b) {
        std::swap(best.a, best.b);
        best.angle += std::acos(0.0);
    }
    return best;
}

}  // namespace Scrivo::beautifier
