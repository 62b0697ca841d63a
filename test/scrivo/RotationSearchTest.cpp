#include "MixedTemplates.h"

namespace Scrivo::test {

namespace {

TEST(RotationSearch, AgreesWithTheLiteralSearch) {
    ink::Hand hand(24);
    TemplatesGraphicsRecognizer recogniser;
    const auto templates = mixedTemplates(hand, 60);
    for (int i = 0; i < rounds(160); ++i) {
        const Path path = queryPath(hand, templates);
        for (const GraphicTemplate& t : templates) {
            ASSERT_TRUE(sameBits(recogniser.distanceAtBestAngle(path, t),
                                 literal::distanceAtBestAngle(path, t, recogniser)));
        }
        const double angle = hand.in(-50.0, 50.0);
        EXPECT_TRUE(sameBits(recogniser.distanceAtAngle(path, templates[0], angle),
                             literal::distanceAtAngle(path, templates[0], angle)));
    }
}

TEST(RotationSearch, NeverReadsPastTheShorterPath) {
    const TemplatesGraphicsRecognizer recogniser;
    const Path two{{0.0, 0.0}, {0.0, 0.0}};
    const Path three{{3.0, 4.0}, {0.0, 1.0}, {7.0, 7.0}};
    EXPECT_EQ(recogniser.pathDistance(two, three), 3.0);
    EXPECT_TRUE(std::isnan(recogniser.pathDistance(three, two)));
    EXPECT_TRUE(std::isnan(recogniser.pathDistance({}, two)));
    EXPECT_TRUE(std::isnan(recogniser.distanceAtAngle(three, {1, "short", two}, 0.0)));
    EXPECT_TRUE(std::isnan(recogniser.distanceAtBestAngle(three, {1, "short", two})));
    EXPECT_TRUE(std::isnan(recogniser.distanceAtBestAngle({}, {1, "any", two})));
}

}  // namespace

}  // namespace Scrivo::test
