#include "Answers.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;

struct Drawn {
    std::string name;
    Path corners;
    QuadrangleKind kind;
};

const std::vector<Drawn>& quadrangles() {
    static const std::vector<Drawn> ALL{
        {"square", {{300, 200}, {500, 200}, {500, 400}, {300, 400}}, QuadrangleKind::SQUARE},
        {"standing", {{400, 180}, {520, 300}, {400, 420}, {280, 300}}, QuadrangleKind::SQUARE},
        {"rectangle", {{300, 200}, {500, 200}, {500, 310}, {300, 310}}, QuadrangleKind::RECTANGLE},
        {"rhombus", {{300, 300}, {400, 230}, {500, 300}, {400, 370}}, QuadrangleKind::RHOMBUS},
        {"parallelogram",
         {{320, 250}, {560, 250}, {500, 340}, {260, 340}},
         QuadrangleKind::PARALLELOGRAM},
        {"trapezoid", {{350, 240}, {450, 240}, {510, 360}, {290, 360}}, QuadrangleKind::TRAPEZOID},
        {"kite", {{400, 190}, {490, 250}, {400, 430}, {310, 250}}, QuadrangleKind::KITE},
    };
    return ALL;
}

Path turnedBy(const Path& path, double angle) {
    Path out;
    for (const Point2D& p : path) {
        const Point2D d = p - Point2D{400, 300};
        out.push_back({400 + std::cos(angle) * d.x - std::sin(angle) * d.y,
                       300 + std::sin(angle) * d.x + std::cos(angle) * d.y, 0.0});
    }
    return out;
}

Path drawn(Path corners, double tremor) {
    corners.push_back(corners.front());
    return sample(shaky(polyline(corners), tremor), 160);
}

QuadrangleFigure quadrangleOf(const Path& stroke, const BeautifierOptions& options = {}) {
    return std::get<QuadrangleFigure>(beautify(stroke, options).figure);
}

/// Sides from corner to corner, then the diagonals.
std::vector<double> lengthsOf(const std::array<Point2D, 4>& c) {
    return {length(c[1] - c[0]), length(c[2] - c[1]), length(c[3] - c[2]),
            length(c[0] - c[3]), length(c[2] - c[0]), length(c[3] - c[1])};
}

/// Pairs of corners at exactly the same height or exactly above each other.
template <std::size_t N>
int exactPairs(const std::array<Point2D, N>& corners) {
    int pairs = 0;
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            pairs += corners[i].x == corners[k].x || corners[i].y == corners[k].y ? 1 : 0;
        }
    }
    return pairs;
}

/// Whether the corners are those of `expected`, from any of them on.
testing::AssertionResult hasCorners(const std::array<Point2D, 4>& corners, const Path& expected,
                                    double tolerance) {
    for (std::size_t start = 0; start < corners.size(); ++start) {
        Path turned(corners.begin(), corners.end());
        std::rotate(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(start),
                    turned.end());
        if (isNear(turned, expected, tolerance)) {
            return testing::AssertionSuccess();
        }
    }
    return isNear(Path(corners.begin(), corners.end()), expected, tolerance);
}

/// Expects what makes the kind, to rounding.
void expectExact(const QuadrangleFigure& q) {
    constexpr double EXACT = 1e-9;
    const auto& c = q.corners;
    const auto l = lengthsOf(c);
    const auto crossOf = [&](int i, int k) {
        const auto side = [&](int n) { return c.at((n + 1) % 4) - c.at(n); };
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

TEST(BeautifierKinds, AreWhatWasDrawnHoweverItLiesAndExact) {
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

TEST(BeautifierKinds, AreGeneralOnlyWhereNoneMayBeRegular) {
    for (const Drawn& shape : quadrangles()) {
        const auto q = quadrangleOf(drawn(shape.corners, 2.0), {.regularFigures = false});
        EXPECT_EQ(q.subtype, QuadrangleKind::GENERAL) << shape.name;
    }
}

TEST(BeautifierKinds, AreFittedToAllEdgesNotToTheFirstCorner) {
    // Lengthens the second and the third edge of a square alike.
    const Path corners{{300, 200}, {480, 200}, {480, 400}, {300, 400}};
    const auto q = quadrangleOf(drawn(corners, 0.0));
    ASSERT_EQ(q.subtype, QuadrangleKind::SQUARE);
    const Path square{{295, 205}, {485, 205}, {485, 395}, {295, 395}};
    EXPECT_TRUE(hasCorners(q.corners, square, 1.0));
}

TEST(BeautifierKinds, LieLevelByOneTurnOfTheWholeFigure) {
    for (const Drawn& shape : quadrangles()) {
        for (const double angle : {0.07, -0.07, PI / 2 + 0.07}) {
            SCOPED_TRACE(shape.name + " turned by " + std::to_string(angle));
            const Path stroke = drawn(turnedBy(shape.corners, angle), 1.0);
            const auto leaning = quadrangleOf(stroke, {.horizontalVertical = false}).corners;
            const auto level = quadrangleOf(stroke).corners;
            const auto before = lengthsOf(leaning);
            const auto after = lengthsOf(level);
            Point2D shift;
            for (std::size_t i = 0; i < before.size(); ++i) {
                EXPECT_NEAR(before[i], after[i], 1e-9);
            }
            for (std::size_t i = 0; i < level.size(); ++i) {
                shift = shift + level[i] - leaning[i];
            }
            EXPECT_LT(length(shift), 1e-9) << "turned about the centre";
            EXPECT_GE(exactPairs(level), 1) << "corners exactly level or upright of each other";
        }
    }
    const auto askew = turnedBy(quadrangles()[2].corners, 0.3);
    const auto q = quadrangleOf(drawn(askew, 0.5)).corners;
    EXPECT_TRUE(hasCorners(q, askew, 5.0)) << "leans too much";
}

TEST(BeautifierKinds, KeepTheirSizeUnderLapsRoundCornersGapsAndTails) {
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

TEST(BeautifierKinds, OfTrianglesAreExact) {
    /// Differences of the sides, ascending.
    const auto differences = [](const TriangleFigure& t) {
        std::array<double, 3> sides;
        for (std::size_t i = 0; i < sides.size(); ++i) {
            sides.at(i) = length(t.corners.at((i + 1) % 3) - t.corners.at(i));
        }
        std::sort(sides.begin(), sides.end());
        const double low = sides[1] - sides[0];
        const double high = sides[2] - sides[1];
        return std::pair(std::min(low, high), std::max(low, high));
    };
    const auto triangleOf = [](const Path& corners) {
        return std::get<TriangleFigure>(beautify(drawn(corners, 0.5)).figure);
    };
    const auto equilateral = triangleOf({{300, 400}, {400, 227}, {500, 400}});
    EXPECT_EQ(equilateral.subtype, TriangleKind::EQUILATERAL);
    EXPECT_LT(differences(equilateral).second, 1e-9);
    const auto isosceles = triangleOf({{300, 402}, {360, 180}, {420, 400}});
    EXPECT_EQ(isosceles.subtype, TriangleKind::ISOSCELES);
    EXPECT_LT(differences(isosceles).first, 1e-9);
    EXPECT_EQ(exactPairs(isosceles.corners), 1);
    const auto right = triangleOf({{300, 200}, {300, 400}, {430, 401}});
    EXPECT_EQ(right.subtype, TriangleKind::RIGHT);
    EXPECT_EQ(exactPairs(right.corners), 2);
}

}  // namespace

}  // namespace Scrivo::test
