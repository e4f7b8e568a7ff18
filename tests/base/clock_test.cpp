#include "base/clock.h"

#include <gtest/gtest.h>

namespace servo::base {
namespace {

TEST(Clock, SteadyClockNeverGoesBack) {
    const SteadyClock clock;
    auto before = clock.now();
    for (int i = 0; i < 1000; ++i) {
        const auto now = clock.now();
        ASSERT_GE(now, before);
        before = now;
    }
}

TEST(Clock, SleepBlocksAtLeastAsLongAsAsked) {
    SteadyClock clock;
    const auto begin = clock.now();
    clock.sleep(std::chrono::milliseconds(2));
    EXPECT_GE(clock.now() - begin, std::chrono::milliseconds(2));
}

}  // namespace
}  // namespace servo::base
