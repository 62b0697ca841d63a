#include "Answers.h"
#include "Beautifier/fit/Loop.h"
#include "Beautifier/ink/Strays.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;
using beautifier::Cleaned;
using beautifier::FINE;
using beautifier::withoutStrays;

/// Length of what is left, with the longer side of the whole stroke as unit.
double lengthOf(const Cleaned& cleaned) {
    return beautifier::lengthBetween(cleaned.fine, 0, FINE - 1);
}

/// One and a quarter laps of a circle of diameter 1.
Curve overlappingCircle(double laps) {
    return [=](double t) { return polar(0.5, 2 * std::numbers::pi * laps * t); };
}

TEST(BeautifierStrays, WaysBackAreCutHoweverOftenTheyAreDrawn) {
    const Path ends{{0, 0}, {100, 0}};
    for (const int times : {2, 3, 4}) {
        Path path;
        for (int i = 0; i <= times; ++i) {
            path.push_back(ends[static_cast<std::size_t>(i % 2)]);
        }
        const Cleaned cleaned = withoutStrays(fineOutline(polyline(path)));
        EXPECT_NEAR(lengthOf(cleaned), 1.0, 0.05) << times;
        EXPECT_NEAR(cleaned.retraced, 1.0 - 1.0 / times, 0.05) << times;
    }
    const Cleaned angle =
        withoutStrays(fineOutline(polyline({{0, 0}, {60, 80}, {120, 0}, {60, 80}, {0, 0}})));
    EXPECT_NEAR(lengthOf(angle), 200.0 / 120, 0.05);
}

TEST(BeautifierStrays, ALegThatOnlyStartsBackIsKept) {
    // A narrow tooth: the way back soon leaves the way there.
    const Cleaned tooth = withoutStrays(fineOutline(polyline({{0, 0}, {50, 100}, {100, 0}})));
    EXPECT_EQ(tooth.retraced, 0.0);
    EXPECT_EQ(tooth.hook, 0.0);
    EXPECT_NEAR(lengthOf(tooth), 2 * std::hypot(0.5, 1.0), 0.02);
}

TEST(BeautifierStrays, EndsThatRunOnOverTheStartAreCut) {
    const double lap = std::numbers::pi;
    const Cleaned cleaned = withoutStrays(fineOutline(overlappingCircle(1.25)));
    EXPECT_NEAR(lengthOf(cleaned), lap, 0.05);
    EXPECT_NEAR(cleaned.overlap, 0.2, 0.02);
    // An end inside the circle is a tail, which says something about the figure.
    const Curve spiral = [](double t) { return polar(0.5 - 0.25 * t, 2.5 * std::numbers::pi * t); };
    EXPECT_EQ(withoutStrays(fineOutline(spiral)).overlap, 0.0);
}

TEST(BeautifierStrays, FlicksAreCutButLegsAndShortSidesAreNot) {
    const Path line{{0, 0}, {200, 0}};
    const auto withFlick = [&](double length) {
        return withoutStrays(fineOutline(polyline({{length / 2, length}, line[0], line[1]})));
    };
    EXPECT_NEAR(lengthOf(withFlick(14)), 1.0, 0.03);
    EXPECT_NEAR(withFlick(14).hook, std::hypot(7, 14) / 200, 0.02);
    EXPECT_EQ(withFlick(40).hook, 0.0);
    const Cleaned slim =
        withoutStrays(fineOutline(polyline({{0, 14}, {0, 0}, {200, 0}, {200, 14}, {0, 14}})));
    EXPECT_EQ(slim.hook, 0.0);
    // An arrow head goes back and forth.
    const Cleaned arrow =
        withoutStrays(fineOutline(polyline({{0, 0}, {200, 0}, {188, 8}, {200, 0}, {188, -8}})));
    EXPECT_GT(lengthOf(arrow), 1.05);
}

}  // namespace

}  // namespace Scrivo::test
