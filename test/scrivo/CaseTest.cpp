#include "Cases.h"
#include "Matchers.h"

namespace {

using namespace Scrivo::test;

TEST(Cases, BecomeTheFigureThatWasMeant) {
    const auto cases = loadCases();
    EXPECT_EQ(cases.size(), 13U) << "a case is missing, or a new one not counted";
    for (const FigureCase& c : cases) {
        SCOPED_TRACE(c.name);
        const auto answer = answerTo(c);
        EXPECT_EQ(answer.type, c.type);
        if (!c.points) {
            EXPECT_TRUE(hasBitsOf(answer.path, c.path));
            continue;
        }
        const auto units = [&](const Stroke& stroke) {
            return fractions(stroke, 1 / c.width, 1 / c.height);
        };
        EXPECT_TRUE(isNear(units(answer.path), units(*c.points), c.tolerance));
    }
}

}  // namespace
