#include "Matchers.h"
#include "Scrivo/Polygon.h"

namespace Scrivo::test {

namespace {

TEST(Polygon, DistancesToTwoPlaces) {
    const double none = UNKNOWN_EXTENT;
    const Stroke stroke{{0, 0}, {10, 0}, {20, 0}, {3, 1}};
    EXPECT_TRUE(isNear(distance2(stroke, {3, 4}, {3, 1}), {3, std::sqrt(290.0F)}, 0.0))
        << "the third point is measured against the second place";
    EXPECT_TRUE(isNear(distance2(stroke, {3, 4}, {none, 0}), {3, none}, 0.0));
    EXPECT_TRUE(isNear(distance2(stroke, {3, 4}, {QUIET_NAN, 0}), {3, none}, 0.0));
    EXPECT_TRUE(isNear(distance2(stroke, {none, 0}, {3, 1}), {none, none}, 0.0));
    EXPECT_TRUE(isNear(distance2({}, {3, 4}, {3, 1}), {none, none}, 0.0));
    EXPECT_TRUE(isNear(distance2({}, {3, 4}, {none, 1}), {none, none}, 0.0));
}

}  // namespace

}  // namespace Scrivo::test
