#include "Shapes.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

TEST(KindChoice, PrefersTheSimplestKindThatFits) {
    for (const Shape& shape : exactQuadrangles()) {
        EXPECT_EQ(chooseQuadrangle(inkOf(shape.corners)).kind, shape.name);
    }
    for (const Shape& shape : exactTriangles()) {
        EXPECT_EQ(chooseTriangle(inkOf(shape.corners)).kind, shape.name);
    }
    EXPECT_EQ(chooseQuadrangle(inkOf({{0, 0}, {1, 0}, {0.7, 0.8}, {0.2, 0.4}})).kind,
              ANY_QUADRANGLE);
    EXPECT_EQ(chooseTriangle(inkOf({{0, 0}, {1, 0}, {0.3, 0.4}})).kind, ANY_TRIANGLE);
}

TEST(KindChoice, StaysWithinTheAllowedKinds) {
    const PolygonInk square = inkOf(exactQuadrangles()[0].corners);
    for (int name = SQUARE; name <= ANY_QUADRANGLE; ++name) {
        const KindChoice choice =
            chooseQuadrangle(square, KindSet{1} << static_cast<unsigned>(name));
        EXPECT_EQ(choice.kind, name);
        EXPECT_TRUE(std::isfinite(choice.fit.squares)) << name;
    }
    EXPECT_TRUE(std::isnan(chooseQuadrangle(square, 0).fit.corners[0].x));
}

TEST(KindChoice, MeasuresErrorsAgainstTheWiderKind) {
    const PolygonInk ink = inkOf(exactQuadrangles()[0].corners);
    const PolygonFit free = fitFreePolygon(ink);
    PolygonFit doubled = free;
    for (Vec& p : doubled.corners) {
        p = 2.0 * p;
    }
    PolygonFit off = free;
    off.squares = free.squares + ink.count * ink.size * ink.size * 0.09;
    const KindErrors errors = errorsOf(ink, doubled, off, free);
    EXPECT_NEAR(errors.edges, std::log(2.0), 1e-9);
    EXPECT_NEAR(errors.directions, 0.3, 1e-9);
    doubled.squares = INFINITY;
    EXPECT_EQ(errorsOf(ink, doubled, off, free).edges, INFINITY);
}

}  // namespace

}  // namespace Scrivo::test
