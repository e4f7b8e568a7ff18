// Payloads of awkward lengths: the blocks and the bytes on the line, exactly.
#include <ctime>

#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

struct Payload {
    std::size_t characters;
    std::size_t blocks;
};

class Payloads : public testing::TestWithParam<Payload>, public TransferBench {};

}  // namespace

TEST_P(Payloads, BlocksAndBytesOnTheLineAreAsTold) {
    const auto [characters, blocks] = GetParam();
    const std::string image = payload(characters);
    load(characters);
    ASSERT_EQ(data().fw_blocks->size(), blocks + 1);
    EXPECT_EQ(data().fw_blocks->back(), "");
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish(300s));

    std::string expected = "hi\rZARN\re\r";
    for (std::size_t i = 0; i < std::max<std::size_t>(blocks, 1); ++i)
        expected += "w\r" + (blocks == 0 ? std::string() : image.substr(i * 4120, 4120) + "\r");
    if (blocks > 0) expected += "go\r";
    EXPECT_EQ(sent().substr(0, expected.size()), expected);

    if (blocks == 0) {
        EXPECT_EQ(sent().size(), expected.size()) << "nothing goes out";
        EXPECT_EQ(box().second, "Programing overtime!");
        EXPECT_EQ(drive.blocks, 0);
        return;
    }
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.blocks, static_cast<int>(blocks));
    const std::string whole = image.substr(0, blocks * 4120);
    EXPECT_EQ(drive.stored, whole);
    if (whole == image) {
        EXPECT_EQ(TextBootloader::checksum_text(drive.stored),
                  TextBootloader::checksum_text(image));
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, Payloads,
                         testing::Values(Payload{0, 0}, Payload{1, 0}, Payload{2059, 0},
                                         Payload{2060, 0}, Payload{2061, 1}, Payload{4120, 1},
                                         Payload{4120 + 2059, 1}, Payload{6180, 2},
                                         Payload{8240, 2}, Payload{4120 * 100, 100}),
                         [](const auto& named) { return std::to_string(named.param.characters); });

namespace {
struct NoBlocks : testing::Test, TransferBench {};
}  // namespace

TEST_F(NoBlocks, ReplyToNothingDoesNotEndTheStep) {
    load(2060);
    drive.in_bootloader = true;
    drive.instead = [](int, const std::string& reply) {
        return reply.starts_with("switch") ? std::optional(std::vector<TextBootloader::Piece>{
                                                 {{}, reply}, {100ms, "programmed\r\n"}})
                                           : std::nullopt;
    };
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(box().second, "Programing overtime!");
    EXPECT_TRUE(data().step8_string.ends_with("programmed\r\n")) << "heard, but there was no block";
    EXPECT_EQ(data().ProgressBar1, 0);
}

TEST_F(NoBlocks, StartBeforeAnyBlocksWereReadEndsTheSameWay) {
    folder.put("b.servo", "This is ZARN firmware 99");
    ASSERT_TRUE(download.load_image(folder / "b.servo"));
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(box().second, "Programing overtime!");
}

namespace {
struct LargePayload : testing::Test, TransferBench {};
}  // namespace

TEST_F(LargePayload, HalfAMegabyteUsesTheLineAndTakesLittleRealTime) {
    const std::clock_t real_begin = std::clock();
    constexpr std::size_t kCharacters = 500'000;
    load(kCharacters);
    port.record = false;
    drive.in_bootloader = true;
    drive.erase_time = {};
    start();
    const auto begin = time.now();
    ASSERT_TRUE(finish(300s));
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(kCharacters).substr(0, 121 * 4120));
    const std::chrono::duration<double> taken = time.now() - begin;
    const std::chrono::duration<double> least = line.to_drive.time_of(drive.stored.size());
    EXPECT_GE(least / taken, 0.92);
    // Processor time: other work on the machine does not count.
    EXPECT_LT(static_cast<double>(std::clock() - real_begin) / CLOCKS_PER_SEC, 2.0);
}
