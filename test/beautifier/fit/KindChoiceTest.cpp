#include "Beautifier/fit/Levelling.h"
#include "Shapes.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

TEST(KindChoice, PrefersTheSimplestFormThatFits) {
    for (const Shape& shape : exactQuadrangles()) {
        EXPECT_EQ(chooseQuadrangle(inkOf(shape.corners)).id, shape.form);
    }
    for (const Shape& shape : exactTriangles()) {
        EXPECT_EQ(chooseTriangle(inkOf(shape.corners)).id, shape.form);
    }
    EXPECT_EQ(chooseQuadrangle(inkOf({{0, 0}, {1, 0}, {0.7, 0.8}, {0.2, 0.4}})).id, ANY_QUADRANGLE);
    EXPECT_EQ(chooseTriangle(inkOf({{0, 0}, {1, 0}, {0.3, 0.4}})).id, ANY_TRIANGLE);
}

TEST(KindChoice, StaysWithinTheAllowedForms) {
    const PolygonInk square = inkOf(exactQuadrangles()[0].corners);
    for (int form = SQUARE; form <= ANY_QUADRANGLE; ++form) {
        const KindChoice choice = chooseQuadrangle(square, formBit(form));
        EXPECT_EQ(choice.id, form);
        EXPECT_TRUE(std::isfinite(choice.fit.squares)) << form;
    }
    EXPECT_TRUE(std::isnan(chooseQuadrangle(square, 0).fit.corners[0].x));
}

TEST(KindChoice, TakesCarefulInkAtItsWord) {
    // Waves of `height` along the edges of a box.
    const auto formOf = [](double ratio, double height) {
        const std::vector<Vec> corners{{0, 0}, {1, 0}, {1, ratio}, {0, ratio}};
        std::vector<Vec> points;
        for (std::size_t i = 0; i < 4; ++i) {
            const Vec along = corners[(i + 1) % 4] - corners[i];
            for (int k = 0; k < 40; ++k) {
                const Vec across = height * std::sin(1.9 * k) * Vec{-along.y, along.x};
                points.push_back(corners[i] + (k / 40.0) * along + across);
            }
        }
        return chooseQuadrangle(inkAlong(points, corners)).id;
    };
    EXPECT_EQ(formOf(0.75, 0.0), RECTANGLE);
    EXPECT_EQ(formOf(0.75, 0.01), SQUARE);
    EXPECT_EQ(formOf(0.93, 0.0), SQUARE);
    EXPECT_EQ(formOf(0.6, 0.01), RECTANGLE);
}

TEST(KindChoice, PlacesLevelWhatLeansLittle) {
    const auto leanOf = [](double angle, bool isLevelled) {
        std::vector<Vec> corners = exactQuadrangles()[2].corners;
        for (Vec& p : corners) {
            p = turned(p, {}, angle);
        }
        const KindChoice choice = chooseQuadrangle(inkOf(corners), ALL_FORMS, isLevelled);
        EXPECT_EQ(choice.id, RECTANGLE) << angle;
        return std::abs(leastLean(choice.fit.corners));
    };
    for (const double angle : {0.03, -0.1, 1.5}) {
        EXPECT_EQ(leanOf(angle, true), 0.0) << angle;
        EXPECT_GT(leanOf(angle, false), 0.02) << angle;
    }
    EXPECT_NEAR(leanOf(0.17, true), 0.17, 1e-9) << "leans on purpose";
}

TEST(KindChoice, MeasuresErrorsAgainstTheWiderForm) {
    const PolygonInk ink = inkOf(exactQuadrangles()[0].corners);
    const PolygonFit free = fitFreePolygon(ink);
    PolygonFit doubled = free;
    for (Vec& p : doubled.corners) {
        p = 2.0 * p;
    }
    PolygonFit off = free;
    off.squares = free.squares + ink.count * ink.size * ink.size * 0.09;
    const FormErrors errors = errorsOf(ink, doubled, off, free);
    EXPECT_NEAR(errors.edges, std::log(2.0), 1e-9);
    EXPECT_NEAR(errors.directions, 0.3, 1e-9);
    doubled.squares = INFINITY;
    EXPECT_EQ(errorsOf(ink, doubled, off, free).edges, INFINITY);
}

}  // namespace

}  // namespace Scrivo::test
