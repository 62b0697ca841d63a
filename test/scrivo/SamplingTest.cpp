#include "Lines.h"

namespace Scrivo::test {

namespace {

TEST(Sampling, EdgeHas20EvenSteps) {
    const Point2D from{1, 2, 9};
    const Point2D to{5, -8, 9};
    EXPECT_TRUE(appends([&](Stroke& out) { return drawLine(out, from, to); }, line({1, 2}, {5, -8}),
                        1e-14));
    EXPECT_TRUE(
        appends([&](Stroke& out) { return drawLine(out, from, from); }, Stroke(21, {1, 2}), 0.0));
}

}  // namespace

}  // namespace Scrivo::test
