// The normal form of a path: resampling compared with the quadratic algorithm that
// inserts points into the path, then each transformation at its limits.

#include "Recogniser.h"

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace Scrivo::test {

namespace {

const TemplatesGraphicsRecognizer RECOGNISER;

/// A path with one of the kinds of coordinates that resampling might mishandle.
Path awkwardPath(ink::Hand& hand) {
    const int n = 1 + hand.below(12);
    const int kind = hand.below(5);
    const double scale = std::pow(2.0, hand.in(-60.0, 60.0));
    const double offset = kind == 1 ? std::pow(2.0, hand.in(0.0, 60.0)) : 0.0;
    const auto coordinate = [&]() -> double {
        static constexpr double HOSTILE[] = {QUIET_NAN, INF,    -INF, 1e308,
                                             -1e308,    5e-324, 0.0,  -0.0};
        if (kind == 2) {
            return hand.below(8);
        }
        return kind == 3 ? HOSTILE[hand.below(8)] : offset + hand.in(-1.0, 1.0) * scale;
    };
    Path path;
    for (int i = 0; i < n; ++i) {
        const double x = coordinate();
        path.push_back({x, coordinate(), 0.5});
        if (hand.below(4) == 0) {
            path.push_back(path.back());
        }
    }
    return path;
}

TEST(Resample, AgreesWithTheInsertingAlgorithm) {
    constexpr int COUNTS[] = {1, 2, 3, 7, 64, 65};
    ink::Hand hand(11);
    int endless = 0;
    for (int k = 0; k < rounds(40000); ++k) {
        const Path path = awkwardPath(hand);
        const int n = COUNTS[hand.below(6)];
        Path expected;
        try {
            expected = literal::resampleByCnt(path, n);
        } catch (const std::length_error&) {
            ++endless;
            EXPECT_THROW(RECOGNISER.resampleByCnt(path, n), std::domain_error) << k;
            continue;
        }
        ASSERT_TRUE(hasBitsOf(RECOGNISER.resampleByCnt(path, n), expected)) << k;
    }
    EXPECT_GT(endless, 0) << "the endless case was never tested";
}

TEST(Resample, TakesStrokesOfAnyLength) {
    ink::Hand hand(12);
    for (const Path& stroke : hand.strokes(300)) {
        ASSERT_TRUE(hasBitsOf(RECOGNISER.resample(stroke), literal::resampleByCnt(stroke, 64)));
    }
    // Linear: inserting would move 10^11 points.
    Path spiral;
    for (int i = 0; i < 400000; ++i) {
        spiral.push_back({i * std::cos(i * 0.001), i * std::sin(i * 0.001), 0.0});
    }
    EXPECT_EQ(RECOGNISER.resampleByCnt(spiral, 400000).size(), 400000U);
}

TEST(Resample, KeepsEndsAndForces) {
    const Path line{{0.0, 0.0, 0.25}, {63.0, 0.0, 0.75}};
    const Path placed = RECOGNISER.resample(line);
    ASSERT_EQ(placed.size(), 64U);
    for (std::size_t k = 0; k < placed.size(); ++k) {
        EXPECT_EQ(placed[k].x, static_cast<double>(k));
        // The last one is interpolated too: rounding left room for it.
        EXPECT_EQ(placed[k].force, k == 0 ? 0.25 : 0.0);
    }
    const Path shortByOne = RECOGNISER.resample({{0.0, 0.0, 0.25}, {0.3, 0.0, 0.75}});
    ASSERT_EQ(shortByOne.size(), 64U);
    EXPECT_EQ(shortByOne.back().force, 0.75);
}

TEST(Resample, DegeneratePathsStayShort) {
    EXPECT_TRUE(RECOGNISER.resample({}).empty());
    EXPECT_TRUE(hasBitsOf(RECOGNISER.resample({{3.0, 4.0, 0.5}}), {{3.0, 4.0, 0.5}}));
    EXPECT_TRUE(hasBitsOf(RECOGNISER.resampleByCnt({{3.0, 4.0, 0.5}}, 2),
                          {{3.0, 4.0, 0.5}, {3.0, 4.0, 0.5}}));
    EXPECT_TRUE(hasBitsOf(RECOGNISER.resample(Path(5, {3.0, 4.0, 0.5})),
                          {{3.0, 4.0, 0.5}, {QUIET_NAN, QUIET_NAN, 0.0}}));
}

TEST(Resample, RefusesAWalkWithoutEnd) {
    // Steps of 1, but doubles are 16 apart here.
    EXPECT_THROW(RECOGNISER.resample({{1e17, 0.0}, {1e17 + 64.0, 0.0}}), std::domain_error);
    EXPECT_THROW(RECOGNISER.resampleByCnt({{0.0, 0.0}, {1.0, 0.0}}, 0), std::domain_error);
    EXPECT_THROW(
        RECOGNISER.resampleByCnt({{0.0, 0.0}, {1.0, 0.0}}, std::numeric_limits<int>::min()),
        std::domain_error);
    const auto recogniser = recogniserWith({{{0.0, 0.0}, {1.0, 2.0}, {2.0, 0.0}}});
    const Path far{{1e17, 0.0}, {1e17 + 64.0, 0.0}, {1e17, 0.0}};
    EXPECT_THROW(static_cast<void>(recogniser.recognize(far)), std::domain_error);
}

TEST(NormalForm, HasItsSizeAndPlace) {
    ink::Hand hand(13);
    for (const Path& stroke : hand.strokes(60)) {
        const Path path = RECOGNISER.normalizePath(stroke);
        ASSERT_TRUE(hasBitsOf(path, literal::normalizePath(stroke, RECOGNISER)));
        EXPECT_EQ(path.size(), 64U);
        const auto box = RECOGNISER.boundingBox(path);
        EXPECT_TRUE(isNear(Point2D{box.width, box.height}, {250.0, 250.0}));
        EXPECT_TRUE(isNear(RECOGNISER.centroid(path), {0.0, 0.0}));
    }
}

TEST(NormalForm, FollowsTheSettings) {
    TemplatesGraphicsRecognizer recogniser;
    recogniser.setRotationInvariance(false);
    EXPECT_FALSE(recogniser.getRotationInvariance());
    EXPECT_EQ(recogniser.angleRange, 15.0);
    const Path box{{0.0, 0.0}, {10.0, 0.0}, {10.0, 20.0}, {0.0, 20.0}, {0.0, 0.0}};
    EXPECT_EQ(recogniser.normalizePath(box).front().y, recogniser.normalizePath(box)[1].y)
        << "the first edge stays level";
    recogniser.setRotationInvariance(true);
    EXPECT_EQ(recogniser.angleRange, 45.0);
    recogniser.numPoints = 16;
    recogniser.squareSize = 100;
    EXPECT_TRUE(hasBitsOf(recogniser.normalizePath(box), literal::normalizePath(box, recogniser)));
}

TEST(NormalForm, TurnsCounterClockwise) {
    const Path path{{1.0, 0.0, 0.5}, {-1.0, 0.0, 0.5}};
    const Path turned = RECOGNISER.rotateBy(path, std::acos(0.0));
    EXPECT_TRUE(isNear(turned[0], {0.0, 1.0}, 1e-15));
    EXPECT_TRUE(hasBitsOf(RECOGNISER.rotateBy(path, 0.0), {{1.0, 0.0, 0.0}, {-1.0, 0.0, 0.0}}));
    const Path level = RECOGNISER.rotateToZero({{0.0, 0.0}, {0.0, 4.0}, {0.0, 8.0}});
    EXPECT_NEAR(level[0].y, level[1].y, 1e-12);
    EXPECT_LT(level[0].x, level[1].x) << "the first point lies left of the centroid";
}

TEST(NormalForm, DegeneratePathsGiveWhatTheArithmeticGives) {
    constexpr double MAX_DOUBLE = std::numeric_limits<double>::max();
    const auto nothing = RECOGNISER.boundingBox({});
    EXPECT_TRUE(hasBitsOf({{nothing.x, nothing.y}}, {{MAX_DOUBLE, MAX_DOUBLE}}));
    EXPECT_TRUE(hasBitsOf({{nothing.width, nothing.height}}, {{-INF, -INF}}));
    EXPECT_TRUE(std::isnan(RECOGNISER.centroid({}).x));
    EXPECT_EQ(RECOGNISER.pathLength({}), 0.0);
    EXPECT_EQ(RECOGNISER.pathLength({{3.0, 4.0}}), 0.0);
    EXPECT_EQ(RECOGNISER.getDistance({0.0, 0.0, 9.0}, {3.0, 4.0, 0.0}), 5.0);
    for (const Path& path :
         {RECOGNISER.normalizePath({}), RECOGNISER.rotateBy({}, 1.0), RECOGNISER.rotateToZero({}),
          RECOGNISER.scaleToSquare({}), RECOGNISER.translateToOrigin({})}) {
        EXPECT_TRUE(path.empty());
    }
    const Path flat = RECOGNISER.scaleToSquare({{0.0, 0.0}, {10.0, 0.0}, {10.0, -0.0}});
    EXPECT_EQ(flat[1].x, 250.0);
    EXPECT_TRUE(std::isnan(flat[1].y));
    EXPECT_EQ(RECOGNISER.scaleToSquare({{0.0, 2.0}, {10.0, 2.0}})[0].y, INF);
}

}  // namespace

}  // namespace Scrivo::test
