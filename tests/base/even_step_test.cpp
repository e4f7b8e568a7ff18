#include "base/even_step.h"

#include <gtest/gtest.h>

namespace servo::base {
namespace {

TEST(EvenStep, IsOneTwoOrFive) {
    EXPECT_DOUBLE_EQ(even_step(8000, 6), 2000);
    EXPECT_DOUBLE_EQ(even_step(10, 4), 5);
    EXPECT_DOUBLE_EQ(even_step(0.9, 4), 0.5);
    EXPECT_DOUBLE_EQ(even_step(4, 4), 1);
    EXPECT_DOUBLE_EQ(even_step(0, 4), 1);
}

}  // namespace
}  // namespace servo::base
