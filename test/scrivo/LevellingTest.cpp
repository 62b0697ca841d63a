#include "Matchers.h"
#include "Scrivo/Polygon.h"

namespace Scrivo::test {

namespace {

Stroke levelled(Stroke corners) {
    horiVertalTrigon(corners);
    return corners;
}

TEST(Levelling, TurnsTheFigureAboutItsLowestCorner) {
    const double turn = std::atan(0.08);
    const auto turned = [&](const Point2D& p) {
        return Point2D{p.x * std::cos(turn) + p.y * std::sin(turn),
                       p.y * std::cos(turn) - p.x * std::sin(turn)};
    };
    const Point2D pivot = {0, 0, 1};
    const Point2D flat{-100, -8};
    const Point2D top{-50, -90};
    const Case<Stroke> cases[] = {
        {"next edge, slope 0.08", {pivot, flat, top}, {pivot, turned(flat), turned(top)}},
        {"previous edge", {top, flat, pivot}, {turned(top), turned(flat), pivot}},
        {"four corners",
         {{-110, -90}, {-10, -85}, pivot, flat},
         {turned({-110, -90}), turned({-10, -85}), pivot, turned(flat)}},
        {"the flatter of two", {pivot, flat, {100, -9}}, {pivot, turned(flat), turned({100, -9})}},
        {"level already: turned by nothing",
         {pivot, {-100, 0}, {100, -5}},
         {pivot, {-100, 0}, {100, -5}}},
        {"first of two lowest", {top, {-100, 0}, pivot}, {top, {-100, 0, 1}, {0, 0}}},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(isNear(levelled(withForce(c.stroke, 1)), c.expected, 1e-12)) << c.name;
    }
}

TEST(Levelling, LeavesOtherFiguresAlone) {
    const Stroke unchanged[] = {
        {{0, 0}, {-100, -8}, {100, -8}},  // equally flat
        {{0, 0}, {-100, -10}, {0, -90}},  // slope 0.1
        {{0, 0}, {-5, -100}, {60, -60}},  // nearly upright
        {{1, QUIET_NAN}, {2, QUIET_NAN}, {3, QUIET_NAN}},
        {{0, -3e9}, {-100, -4e9}, {50, -5e9}},  // above the start of the search
        {{0, 0}, {0, -100}, {0, -50}},          // two vertical edges
    };
    for (const Stroke& corners : unchanged) {
        EXPECT_TRUE(hasBitsOf(levelled(withForce(corners, 1)), withForce(corners, 1)));
    }
    EXPECT_EQ(levelled({{0, 0}, {-100, above(-10)}, {0, -90}})[1].y, 0.0) << "below 0.1";
}

}  // namespace

}  // namespace Scrivo::test
