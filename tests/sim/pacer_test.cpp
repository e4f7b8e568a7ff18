// The arithmetic of the line's pace.
#include "sim/pacer.h"

#include <gtest/gtest.h>

#include <array>

namespace servo::sim {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

TEST(LineClock, BytesInARowEndAtExactMultiples) {
    LineClock clock(38400);
    nanoseconds end{0};
    for (int i = 0; i < 3840; ++i)
        end = clock.take(seconds(5));
    EXPECT_EQ(end, seconds(6));
}

// Ten million bytes without a pause: not a nanosecond off.
TEST(LineClock, NothingDriftsInALongRun) {
    LineClock clock(115200);
    nanoseconds end{0};
    for (int i = 0; i < 11'520'000; ++i)
        end = clock.take(nanoseconds(0));
    EXPECT_EQ(end, seconds(1000));
}

TEST(LineClock, APauseStartsANewRun) {
    LineClock clock(9600);
    EXPECT_EQ(clock.take(nanoseconds(0)), nanoseconds(1'041'666));
    EXPECT_EQ(clock.take(nanoseconds(500)), nanoseconds(2'083'333));
    EXPECT_EQ(clock.take(milliseconds(10)), milliseconds(10) + nanoseconds(1'041'666));
}

TEST(LineClock, AnotherRateHoldsFromTheNextByteOn) {
    LineClock clock(9600);
    clock.take(nanoseconds(0));
    clock.set_baud(38400);
    EXPECT_EQ(clock.take(nanoseconds(0)), nanoseconds(1'041'666 + 260'416));
}

TEST(PacedBytes, NoByteBeforeItsTime) {
    PacedBytes bytes(38400, 10, seconds(1));
    const std::array<std::uint8_t, 3> sent{1, 2, 3};
    bytes.put(sent, milliseconds(1));
    EXPECT_TRUE(bytes.take(milliseconds(1) + nanoseconds(260'415)).empty());
    const auto first = bytes.take(milliseconds(1) + nanoseconds(260'416));
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].value, 1);
    EXPECT_EQ(bytes.take(milliseconds(2)).size(), 2U);
    EXPECT_FALSE(bytes.next());
}

TEST(PacedBytes, WaitsForAWholeGroupAndNoLongerThanItsSpan) {
    const std::array<std::uint8_t, 12> sent{};
    PacedBytes frames(38400, 10, seconds(1));
    frames.put(sent, nanoseconds(0));
    EXPECT_EQ(frames.next(), nanoseconds(2'604'166));
    PacedBytes pieces(38400, 10, milliseconds(1));
    pieces.put(sent, nanoseconds(0));
    EXPECT_EQ(pieces.next(), nanoseconds(1'041'666));  // four bytes end within 1 ms of the first
    pieces.take(*pieces.next());
    EXPECT_EQ(pieces.next(), nanoseconds(2'083'333));
}

TEST(PacedBytes, AShortGroupIsWaitedForToItsEnd) {
    PacedBytes bytes(38400, 10, seconds(1));
    const std::array<std::uint8_t, 4> sent{};
    bytes.put(sent, nanoseconds(0));
    EXPECT_EQ(bytes.next(), nanoseconds(1'041'666));
}

}  // namespace
}  // namespace servo::sim
