#include "Polygons.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

/// Expects the defining properties of the kind, up to rounding.
void expectExact(const QuadrangleFigure& q) {
    constexpr double EXACT = 1e-9;
    const auto& c = q.corners;
    const auto l = lengthsOf(c);
    const auto crossOf = [&](std::size_t i, std::size_t k) {
        const auto side = [&](std::size_t n) { return c.at((n + 1) % 4) - c.at(n); };
        return cross(side(i), side(k)) / (length(side(i)) * length(side(k)));
    };
    const bool hasTwoPairs = std::abs(crossOf(0, 2)) < EXACT && std::abs(crossOf(1, 3)) < EXACT;
    switch (q.subtype) {
        case QuadrangleKind::SQUARE:
        case QuadrangleKind::RHOMBUS:
            EXPECT_NEAR(l[0], l[1], EXACT * l[0]);
            EXPECT_TRUE(hasTwoPairs);
            break;
        case QuadrangleKind::RECTANGLE:
        case QuadrangleKind::PARALLELOGRAM:
            EXPECT_TRUE(hasTwoPairs);
            break;
        case QuadrangleKind::TRAPEZOID:
            EXPECT_LT(std::min(std::abs(crossOf(0, 2)), std::abs(crossOf(1, 3))), EXACT);
            break;
        default:
            EXPECT_LT(std::min(std::abs(l[0] - l[1]), std::abs(l[1] - l[2])), EXACT * l[0]);
    }
    if (q.subtype == QuadrangleKind::SQUARE || q.subtype == QuadrangleKind::RECTANGLE) {
        EXPECT_NEAR(l[4], l[5], EXACT * l[4]) << "diagonals";
    }
}

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

TEST(QuadrangleKinds, AreWhatWasDrawnHoweverItLiesAndExact) {
    for (const Drawn& shape : quadrangles()) {
        for (const double angle : {0.0, 0.05, 0.4, 2.0}) {
            Path corners = turnedBy(shape.corners, angle);
            for (int direction = 0; direction < 2; ++direction) {
                SCOPED_TRACE(shape.name + " turned by " + std::to_string(angle));
                const auto q = quadrangleOf(drawn(corners, 1.0), {.horizontalVertical = false});
                EXPECT_EQ(q.subtype, shape.kind);
                expectExact(q);
                EXPECT_TRUE(hasCorners(q.corners, corners, 5.0));
                std::reverse(corners.begin() + 1, corners.end());
            }
        }
    }
}

TEST(QuadrangleKinds, AreGeneralOnlyWhereNoneMayBeRegular) {
    for (const Drawn& shape : quadrangles()) {
        const auto q = quadrangleOf(drawn(shape.corners, 2.0), {.regularFigures = false});
        EXPECT_EQ(q.subtype, QuadrangleKind::GENERAL) << shape.name;
    }
}

TEST(QuadrangleKinds, AreFittedToAllEdgesNotToTheFirstCorner) {
    // A rectangle close to a square: both pairs of edges have to change.
    const Path corners{{300, 200}, {480, 200}, {480, 400}, {300, 400}};
    const auto q = quadrangleOf(drawn(corners, 0.0));
    ASSERT_EQ(q.subtype, QuadrangleKind::SQUARE);
    const Path square{{295, 205}, {485, 205}, {485, 395}, {295, 395}};
    EXPECT_TRUE(hasCorners(q.corners, square, 1.0));
}

TEST(QuadrangleKinds, KeepTheirSizeUnderLapsRoundCornersGapsAndTails) {
    const Path square{{300, 200}, {500, 200}, {500, 400}, {300, 400}};
    const auto expectSquare = [&](const Path& stroke, const std::string& how) {
        const Beautified answer = beautify(stroke);
        ASSERT_TRUE(is<QuadrangleFigure>(answer.figure)) << how;
        for (const Point2D& c : std::get<QuadrangleFigure>(answer.figure).corners) {
            EXPECT_TRUE(std::any_of(square.begin(), square.end(),
                                    [&](const Point2D& p) { return length(c - p) < 5.0; }))
                << how << ": " << toText(c);
        }
    };
    Path laps;
    for (const double off : {-6.0, 6.0}) {
        for (const Point2D& p : square) {
            laps.push_back(p + (off / 200) * (p - Point2D{400, 300}));
        }
    }
    laps.push_back(laps.front());
    expectSquare(sample(polyline(laps), 200), "two laps, one smaller, one larger");
    const Path cut{{320, 200}, {480, 200}, {494, 206}, {500, 220}, {500, 380},
                   {494, 394}, {480, 400}, {320, 400}, {306, 394}, {300, 380},
                   {300, 220}, {306, 206}, {320, 200}};
    expectSquare(sample(polyline(cut), 160), "round corners");
    expectSquare(
        sample(polyline({{330, 200}, {500, 200}, {500, 400}, {300, 400}, {300, 204}}), 160),
        "a gap");
    expectSquare(
        sample(polyline({{260, 200}, {500, 200}, {500, 400}, {300, 400}, {300, 165}}), 160),
        "tails");
}

}  // namespace

}  // namespace Scrivo::test
