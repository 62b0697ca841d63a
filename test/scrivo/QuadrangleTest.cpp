#include "Matchers.h"
#include "Random.h"
#include "Scrivo/Polygon.h"

#include <algorithm>

namespace Scrivo::test {

namespace {

Stroke regularQuadrangleOf(Stroke corners) {
    regularQuadrangle(corners);
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
    // Corners placed along an upright side keep their force.
    const Case<Point2D> cases[] = {
        {"0-1 and 3-2", first, {20, 120, 0}},
        {"0-1 and 3-2, mirrored", mirrored(first), {20, -120, 0}},
        {"0-3 and 1-2", last, {20, 120, 0}},
        {"0-3 and 1-2, mirrored", mirrored(last), {20, -120, 0}},
        {"0-1 upright, down", upright, {60, 61, 1}},
        {"0-1 upright, up", mirrored(upright), {60, -61, 1}},
        {"0-3 upright, down", uprightLast, {60, 61, 1}},
        {"0-3 upright, up", mirrored(uprightLast), {60, -61, 1}},
    };
    for (const auto& c : cases) {
        Stroke expected = drawn(c.stroke);
        expected[2] = c.expected;
        EXPECT_TRUE(isNear(regularQuadrangleOf(drawn(c.stroke)), expected, 1e-12)) << c.name;
    }
}

TEST(Quadrangle, LevelRectangleKeepsEachCornerOnItsSide) {
    const Point2D q0{200, 300};
    const Stroke corners{{0, 0}, {80, 0.9}, {83, 53}, {0.9, 50}};
    const double a = length(corners[1]);
    const double b = length(corners[3]);
    for (const double x : {-1.0, 1.0}) {
        for (const double y : {-1.0, 1.0}) {
            const auto placed = [&](const Stroke& shape) {
                return mapped(shape, [&](const Point2D& p) {
                    return Point2D{q0.x + x * p.x, q0.y + y * p.y, 1.0};
                });
            };
            EXPECT_TRUE(isNear(regularQuadrangleOf(placed(corners)),
                               placed({{0, 0}, {a, 0}, {a, b}, {0, b}}), 1e-5))
                << x << ", " << y;
        }
    }
}

/// The construction that a drawing goes through, identified by its forces.
enum class Branch { NONE, ONE_CORNER, LEVEL, REBUILT };

Branch branchOf(const Stroke& corners) {
    const Stroke result = regularQuadrangleOf(drawn(corners));
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
    const Case<Branch> cases[] = {
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
    for (const auto& c : cases) {
        EXPECT_EQ(branchOf(c.stroke), c.expected) << c.name;
    }
}

TEST(Quadrangle, NearlyEqualSidesBecomeTheirMean) {
    const auto rectangle = [](double a, double b) {
        return regularQuadrangleOf({{0, 0}, {a, 0}, {a, b}, {0, b}})[2];
    };
    EXPECT_TRUE(isNear(rectangle(104, 100), {102, 102}, 0.0));
    EXPECT_TRUE(isNear(rectangle(105, 100), {105, 100}, 0.0)) << "1.05 is too much";
    EXPECT_TRUE(isNear(rectangle(95, 100), {95, 100}, 0.0));
    EXPECT_TRUE(isNear(rectangle(floatAbove(95), 100), {97.5, 97.5}, 1e-5));
}

/// A plausible drawing: a rectangle or parallelogram of any size, rotation and
/// drawing direction, each corner off by up to `jitter`.
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

TEST(Quadrangle, RebuiltFigureIsTheOneThatWasDrawn) {
    Random random;
    for (int i = 0; i < 3000; ++i, random.nextRound()) {
        SCOPED_TRACE(random.trace());
        const Drawing drawing(random);
        const Stroke& old = drawing.corners;
        const Stroke q = regularQuadrangleOf(old);
        const Point2D a = old[1] - old[0];
        const Point2D b = old[3] - old[0];
        double dA = length(a);
        double dB = length(b);
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
        if (std::abs(dot(a, b)) < 0.08 * length(a) * length(b)) {
            EXPECT_LT(std::abs(dot(u, v)), 1e-12 * dA * dB) << "right angles";
        }
        const auto area = [](const Stroke& s) { return cross(s[2] - s[0], s[3] - s[1]); };
        EXPECT_GT(area(q) * area(old), 0) << "drawn the same way round";
        for (std::size_t corner = 0; corner < 4; ++corner) {
            // 4 units more for a first side that leans by 1.
            EXPECT_LT(length(q[corner] - old[corner]), 6 * drawing.jitter + 4) << corner;
        }
        Stroke moved = old;
        Point2D& one = random.oneOf(moved);
        one = one + random.jitter(1e-5);
        EXPECT_TRUE(isNear(regularQuadrangleOf(moved), q, 2e-3))
            << "small changes have small effects";
    }
}

TEST(Quadrangle, OneInaccurateCornerDoesNotSkewABox) {
    const auto cosineOf = [](const Point2D& a, const Point2D& b) {
        return dot(a, b) / (length(a) * length(b));
    };
    for (const double shear : {-18.0, -6.0, -4.5, -3.0, 0.0}) {
        const Stroke box{{6, 5}, {200, 0}, {204 + shear, 100}, {shear, 100}};
        EXPECT_LT(cosineOf(box[1] - box[0], box[3] - box[0]), -0.08)
            << "the first corner alone is that of a parallelogram";
        const double all =
            cosineOf(box[1] - box[0] + box[2] - box[3], box[3] - box[0] + box[2] - box[1]);
        // Up to half of 0.08 the angle becomes right; beyond, it changes continuously.
        const double lean = std::abs(all) < 0.08 ? std::min(0.0, 0.08 + 2 * all) : all;
        const Stroke q = regularQuadrangleOf(box);
        EXPECT_NEAR(cosineOf(q[1] - q[0], q[3] - q[0]), lean, 1e-9);
    }
}

TEST(Quadrangle, UprightSideComesOutAxisParallel) {
    for (const double y : {90.0, -90.0}) {
        for (const double x : {150.0, -150.0}) {
            const Stroke q =
                regularQuadrangleOf({{10, 20}, {10, 20 + y}, {12 + x, 23 + y}, {10 + x, 22}});
            EXPECT_TRUE(isNear(q[1], {10, 20 + y}, 1e-4));
            EXPECT_TRUE(isNear(q[2], {10 + x, 20 + y}, 0.1));
            EXPECT_EQ(q[1].x, q[0].x);
            EXPECT_EQ(q[2].x, q[3].x);
            EXPECT_EQ(q[3].y, q[0].y);
            EXPECT_EQ(q[2].y, q[1].y);
        }
    }
}

TEST(Quadrangle, UprightSideLeansByLessThanAUnit) {
    // The other sides lean further, so that their mean is not upright.
    const auto isUpright = [](double lean) {
        const Stroke q = regularQuadrangleOf({{0, 0}, {lean, -100}, {150 + lean, -97}, {150, 4}});
        return q[1].x == 0.0 && q[1].y < 0.0;
    };
    EXPECT_TRUE(isUpright(below(1)));
    EXPECT_TRUE(isUpright(-below(1)));
    EXPECT_FALSE(isUpright(1));
    EXPECT_FALSE(isUpright(-1));
}

}  // namespace

}  // namespace Scrivo::test
