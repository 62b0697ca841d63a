#include "Answers.h"
#include "Beautifier/ink/Tremor.h"

#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace curves;
using namespace beautifier;

std::optional<Fine> calm(const Path& path) {
    const Ink ink{path, 1, 1};
    const Frame frame = measure(ink);
    return withoutTremor(Cursor(ink, frame), frame.length / frame.extent);
}

/// A line of 200 units with a wave of 12 units across it.
Curve trembling(double amplitude) {
    return [=](double t) {
        return Point2D{200 * t, amplitude * std::sin(2 * std::numbers::pi * 200 * t / 12)};
    };
}

TEST(BeautifierTremor, IsAveragedOut) {
    const auto line = calm(sample(trembling(3), 800));
    ASSERT_TRUE(line);
    double farthest = 0.0;
    for (std::size_t i = 5; i + 5 < line->size(); ++i) {
        farthest = std::max(farthest, std::abs((*line)[i].y));
    }
    EXPECT_LT(farthest, 0.5 * 3 / 200);
}

TEST(BeautifierTremor, SetsInGradually) {
    // The mean of a path without tremor is the path, so a little of it moves little.
    double before = 0.0;
    for (double amplitude = 0.5; amplitude < 3.0; amplitude += 0.05) {
        const Path path = sample(trembling(amplitude), 800);
        const Fine outline = resample({path, 1, 1}, measure({path, 1, 1}));
        double squares = 0.0;
        for (const Vec& p : outline) {
            squares += p.y * p.y;
        }
        const double rms = 200 * std::sqrt(squares / FINE);
        if (before > 0.0) {
            EXPECT_LT(std::abs(rms - before), 0.25) << amplitude;
        }
        before = rms;
    }
}

TEST(BeautifierTremor, CornersAndCurvesAreNone) {
    const Path corners{{0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0}};
    Path zigzag;
    for (int i = 0; i < 8; ++i) {
        zigzag.push_back({40.0 * i, 100.0 * (i % 2)});
    }
    EXPECT_FALSE(calm(corners));
    EXPECT_FALSE(calm(sample(polyline(zigzag), 400)));
    EXPECT_FALSE(calm(sample(curves::ellipse(100, 60, 0.4), 60)));
}

}  // namespace

}  // namespace Scrivo::test
