#include "Beautifier/fit/Share.h"

#include <cmath>
#include <gtest/gtest.h>

namespace Scrivo::test {

namespace {

using namespace beautifier;

TEST(Share, IsALogarithmWithinBounds) {
    EXPECT_DOUBLE_EQ(share(0.3, 2.0), std::log(0.15));
    EXPECT_DOUBLE_EQ(share(1e-5, 1.0), std::log(MIN_SHARE));
    EXPECT_DOUBLE_EQ(share(5.0, 1.0), std::log(MAX_SHARE));
    EXPECT_DOUBLE_EQ(share(1.0, 0.0), std::log(MAX_SHARE));
    EXPECT_DOUBLE_EQ(share(0.0, 0.0), std::log(MIN_SHARE));
}

}  // namespace

}  // namespace Scrivo::test
