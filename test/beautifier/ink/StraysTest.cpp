#include "Answers.h"
#include "Beautifier/ink/Strays.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using curves::polyline;

Cleaned cleaned(const curves::Path& corners) {
    return withoutStrays(fineOutline(polyline(corners)));
}

// One step of the outline, twice: corners fall between points.
constexpr double STEPS = 2.0 / (FINE - 1);

TEST(Strays, WaysBackAreCutAtEitherEnd) {
    for (const bool atEnd : {true, false}) {
        curves::Path path{{0, 0}, {300, 0}, {200, 0}};
        if (!atEnd) {
            std::reverse(path.begin(), path.end());
        }
        const Cleaned line = cleaned(path);
        EXPECT_NEAR(line.retraced, 0.25, STEPS);
        EXPECT_NEAR(norm(line.fine.back() - line.fine.front()), 1.0, 2 * STEPS);
    }
}

TEST(Strays, WhatRunsOnOverTheStartIsCut) {
    const Cleaned square = cleaned({{0, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}, {100, 0}});
    EXPECT_NEAR(square.overlap, 1.0 / 9, STEPS);
    EXPECT_LT(norm(square.fine.back() - square.fine.front()), 0.1);
}

TEST(Strays, FlicksAreCutAtEitherEnd) {
    for (const bool atEnd : {true, false}) {
        curves::Path path{{0, 0}, {300, 0}, {300, 24}};
        if (!atEnd) {
            std::reverse(path.begin(), path.end());
        }
        const Cleaned line = cleaned(path);
        EXPECT_NEAR(line.hook, 24.0 / 300, 2 * STEPS);
        const Vec along = line.fine.back() - line.fine.front();
        EXPECT_LT(std::abs(along.y), 0.02);
        EXPECT_NEAR(std::abs(along.x), 1.0, 0.02);
    }
}

TEST(Strays, FiguresWithoutThemStayAsTheyAre) {
    for (const curves::Path& path : std::vector<curves::Path>{
             {{0, 0}, {300, 0}, {300, 120}},
             {{0, 0}, {300, 0}, {0, 90}},
             {{0, 0}, {300, 0}, {300, 200}, {0, 200}, {0, 3}},
         }) {
        const Fine fine = fineOutline(polyline(path));
        const Cleaned same = withoutStrays(fine);
        EXPECT_EQ(same.retraced + same.overlap + same.hook, 0.0);
        for (std::size_t i = 0; i < FINE; ++i) {
            EXPECT_EQ(norm(same.fine.at(i) - fine.at(i)), 0.0) << i;
        }
    }
}

}  // namespace

}  // namespace Scrivo::test
