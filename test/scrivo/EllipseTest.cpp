#include "Matchers.h"
#include "Random.h"
#include "Scrivo/Ellipse.h"

#include <Eigen/Core>

namespace Scrivo::test {

namespace {

Eigen::VectorXd conic(std::initializer_list<double> coefficients) {
    Eigen::VectorXd v(static_cast<Eigen::Index>(coefficients.size()));
    std::copy(coefficients.begin(), coefficients.end(), v.begin());
    return v;
}

Eigen::VectorXd fit(const Stroke& stroke) {
    Eigen::MatrixXd points(stroke.size(), 2);
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        points.row(static_cast<Eigen::Index>(i)) << stroke[i].x, stroke[i].y;
    }
    return fitEllipse(points.col(0), points.col(1));
}

/// An ellipse with random `jitter`. Without it the scatter matrix would be singular,
/// and in a few of ten thousand cases its inverse is lost to rounding.
Stroke drawn(Random& random, const Stroke& clean, double jitter = 1e-3) {
    return mapped(clean, [&](const Point2D& p) { return p + random.jitter(jitter); });
}

TEST(Ellipse, ShapeOfAConic) {
    const auto lying = conic({1.0 / 6400, 0, 1.0 / 900, 0, 0, -1});
    EXPECT_TRUE(isNear(ellipse_axis_length(lying), {80, 30}, 1e-12));
    EXPECT_TRUE(isNear(ellipse_center(lying), {0, 0}, 0.0));
    EXPECT_EQ(ellipse_angle_of_rotation(lying), 0.0F);
    // (x - 3)^2 + 4 (y + 5)^2 = 36, times -2: scale and sign do not matter.
    const auto moved = conic({-2, 0, -8, 12, -80, -146});
    EXPECT_TRUE(isNear(ellipse_center(moved), {3, -5}, 1e-14));
    EXPECT_TRUE(isNear(ellipse_axis_length(moved), {6, 3}, 1e-14));
    // a = c: the first axis lies on a diagonal.
    EXPECT_EQ(ellipse_angle_of_rotation(conic({1, -1, 1, 0, 0, -1})), static_cast<float>(-PI / 4));
    const auto hyperbola = conic({1, 0, -1, 0, 0, -1});
    EXPECT_TRUE(std::isnan(ellipse_axis_length(hyperbola).y));
}

TEST(Ellipse, ExactCircleHasNoAxes) {
    const auto circle = conic({1, 0, 1, -200, -400, 47500});
    EXPECT_TRUE(isNear(ellipse_center(circle), {100, 200}, 0.0));
    EXPECT_TRUE(isNear(ellipse_axis_length(circle), {QUIET_NAN, QUIET_NAN}));
    EXPECT_TRUE(std::isnan(ellipse_angle_of_rotation(circle)));
}

TEST(Ellipse, AxisRootIsSingle) {
    // 2x^2 + xy + y^2 = 1: the semi-axes are sqrt(2 / (3 +- s)) with s the root of 2.
    const double s = 1.41421353816986083984375;
    const Point2D axes = ellipse_axis_length(conic({2, 1, 1, 0, 0, -1}));
    EXPECT_TRUE(isNear(axes, {std::sqrt(2 / (3 + s)), std::sqrt(2 / (3 - s))}, 1e-15));
}

TEST(EllipseDeathTest, ShortCoefficientVectorAborts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(ellipse_axis_length(conic({1, 0, 2, 0, 0})), "");
    EXPECT_DEATH(ellipse_angle_of_rotation(conic({1, 0})), "");
}

TEST(Ellipse, OrdinatesAtAnAbscissa) {
    EXPECT_TRUE(isNear(ellipseAxis(5, 7, 10, 4, 5, 99), {11, 3}, 0.0));
    EXPECT_TRUE(isNear(ellipseAxis(5, 7, 10, 4, 11, 99), {10.2, 3.8}, 1e-14));  // 1 - 0.36
    EXPECT_TRUE(isNear(ellipseAxis(5, 7, 10, 4, 15, 99), {7, 7}, 0.0));
    EXPECT_TRUE(isNear(ellipseAxis(5, 7, 10, 4, 40, 99), {7, 7}, 0.0));
    // 1 - 0.9996^2 = 0.0008 is treated as the end, 1 - 0.999^2 = 0.002 is not.
    EXPECT_EQ(ellipseAxis(0, 0, 1, 1, 0.9996, 0).x, 0.0);
    EXPECT_NEAR(ellipseAxis(0, 0, 1, 1, 0.999, 0).x, 0.0447, 1e-4);
}

TEST(Ellipse, RotationIsCounterClockwise) {
    EXPECT_TRUE(isNear(rotation({3, 1, 1}, {2, 1, 1}, PI / 2), {2, 2}, 1e-15));
}

TEST(Ellipse, FitRecoversTheDrawnEllipse) {
    Random random;
    for (int i = 0; i < 200; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Point2D centre{random.in(-200, 1000), random.in(-200, 1000)};
        const double rx = random.in(20, 300);
        const double ry = rx * (random.below(2) == 0 ? random.in(0.2, 0.9) : random.in(1.1, 5));
        const double turn = random.in(-0.7, 0.7);
        const Stroke clean = ellipse(centre, rx, ry, turn, 40 + random.below(100));
        const auto coefficients = fit(drawn(random, clean));
        EXPECT_TRUE(isNear(ellipse_center(coefficients), centre, 1e-2));
        EXPECT_TRUE(isNear(ellipse_axis_length(coefficients), {rx, ry}, 1e-2));
        EXPECT_NEAR(ellipse_angle_of_rotation(coefficients), turn, 1e-4);
    }
}

TEST(Ellipse, FitSolvesTheConstrainedProblem) {
    // The minimum of v'Sv with v'Cv = 1 satisfies Sv = lambda Cv.
    Random random;
    Eigen::MatrixXd constraint = Eigen::MatrixXd::Zero(6, 6);
    constraint(0, 2) = constraint(2, 0) = 2;
    constraint(1, 1) = -1;
    for (int i = 0; i < 50; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Stroke stroke = drawn(random, ellipse({0.2, 0.1}, 1.5, 0.8, 0.4, 60), 0.2);
        Eigen::MatrixXd scatter = Eigen::MatrixXd::Zero(6, 6);
        for (const Point2D& p : stroke) {
            const auto row = conic({p.x * p.x, p.x * p.y, p.y * p.y, p.x, p.y, 1});
            scatter += row * row.transpose();
        }
        const Eigen::VectorXd v = fit(stroke);
        const Eigen::VectorXd left = (scatter * v).normalized();
        EXPECT_NEAR(left.dot((constraint * v).normalized()), 1, 1e-9);
        EXPECT_GT(v.dot(constraint * v), 0) << "an ellipse";
    }
}

TEST(EllipseRedraw, SnapsToCirclesAndToTheAxes) {
    struct Shape {
        double rx, ry, turn;
    };
    struct Case {
        const char* name;
        Shape drawn, expected;
    };
    const Case cases[] = {
        {"nearly round", {100, 90, 0}, {95, 95, 0}},
        {"nearly round, upright", {90, 100, 0}, {95, 95, 0}},
        {"ratio 1.24", {124, 100, 0}, {112, 112, 0}},
        {"ratio 1.26", {126, 100, 0}, {126, 100, 0}},
        {"ratio 0.81", {81, 100, 0}, {90.5, 90.5, 0}},
        {"ratio 0.79", {79, 100, 0}, {79, 100, 0}},
        {"nearly level", {150, 79, 0.25}, {150, 79, 0}},
        {"nearly level, other way", {150, 79, -0.25}, {150, 79, 0}},
        {"turned", {150, 79, 0.27}, {150, 79, 0.27}},
        {"turned, other way", {60, 150, -0.27}, {60, 150, -0.27}},
    };
    const auto sampled = [](const Shape& s, int steps) {
        return ellipse({300, 200}, s.rx, s.ry, s.turn, steps);
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto redraw = [&](Stroke& out) {
            return reDrawEllipse(out, withForce(sampled(c.drawn, 60), 0.5), 7, -7);
        };
        EXPECT_TRUE(appends(redraw, sampled(c.expected, 84), 5e-3));
        Stroke out;
        redraw(out);
        EXPECT_TRUE(hasBitsOf({out.front()}, {out.back()})) << "closed";
    }
}

TEST(EllipseRedraw, DeclinesWhatDeterminesNoEllipse) {
    const Stroke declined[] = {
        {},
        {{0, 0}},
        Stroke(50, {0, 0}),
        chain({{0, 0}, {100, 0}}, 50),
        Stroke(50, {QUIET_NAN, 1}),
        {{0, 0}, {1, INF}, {5, 5}, {9, 1}, {2, 7}, {3, 3}, {8, 2}},
    };
    for (const Stroke& stroke : declined) {
        EXPECT_TRUE(appends([&](Stroke& out) { return reDrawEllipse(out, stroke, 0, 0); }, {}))
            << stroke.size();
    }
}

}  // namespace

}  // namespace Scrivo::test
