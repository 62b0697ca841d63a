#include "Scrivo/Polygon.h"
#include "Support.h"

#include <algorithm>

namespace {

using namespace Scrivo::test;
using Scrivo::Point2D;

Stroke regular(Stroke corners) {
    Scrivo::regularQuadrangle(corners);
    return corners;
}

Stroke drawn(const Stroke& corners) {
    return withForce(corners, 1);
}

TEST(Quadrangle, OnePairOfParallelSidesMovesTheThirdCorner) {
    // The side opposite to the reference leans by a cosine of 0.96 or 40 / 41.
    const Stroke first{{0, 0}, {80, 60}, {10, 130}, {-20, 90}};
    const Stroke last{{0, 0}, {-20, 90}, {10, 130}, {80, 60}};
    const Stroke upright{{0, 0}, {0, 100}, {69, 60}, {60, 20}};
    const Stroke uprightLast{{0, 0}, {60, 20}, {69, 60}, {0, 100}};
    struct Case {
        const char* name;
        Stroke corners;
        Point2D third;  // corners placed along an upright side keep their force
    };
    const Case cases[] = {
        {"0-1 and 3-2", first, {20, 120, 0}},
        {"0-1 and 3-2, mirrored", mirrored(first), {20, -120, 0}},
        {"0-3 and 1-2", last, {20, 120, 0}},
        {"0-3 and 1-2, mirrored", mirrored(last), {20, -120, 0}},
        {"0-1 upright, down", upright, {60, 61, 1}},
        {"0-1 upright, up", mirrored(upright), {60, -61, 1}},
        {"0-3 upright, down", uprightLast, {60, 61, 1}},
        {"0-3 upright, up", mirrored(uprightLast), {60, -61, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Stroke expected = drawn(c.corners);
        expected[2] = c.third;
        EXPECT_TRUE(isNear(regular(drawn(c.corners)), expected, 1e-12));
    }
}

TEST(Quadrangle, LevelRectangleKeepsEachCornerOnItsSide) {
    for (const double x : {-1.0, 1.0}) {
        for (const double y : {-1.0, 1.0}) {
            const Point2D q0{200, 300};
            const Stroke corners{q0, q0 + Point2D{80 * x, 0.9}, q0 + Point2D{83 * x, 53 * y},
                                 q0 + Point2D{0.9, 50 * y}};
            const double dA = std::hypot(80, 0.9);
            const double dB = std::hypot(50, 0.9);
            const Stroke expected{q0, q0 + Point2D{dA * x, 0}, q0 + Point2D{dA * x, dB * y},
                                  q0 + Point2D{0, dB * y}};
            EXPECT_TRUE(isNear(regular(drawn(corners)), drawn(expected), 1e-5)) << x << ", " << y;
        }
    }
}

/// Which construction a drawing goes through, told by the forces.
enum class Branch { NONE, ONE_CORNER, LEVEL, REBUILT };

Branch branchOf(const Stroke& corners) {
    const Stroke result = regular(drawn(corners));
    if (hasBitsOf(result, drawn(corners))) {
        return Branch::NONE;
    }
    if (result[2].force == 1) {
        return Branch::LEVEL;
    }
    return result[1].force == 1 ? Branch::ONE_CORNER : Branch::REBUILT;
}

TEST(Quadrangle, BranchesAtTheirBounds) {
    /// A parallelogram of sides 100 and 300, the angle at the first corner given by its cosine.
    const auto leaning = [](double cosine) {
        const Point2D b{300 * cosine, 300 * std::sqrt(1 - cosine * cosine)};
        return Stroke{{0, 0}, {100, 0}, {100 + b.x, b.y}, b};
    };
    /// Side 3-2 leans against 0-1 by a cosine.
    const auto opposite = [](double cosine) {
        return Stroke{
            {0, 0}, {100, 0}, {200 * cosine, 100 + 200 * std::sqrt(1 - cosine * cosine)}, {0, 100}};
    };
    struct Case {
        const char* name;
        Stroke corners;
        Branch branch;
    };
    const Case cases[] = {
        {"first side 1 high", {{0, 0}, {80, 1}, {79, 51}, {-1, 50}}, Branch::REBUILT},
        {"first side lower", {{0, 0}, {80, below(1)}, {79, 51}, {-1, 50}}, Branch::LEVEL},
        {"cosine 0.0801", leaning(0.0801), Branch::REBUILT},
        {"cosine 0.0799", leaning(0.0799), Branch::LEVEL},
        {"cosine -0.0801", leaning(-0.0801), Branch::REBUILT},
        {"opposite cosine 0.951", opposite(0.951), Branch::ONE_CORNER},
        {"opposite cosine 0.949", opposite(0.949), Branch::NONE},
        {"crossed", {{0, 0}, {100, 0}, {0, 100}, {100, 100}}, Branch::NONE},
        {"in one place", Stroke(4, {5, 5}), Branch::NONE},
        {"in a line", {{0, 0}, {0, 0}, {10, 10}, {20, 20}}, Branch::ONE_CORNER},
        {"NaN", {{0, 0}, {10, QUIET_NAN}, {10, 10}, {0, 10}}, Branch::NONE},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(branchOf(c.corners) == c.branch) << c.name;
    }
}

TEST(Quadrangle, NearlyEqualSidesBecomeTheirMean) {
    const auto rectangle = [](double a, double b) {
        return regular({{0, 0}, {a, 0}, {a, b}, {0, b}})[2];
    };
    EXPECT_TRUE(isNear(rectangle(104, 100), {102, 102}, 0.0));
    EXPECT_TRUE(isNear(rectangle(105, 100), {105, 100}, 0.0)) << "1.05 is too much";
    EXPECT_TRUE(isNear(rectangle(95, 100), {95, 100}, 0.0));
    EXPECT_TRUE(isNear(rectangle(floatAbove(95), 100), {97.5, 97.5}, 1e-5));
}

/// What a person may draw: a rectangle or parallelogram of any size, turn and
/// direction of drawing, each corner off by up to `jitter`.
struct Drawing {
    Stroke corners;
    double jitter;

    explicit Drawing(Random& random) {
        const double a = random.in(60, 300);
        const double b = a * random.oneOf({1.0, random.in(0.4, 0.85), random.in(1.2, 2.5)});
        const double turn = random.in(-PI, PI);
        const double way = random.oneOf({-1.0, 1.0});
        const double shear = random.oneOf({0.0, random.in(0.15, 0.7), random.in(-0.7, -0.15)});
        jitter = random.in(0, 0.04) * std::min(a, b);
        const Point2D q0 = random.jitter(400);
        const Point2D u = polar(a, turn);
        const Point2D v = polar(b, turn + way * (PI / 2 + shear));
        corners = {q0, q0 + u, q0 + u + v, q0 + v};
        for (Point2D& corner : corners) {
            corner = corner + random.jitter(jitter);
        }
    }
};

/// Twice the signed area.
double area(const Stroke& q) {
    return cross(q[2] - q[0], q[3] - q[1]);
}

TEST(Quadrangle, RebuiltFigureIsTheOneThatWasDrawn) {
    Random random;
    for (int i = 0; i < 3000; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Drawing drawing(random);
        const Stroke& old = drawing.corners;
        const Stroke q = regular(old);
        double dA = length(old[1] - old[0]);
        double dB = length(old[3] - old[0]);
        const bool isSquare = 0.95 < dA / dB && dA / dB < 1.05;
        if (isSquare) {
            dA = dB = (dA + dB) / 2;
        }
        const Point2D u = q[1] - q[0];
        const Point2D v = q[3] - q[0];
        EXPECT_TRUE(hasBitsOf({q[0]}, {old[0]})) << "the first corner stays";
        EXPECT_NEAR(length(u) / dA, 1, 1e-6);
        EXPECT_NEAR(length(v) / dB, 1, 1e-6);
        EXPECT_TRUE(isNear(q[2], q[0] + u + v, 1e-10)) << "opposite sides are parallel";
        if (isSquare) {
            EXPECT_NEAR(length(u) / length(v), 1, 1e-12);
        }
        const Point2D a = old[1] - old[0];
        const Point2D b = old[3] - old[0];
        if (std::abs(dot(a, b)) < 0.08 * length(a) * length(b)) {
            EXPECT_LT(std::abs(dot(u, v)), 1e-12 * dA * dB) << "right angles";
        }
        EXPECT_GT(area(q) * area(old), 0) << "drawn the same way round";
        for (std::size_t corner = 0; corner < 4; ++corner) {
            // 4 units more for a first side that leans by 1.
            EXPECT_LT(length(q[corner] - old[corner]), 6 * drawing.jitter + 4) << corner;
        }
        Stroke moved = old;
        Point2D& one = moved[static_cast<std::size_t>(random.below(4))];
        one = one + random.jitter(1e-5);
        EXPECT_TRUE(isNear(regular(moved), q, 2e-3)) << "a little moves a little";
    }
}

TEST(Quadrangle, OneCarelessCornerDoesNotMakeABoxLean) {
    const auto cornerCosine = [](const Stroke& q) {
        const Point2D a{q[1].x - q[0].x, q[1].y - q[0].y};
        const Point2D b{q[3].x - q[0].x, q[3].y - q[0].y};
        return (a.x * b.x + a.y * b.y) / (std::hypot(a.x, a.y) * std::hypot(b.x, b.y));
    };
    const Stroke box{{6, 5}, {200, 0}, {204, 100}, {0, 100}};
    EXPECT_LT(cornerCosine(box), -0.08) << "the first corner alone is that of a parallelogram";
    EXPECT_NEAR(cornerCosine(regular(box)), 0.0, 1e-12);
    // A parallelogram of a cosine of 0.1 keeps its lean, and between the two
    // nothing jumps.
    const auto leaning = [&](double lean) {
        const Point2D side{100 * lean, 100 * std::sqrt(1 - lean * lean)};
        return cornerCosine(regular({{0, 0}, {200, 0}, Point2D{200, 0} + side, side}));
    };
    EXPECT_NEAR(leaning(0.1), 0.1, 1e-9);
    for (int step = 0; step < 20; ++step) {
        const double lean = 0.08 + 1e-3 * step;
        EXPECT_NEAR(leaning(lean + 1e-9), leaning(lean + 2e-9), 1e-8) << lean;
    }
}

TEST(Quadrangle, UprightSideComesOutAxisParallel) {
    for (const double y : {90.0, -90.0}) {
        for (const double x : {150.0, -150.0}) {
            const Stroke q = regular({{10, 20}, {10, 20 + y}, {12 + x, 23 + y}, {10 + x, 22}});
            EXPECT_TRUE(isNear(q[1], {10, 20 + y}, 1e-4));
            EXPECT_TRUE(isNear(q[2], {10 + x, 20 + y}, 0.1));
            EXPECT_EQ(q[1].x, q[0].x);
            EXPECT_EQ(q[2].x, q[3].x);
            EXPECT_EQ(q[3].y, q[0].y);
            EXPECT_EQ(q[2].y, q[1].y);
        }
    }
}

}  // namespace
