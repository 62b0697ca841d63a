#include "Answers.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;
using curves::ellipse;

TEST(BeautifierInk, SlimRectanglesAreNoEllipsesAndSlimEllipsesNoRectangles) {
    for (const double height : {60.0, 30.0, 20.0}) {
        const Curve slim = polyline(
            {{200, 200}, {500, 201}, {500, 200 + height}, {201, 199 + height}, {200, 201}});
        EXPECT_TRUE(is<QuadrangleFigure>(beautify(sample(shaky(slim, 0.6), 150)).figure)) << height;
        EXPECT_TRUE(is<EllipseFigure>(
            beautify(sample(shaky(ellipse(150, height / 2, 0.0), 0.6), 150)).figure))
            << height;
    }
}

TEST(BeautifierInk, QuadranglesMayBendInwardsButNotCrossThemselves) {
    const Curve bowTie = polyline({{200, 200}, {400, 350}, {400, 200}, {200, 350}, {200, 203}});
    EXPECT_EQ(beautify(sample(bowTie, 120)).type, 0);
    const Path dart{{300, 280}, {100, 200}, {170, 280}, {100, 360}, {300, 280}};
    const Beautified answer = beautify(sample(polyline(dart), 120));
    ASSERT_TRUE(is<QuadrangleFigure>(answer.figure));
    for (const Point2D& corner : std::get<QuadrangleFigure>(answer.figure).corners) {
        EXPECT_TRUE(std::any_of(dart.begin(), dart.end(), [&](const Point2D& p) {
            return length(p - corner) < 4.0;
        })) << toText(corner);
    }
}

}  // namespace

}  // namespace Scrivo::test
