#include "Answers.h"
#include "Beautifier/fit/StraightFit.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using curves::polyline;

/// The outline as it is, strays included.
Evidence evidenceOf(const Fine& fine) {
    Evidence e;
    e.fine = fine;
    e.points = coarse(fine);
    e.scatter = Scatter(e.points);
    e.polylines = fitPolylines(e.scatter, 2);
    e.size = 1.0;
    return e;
}

void expectAt(Vec actual, Vec expected, double tolerance = 1e-6) {
    EXPECT_LT(norm(actual - expected), tolerance) << actual.x << ", " << actual.y;
}

TEST(StraightFit, LinesEndAtTheirOutermostInkInDrawingDirection) {
    const Segment line = fitSegment(evidenceOf(fineOutline(polyline({{0, 0}, {300, 400}}))));
    expectAt(line.from, {-0.375, -0.5});
    expectAt(line.to, {0.375, 0.5});
    const Segment back =
        fitSegment(evidenceOf(fineOutline(polyline({{300, 400}, {0, 0}, {150, 200}}))));
    expectAt(back.from, {0.375, 0.5});
    expectAt(back.to, {-0.375, -0.5}, 0.02);
}

TEST(StraightFit, HooksHardlyTurnTheLine) {
    Fine fine;
    for (std::size_t i = 0; i < FINE; ++i) {
        const double x = static_cast<double>(std::min<std::size_t>(i, 88)) / 88;
        fine.at(i) = {x, i > 88 ? static_cast<double>(i - 88) / 88 : 0.0};
    }
    const Segment line = fitSegment(evidenceOf(fine));
    EXPECT_LT(std::abs(turn({1, 0}, line.to - line.from)), 0.003);
}

TEST(StraightFit, LegsMeetAtTheVertexAndCountOnce) {
    const Vec from{-0.5, -0.375};
    const Vec vertex{0.5, -0.375};
    const Vec to{0.5, 0.375};
    const auto expectLegs = [&](const curves::Path& path, double tolerance) {
        const LegsFit legs = fitLegs(evidenceOf(fineOutline(polyline(path))));
        expectAt(legs.from, from, tolerance);
        expectAt(legs.vertex, vertex, tolerance);
        expectAt(legs.to, to, tolerance);
    };
    expectLegs({{0, 0}, {200, 0}, {200, 150}}, 1e-6);
    expectLegs({{0, 0}, {200, 0}, {200, 150}, {200, 0}}, 0.05);
}

}  // namespace

}  // namespace Scrivo::test
