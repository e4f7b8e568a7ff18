// Frames on the line: what the drive takes for one and what it does with anything else.
#include "sim/frame.h"

#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

constexpr Eight kRead{0x40, 0x00, 0x20, 0x03, 0, 0, 0, 0};

TEST(Frame, KnownBytesOfARead) {
    const Frame made = make_frame(0x7F, {0x40, 0x10, 0x64, 0x03, 0, 0, 0, 0});
    const Frame told{0x7F, 0x40, 0x10, 0x64, 0x03, 0, 0, 0, 0, 0xCA};
    EXPECT_EQ(made, told);
}

TEST(Frame, SumOfZeroHasAZeroChecksum) {
    EXPECT_EQ(make_frame(0, {})[9], 0);
    EXPECT_TRUE(sum_is_right(make_frame(0, {})));
}

TEST(Frame, LineTimeIsTenBitsForEachByteRoundedUp) {
    EXPECT_EQ(line_time(10, 38400).count(), 2605);  // 2604.17
    EXPECT_EQ(line_time(1, 9600).count(), 1042);
    EXPECT_EQ(line_time(0, 9600).count(), 0);
}

TEST(FrameReader, TakesAFrameAfterItsTenthByteAndNotBefore) {
    DriveBench bench;
    const Bytes bytes = frame(127, kRead);
    const Bytes nine(bytes.begin(), bytes.end() - 1);
    bench.drive().receive(nine, microseconds(2400));
    EXPECT_FALSE(bench.drive().next_event());
    bench.drive().receive(Bytes{bytes.back()}, microseconds(2660));
    EXPECT_EQ(bench.drive().next_event(), microseconds(2960));  // 300 us of turnaround
}

TEST(FrameReader, EverySingleBitFlipIsIgnored) {
    DriveBench bench;
    for (std::size_t bit = 0; bit < 80; ++bit) {
        Bytes bytes = frame(127, kRead);
        bytes[bit / 8] = static_cast<std::uint8_t>(bytes[bit / 8] ^ 1U << bit % 8);
        EXPECT_TRUE(bench.exchange(bytes).empty()) << bit;
    }
    EXPECT_EQ(bench.drive().statistics().bad_checksum, 80U);
    EXPECT_TRUE(bench.ask(kRead));
}

TEST(FrameReader, EveryTruncationIsEndedBySilence) {
    DriveBench bench;
    for (std::size_t length = 1; length < 10; ++length) {
        Bytes bytes = frame(127, kRead);
        bytes.resize(length);
        EXPECT_TRUE(bench.exchange(bytes).empty());
        EXPECT_TRUE(bench.ask(kRead)) << length;
        EXPECT_EQ(bench.drive().statistics().broken, length);
    }
}

TEST(FrameReader, APauseJustUnderTheGapDoesNotBreakAFrame) {
    FrameReader reader(127, 38400);
    const Bytes bytes = frame(127, kRead);
    microseconds at{0};
    for (std::size_t i = 0; i < 10; ++i) {
        at += reader.gap() + line_time(1, 38400) - microseconds(1);
        const auto result = reader.take(bytes[i], at);
        EXPECT_EQ(result.event == FrameReader::Event::kFrame, i == 9);
        EXPECT_FALSE(result.ended_broken);
    }
}

TEST(FrameReader, APauseOfTheGapBreaksAFrame) {
    FrameReader reader(127, 38400);
    reader.take(0x7F, microseconds(1000));
    const auto result = reader.take(0x40, microseconds(1000) + reader.gap() + line_time(1, 38400));
    EXPECT_TRUE(result.ended_broken);
}

TEST(FrameReader, TheGapGrowsOnASlowLine) {
    EXPECT_EQ(FrameReader(127, 38400).gap().count(), 2000);
    EXPECT_EQ(FrameReader(127, 4800).gap(), line_time(4, 4800));
}

TEST(FrameReader, AForeignIdIsNotAnswered) {
    DriveBench bench;
    EXPECT_TRUE(bench.exchange(frame(126, kRead)).empty());
    EXPECT_EQ(bench.drive().statistics().foreign, 1U);
    EXPECT_TRUE(bench.ask(kRead));
}

