#include <gtest/gtest.h>
TEST(Campaign, Empty) {}
