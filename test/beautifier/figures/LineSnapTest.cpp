#include "Beautifier/figures/LineSnap.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Scrivo::test {

namespace {

using namespace beautifier;

constexpr double OFFSETS[] = {0.0, 1e7, 2e9};

/// Doubles near 2e9 are 2.4e-7 apart.
constexpr double ROUNDING = 1e-6;

void expectClose(Vec actual, Vec expected) {
    EXPECT_NEAR(actual.x, expected.x, ROUNDING);
    EXPECT_NEAR(actual.y, expected.y, ROUNDING);
}

/// Snaps the line to `anchors`, all as seen from (`offset`, `offset`), once
/// upright and once level: it must end at `from` and `to`.
void expectSnapped(Segment line, std::vector<Vec> anchors, Vec from, Vec to) {
    for (const bool isLevel : {false, true}) {
        for (const double offset : OFFSETS) {
            SCOPED_TRACE(std::to_string(offset) + (isLevel ? ", level" : ", upright"));
            const auto placed = [&](Vec p) {
                return Vec{offset, offset} + (isLevel ? Vec{p.y, p.x} : p);
            };
            std::vector<Vec> around;
            for (const Vec& anchor : anchors) {
                around.push_back(placed(anchor));
            }
            const Segment out = snapped({placed(line.from), placed(line.to)}, around, true);
            expectClose(out.from, placed(from));
            expectClose(out.to, placed(to));
            EXPECT_EQ(isLevel ? out.from.y : out.from.x, isLevel ? out.to.y : out.to.x);
        }
    }
}

TEST(LineSnap, UprightAndLevelLinesBesideAStrokeStaySo) {
    // The centre of the stroke is out of reach of both ends, then holds either of them.
    expectSnapped({{300, 200}, {300, 400}}, {{300, 300}}, {300, 200}, {300, 400});
    expectSnapped({{295, 300}, {295, 500}}, {{300, 300}}, {300, 300},
                  {300, 300 + std::hypot(5, 200)});
    expectSnapped({{295, 100}, {295, 300}}, {{300, 300}}, {300, 300 - std::hypot(5, 200)},
                  {300, 300});
}

TEST(LineSnap, LinesThatLeanALittleAreTurnedAboutWhatHoldsThem) {
    const double half = std::hypot(4, 100);
    expectSnapped({{296, 200}, {304, 400}}, {}, {300, 300 - half}, {300, 300 + half});
    expectSnapped({{296, 200}, {304, 400}}, {{296, 200}}, {296, 200}, {296, 200 + 2 * half});
    expectSnapped({{296, 200}, {304, 400}}, {{304, 400}}, {304, 400 - 2 * half}, {304, 400});
}

TEST(LineSnap, LinesThatLeanMuchOrAreHeldTwiceAreNotTurned) {
    const Segment askew = snapped({{0, 0}, {30, 200}}, {}, true);
    expectClose(askew.from, {0, 0});
    expectClose(askew.to, {30, 200});
    const Vec anchors[] = {{-4, 0}, {5, 200}, {8, 200}};
    const Segment held = snapped({{0, 0}, {0, 200}}, anchors, true);
    expectClose(held.from, {-4, 0});
    expectClose(held.to, {5, 200});
    expectClose(snapped({{0, 0}, {10, 200}}, {}, false).to, {10, 200});
}

}  // namespace

}  // namespace Scrivo::test
