// The recorder's buffer on its way over the line, in segments.
#include <gtest/gtest.h>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using namespace recorder;

const Eight kBegin{0x40, 0x00, 0x23, 0x13, 0, 0, 0, 0};

Eight segment(bool toggle) {
    return {static_cast<std::uint8_t>(toggle ? 0x70 : 0x60), 0x00, 0x23, 0x13, 0, 0, 0, 0};
}

// A recorder that has recorded kWord or kByte as the number of the step.
class UploadBench : public RecorderBench {
  public:
    explicit UploadBench(std::int64_t count, std::int64_t slot = kU16,
                         std::uint32_t object = kWord) {
        set(kSlotA, slot);
        set(kCount, count);
        feed(object, same);
    }
};

std::string bytes_of(const Column& numbers, int width) {
    std::string out;
    for (const std::int64_t number : numbers) {
        for (int i = 0; i < width; ++i)
            out += static_cast<char>(static_cast<std::uint64_t>(number) >> (8 * i));
    }
    return out;
}

TEST(Upload, IsTheSampledBytes) {
    UploadBench bench(100);
    EXPECT_EQ(bench.read_text(kBuffer), bytes_of(counted(1, 1, 100), 2));
    EXPECT_EQ(bench.drive().text(kBuffer), bytes_of(counted(1, 1, 100), 2));
}

TEST(Upload, OfTheWholeBufferHas1171Segments) {
    UploadBench bench(4096);
    const Eight told{0x41, 0x00, 0x23, 0x13, 0x00, 0x20, 0, 0};
    EXPECT_EQ(bench.ask(kBegin), told);
    std::string bytes;
    int segments = 0;
    for (bool toggle = false;; toggle = !toggle) {
        const auto answer = bench.ask(segment(toggle));
        ASSERT_TRUE(answer);
        ++segments;
        const std::uint8_t command = (*answer)[0];
        const bool last = (command & 1) != 0;
        // 8192 is seven times 1170 and two more; the last toggle is 0.
        ASSERT_EQ(command, last ? 0x0B : toggle ? 0x10 : 0x00);
        bytes.append(answer->begin() + 1, answer->begin() + (last ? 3 : 8));
        if (last) break;
    }
    EXPECT_EQ(segments, 1171);
    EXPECT_EQ(bytes, bytes_of(counted(1, 1, 4096), 2));
}

struct Length {
    int bytes;
    std::vector<std::uint8_t> commands;
};

class LastSegment : public ::testing::TestWithParam<Length> {};

TEST_P(LastSegment, TellsItsUnusedBytesAndItsToggle) {
    UploadBench bench(GetParam().bytes, kI8, kByte);
    bench.ask(kBegin);
    bool toggle = false;
    for (const std::uint8_t command : GetParam().commands) {
        const auto answer = bench.ask(segment(toggle));
        ASSERT_TRUE(answer);
        EXPECT_EQ((*answer)[0], command);
        toggle = !toggle;
    }
    bench.ask(segment(toggle));
    EXPECT_EQ(bench.refusal(), 0x05040001U);
}

INSTANTIATE_TEST_SUITE_P(Lengths, LastSegment,
                         ::testing::Values(Length{1, {0x0D}}, Length{6, {0x03}}, Length{7, {0x01}},
                                           Length{8, {0x00, 0x1D}}, Length{13, {0x00, 0x13}},
                                           Length{14, {0x00, 0x11}},
                                           Length{21, {0x00, 0x10, 0x01}}));

TEST(Upload, OfAnEmptyBufferIsOneEmptySegment) {
    RecorderBench bench;
    const Eight told{0x41, 0x00, 0x23, 0x13, 0, 0, 0, 0};
    EXPECT_EQ(bench.ask(kBegin), told);
    EXPECT_EQ(bench.ask(segment(false)), (Eight{0x0F, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Upload, ARepeatedRequestBringsTheSameSegment) {
    UploadBench bench(10);
    bench.ask(kBegin);
    const auto first = bench.ask(segment(false));
    EXPECT_EQ(bench.ask(segment(false)), first);
    EXPECT_EQ(bench.ask(segment(false)), first);
    const auto second = bench.ask(segment(true));
    EXPECT_NE(second, first);
    EXPECT_EQ(bench.ask(segment(true)), second);
    const auto last = bench.ask(segment(false));
    EXPECT_EQ(last, (Eight{0x03, 8, 0, 9, 0, 10, 0, 0}));
    EXPECT_EQ(bench.ask(segment(false)), last);
}

TEST(Upload, BeginsAnewWhenItIsAskedTo) {
    UploadBench bench(20);
    bench.ask(kBegin);
    const auto first = bench.ask(segment(false));
    bench.ask(segment(true));
    bench.ask(segment(false));
    bench.ask(kBegin);
    EXPECT_EQ(bench.ask(segment(false)), first);
}

TEST(Upload, CanBeMadeAgainAfterAStop) {
    UploadBench bench(20);
    const auto once = bench.read_text(kBuffer);
    bench.set(kCommand, 0);
    EXPECT_EQ(bench.read_text(kBuffer), once);
}

TEST(Upload, IsRefusedWhileTheRecorderRuns) {
    RecorderBench bench;
    bench.set(kSlotA, kU16);
    bench.set(kCount, 4000);
    bench.start();
    EXPECT_FALSE(bench.read_text(kBuffer));
    EXPECT_EQ(bench.refusal(), 0x08000022U);
    bench.wait();
    EXPECT_EQ(bench.read_text(kBuffer).value_or("").size(), 8000U);
}

// The segments under way are those of the recording that they began with.
TEST(Upload, ANewRecordingDoesNotDisturbTheOneUnderWay) {
    UploadBench bench(10);
    const std::string before = bench.drive().text(kBuffer).value_or("");
    bench.ask(kBegin);
    std::string bytes;
    bool toggle = false;
    const auto take = [&](std::ptrdiff_t used) {
        const auto answer = bench.ask(segment(toggle));
        ASSERT_TRUE(answer);
        bytes.append(answer->begin() + 1, answer->begin() + 1 + used);
        toggle = !toggle;
    };
    take(7);
    bench.start();
    take(7);
    bench.wait();
    take(6);
    EXPECT_EQ(bytes, before);
    EXPECT_NE(bench.read_text(kBuffer), before);
}

TEST(Upload, OtherObjectsMayBeReadInBetween) {
    UploadBench bench(10);
    bench.ask(kBegin);
    bench.ask(segment(false));
    EXPECT_EQ(bench.read(kCommand), 0U);
    EXPECT_EQ(bench.ask(segment(true)), (Eight{0x10, 0, 5, 0, 6, 0, 7, 0}));
}

TEST(Upload, TheBufferCannotBeWritten) {
    UploadBench bench(10);
    EXPECT_FALSE(bench.write(kBuffer, 1, 4));
    EXPECT_EQ(bench.refusal(), 0x06010002U);
}

}  // namespace
}  // namespace servo::sim::test
