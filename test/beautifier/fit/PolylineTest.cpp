#include "Answers.h"
#include "Beautifier/fit/Polyline.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace ink;

TEST(Polyline, PolygonsAreFoundFromAStartOnAnEdge) {
    using namespace beautifier;
    const Path square{{120, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}, {120, 0}};
    const PolylineFits fits = fitPolygons(Scatter(coarse(fineOutline(polyline(square)))));
    EXPECT_LT(fits[3].rms, 0.01);
    EXPECT_GT(fits[2].rms, 0.05);
}

}  // namespace

}  // namespace Scrivo::test