TEST(FrameReader, AForeignFrameInABurstCostsOnlyItself) {
    DriveBench bench;
    Bytes burst = frame(126, kRead);
    const Bytes own = frame(127, kRead);
    burst.insert(burst.end(), own.begin(), own.end());
    EXPECT_EQ(bench.exchange(burst).size(), 1U);
}

TEST(FrameReader, AFlippedBitInABurstCostsOnlyItsFrame) {
    DriveBench bench;
    Bytes burst;
    for (int i = 0; i < 5; ++i) {
        const Bytes one = frame(127, kRead);
        burst.insert(burst.end(), one.begin(), one.end());
    }
    burst[24] ^= 0x10U;
    EXPECT_EQ(bench.exchange(burst).size(), 4U);
    EXPECT_EQ(bench.drive().statistics().frames, 4U);
}

TEST(FrameReader, ALostByteInABurstCostsTheRestOfItAndNoMore) {
    DriveBench bench;
    Bytes burst;
    for (int i = 0; i < 5; ++i) {
        const Bytes one = frame(127, kRead);
        burst.insert(burst.end(), one.begin(), one.end());
    }
    burst.erase(burst.begin() + 13);
    EXPECT_EQ(bench.exchange(burst).size(), 1U);
    EXPECT_TRUE(bench.ask(kRead));
}

TEST(FrameReader, TextOnTheLineIsNoFrame) {
    DriveBench bench;
    EXPECT_TRUE(bench.exchange({'h', 'i', '\r'}).empty());
    EXPECT_TRUE(bench.ask(kRead));
}

TEST(FrameReader, AnotherIdCanBeGiven) {
    Options options;
    options.id = 5;
    DriveBench bench(options);
    EXPECT_EQ(bench.read(0x200003), 40000U);
    EXPECT_TRUE(bench.exchange(frame(127, kRead)).empty());
}

TEST(Turnaround, AnAnswerMayStartThatLongAfterTheRequest) {
    Options options;
    options.turnaround = microseconds(1500);
    DriveBench bench(options);
    const auto answers = bench.exchange(frame(127, kRead));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].at, microseconds(2605 + 1500));
}

TEST(Turnaround, AnswersNeverOverlapOnTheLine) {
    Options options;
    options.turnaround = microseconds(0);
    DriveBench bench(options);
    Bytes burst;
    for (int i = 0; i < 8; ++i) {
        const Bytes one = frame(127, kRead);
        burst.insert(burst.end(), one.begin(), one.end());
    }
    const auto answers = bench.exchange(burst);
    ASSERT_EQ(answers.size(), 8U);
    for (std::size_t i = 1; i < answers.size(); ++i) {
        EXPECT_GE(answers[i].at, answers[i - 1].at + line_time(10, 38400));
    }
}

TEST(Queue, SixteenRequestsWaitAndOneMoreIsLost) {
    Options options;
    options.turnaround = std::chrono::milliseconds(100);  // slower than the frames come in
    DriveBench bench(options);
    Bytes burst;
    for (int i = 0; i < 20; ++i) {
        const Bytes one = frame(127, kRead);
        burst.insert(burst.end(), one.begin(), one.end());
    }
    bench.exchange(burst);
    bench.run(std::chrono::seconds(5));
    EXPECT_EQ(bench.drive().statistics().frames, 20U);
    EXPECT_EQ(bench.drive().statistics().overruns, 4U);
    EXPECT_EQ(bench.drive().statistics().answers, 16U);
}

TEST(Queue, AWriteIsExecutedBeforeTheNextFrameIsLookedAt) {
    DriveBench bench;
    Bytes burst = frame(127, {0x2B, 0x00, 0x20, 0x03, 0x39, 0x30, 0, 0});
    const Bytes read = frame(127, kRead);
    burst.insert(burst.end(), read.begin(), read.end());
    const auto answers = bench.exchange(burst);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].bytes[1], 0x60);
    EXPECT_EQ(answers[1].bytes[1], 0x4B);
    EXPECT_EQ(answers[1].bytes[5] | answers[1].bytes[6] << 8, 0x3039);
}

using DriveDeathTest = ::testing::Test;

TEST(DriveDeathTest, GoingBackInTimeEndsTheProgram) {
    DriveBench bench;
    bench.run(microseconds(1000));
    EXPECT_DEATH(bench.drive().advance(microseconds(999)), "back in time");
}

}  // namespace
}  // namespace servo::sim::test
