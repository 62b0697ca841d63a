#include "Matchers.h"
#include "Scrivo/Ellipse.h"

namespace Scrivo::test {

namespace {

/// Points with these forces.
Stroke ofForces(std::size_t count, double force, std::initializer_list<double> others = {}) {
    Stroke stroke(count, {1, 2, force});
    for (const double other : others) {
        stroke.push_back({1, 2, other});
    }
    return stroke;
}

TEST(Dot, CountAndForceDecide) {
    const Case<bool> cases[] = {
        {"empty", {}, false},
        {"8 points at full pressure", ofForces(8, 1), false},
        {"9 points at full pressure", ofForces(9, 1), true},
        {"25 points without pressure", ofForces(25, 0), false},
        {"26 points without pressure", ofForces(26, 0), true},
        {"10 of 0.7", ofForces(10, 0.7), true},
        {"9 of 0.7, one of 0: all are counted", ofForces(9, 0.7, {0.0}), false},
        {"a mean of exactly 0.65", ofForces(19, 0, {13.0}), false},
        {"the next mean", ofForces(19, 0, {above(13.0)}), true},
        {"small forces count: 0.6533", ofForces(8, 0.01, {5.8}), true},
        {"negative forces add nothing", ofForces(8, 0.8, {-100}), true},
        {"nor does NaN", ofForces(8, 0.8, {QUIET_NAN}), true},
        {"NaN is counted", ofForces(8, 0.7, {QUIET_NAN}), false},
        {"infinite", ofForces(8, 0, {INF}), true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isPoint(c.stroke), c.expected) << c.name;
    }
}

TEST(Dot, MeanForceIsAPlainSum) {
    // Added one after the other, 20 forces of 0.65 make 13.000000000000002.
    EXPECT_TRUE(isPoint(ofForces(20, 0.65)));
}

TEST(Dot, IsThreeClosedRingsAndACentre) {
    const Stroke tap = withForce({{8, 19}, {12, 19}, {10, 22}, {10, 20}}, 0.9);
    const Point2D centre{10, 20};
    Stroke dot;
    for (const double radius : {2.5, 1.5, 0.5}) {
        const Stroke ring = ellipse(centre, radius, radius, 0, 20);
        dot.insert(dot.end(), ring.begin(), ring.end());
    }
    dot.push_back(centre);
    EXPECT_TRUE(appends([&](Stroke& out) { return reDrawPoint(out, tap); }, dot, 1e-14));
    Stroke bare;
    reDrawPoint(bare, tap);
    EXPECT_TRUE(hasBitsOf({bare[20], bare[41], bare[62]}, {bare[0], bare[21], bare[42]}))
        << "closed";
    EXPECT_TRUE(hasBitsOf({bare[63]}, {centre}));
    EXPECT_TRUE(appends([](Stroke& out) { return reDrawPoint(out, {}); },
                        Stroke(64, {QUIET_NAN, QUIET_NAN})));
}

}  // namespace

}  // namespace Scrivo::test
