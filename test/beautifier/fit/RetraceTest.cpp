#include "Answers.h"
#include "Beautifier/fit/Retrace.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using curves::polyline;

void expectPart(const curves::Path& corners, double first, double last) {
    const Part part = withoutRetrace(fineOutline(polyline(corners)));
    EXPECT_NEAR(part.first, first * (FINE - 1), 2);
    EXPECT_NEAR(part.last, last * (FINE - 1), 2);
}

TEST(Retrace, CutsAWayBackAtEitherEnd) {
    expectPart({{0, 0}, {300, 0}, {150, 0}}, 0.0, 2.0 / 3);
    expectPart({{150, 0}, {300, 0}, {0, 0}}, 1.0 / 3, 1.0);
    // An angle whose second leg is drawn there and back.
    expectPart({{0, 0}, {100, 0}, {100, 100}, {100, 0}}, 0.0, 2.0 / 3);
}

TEST(Retrace, KeepsHooksAndWaysBackBesideTheLine) {
    expectPart({{0, 0}, {300, 0}, {230, 0}}, 0.0, 1.0);
    expectPart({{0, 0}, {300, 0}, {0, 90}}, 0.0, 1.0);
    expectPart({{0, 0}, {300, 0}, {300, 300}}, 0.0, 1.0);
}

}  // namespace

}  // namespace Scrivo::test
