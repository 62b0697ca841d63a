#include "Answers.h"
#include "Beautifier/ink/Strays.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using ink::polyline;

Cleaned cleaned(const ink::Path& corners) {
    return withoutStrays(fineOutline(polyline(corners)));
}

// Two steps of the outline: corners fall between its points.
constexpr double TWO_STEPS = 2.0 / (FINE - 1);

TEST(Strays, WaysBackAndFlicksAreCutAtEitherEnd) {
    for (const bool atEnd : {true, false}) {
        const auto lineWith = [&](const Point2D& stray) {
            const ink::Path path{{0, 0}, {300, 0}, stray};
            return cleaned(atEnd ? path : ink::Path(path.rbegin(), path.rend()));
        };
        const Cleaned retraced = lineWith({200, 0});
        EXPECT_NEAR(retraced.retraced, 0.25, TWO_STEPS);
        const Cleaned hooked = lineWith({300, 24});
        EXPECT_NEAR(hooked.hook, 24.0 / 300, 2 * TWO_STEPS);
        for (const Fine& fine : {retraced.fine, hooked.fine}) {
            const Vec along = fine.back() - fine.front();
            EXPECT_LT(std::abs(along.y), 0.02);
            EXPECT_NEAR(std::abs(along.x), 1.0, 2 * TWO_STEPS);
        }
    }
}

TEST(Strays, WhatRunsOnOverTheStartIsCut) {
    const Cleaned square = cleaned({{0, 0}, {200, 0}, {200, 200}, {0, 200}, {0, 0}, {100, 0}});
    EXPECT_NEAR(square.overlap, 1.0 / 9, TWO_STEPS);
    EXPECT_LT(norm(square.fine.back() - square.fine.front()), 0.1);
}

TEST(Strays, WaysBackAreCutHoweverOftenTheyAreDrawn) {
    for (const int times : {2, 3, 4}) {
        ink::Path path;
        for (int i = 0; i <= times; ++i) {
            path.push_back({100.0 * (i % 2), 0});
        }
        EXPECT_NEAR(cleaned(path).retraced, 1.0 - 1.0 / times, 2 * TWO_STEPS) << times;
    }
    // A closed figure is given more room than a line.
    const ink::Path back{{0, 0}, {0, 200}, {215, 200}, {200, 0}, {0, 0}};
    ink::Path path{{0, 0}, {200, 0}, {200, 200}, {0, 200}};
    path.insert(path.end(), back.begin(), back.end());
    EXPECT_NEAR(cleaned(path).retraced, 0.5, 2 * TWO_STEPS);
}

TEST(Strays, ArrowHeadsAreNone) {
    for (const bool atEnd : {true, false}) {
        const ink::Path path{{0, 0}, {200, 0}, {182, 12}, {200, 0}, {182, -12}};
        const Cleaned arrow = cleaned(atEnd ? path : ink::Path(path.rbegin(), path.rend()));
        EXPECT_EQ(arrow.retraced + arrow.hook, 0.0);
    }
}

TEST(Strays, FiguresWithoutThemStayAsTheyAre) {
    for (const ink::Path& path : std::vector<ink::Path>{
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
