#include "Scrivo/Scrivo.h"

#include <gtest/gtest.h>

TEST(Pipeline, EmptyStrokeComesBackEmpty) {
    const auto result = Scrivo::optimizeAStroke({}, 800, 600, {});
    EXPECT_TRUE(result.path.empty());
    EXPECT_EQ(result.type, Scrivo::FIGURE_NONE);
}
