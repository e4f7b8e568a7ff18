// The bootloader's dialogue, turn by turn.
#include <gtest/gtest.h>

#include "sim/bootloader_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using namespace std::string_literals;

constexpr std::string_view kBanner = "QRL400 bootloader 1.3\r\n";
constexpr std::string_view kNotUnderstood = "QRL400 bootloader: line not understood\r\n";
constexpr Eight kCall{0x2B, 0xFF, 0x2F, 0, 0xAA, 0x55, 0, 0};
constexpr Eight kRead{0x40, 0x00, 0x20, 1, 0, 0, 0, 0};

std::string as_text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(BootEntry, TheCallIsAcknowledgedAndTheBannerComesByItself) {
    BootBench bench;
    const auto answers = bench.exchange(frame(127, kCall), milliseconds(5));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes, frame(127, {0x60, 0xFF, 0x2F, 0, 0xAA, 0x55, 0, 0}));
    EXPECT_FALSE(bench.drive().running());
    EXPECT_FALSE(bench.drive().in_bootloader());
    const auto left = answers[0].at + microseconds(2605);
    bench.run(seconds(1));
    const auto said = bench.drive().take_output();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(as_text(said[0].bytes), kBanner);
    EXPECT_EQ(said[0].at, left + milliseconds(150) + microseconds(300));
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_FALSE(bench.drive().running());
}

TEST(BootEntry, TakesThePowerOffTheMotor) {
    BootBench bench;
    bench.drive().set_value(0x60FF00, 2730667);
    bench.enable(3);
    bench.run(milliseconds(500));
    EXPECT_GT(*bench.drive().value(0x60F60C), 0);  // current
    EXPECT_EQ(*bench.drive().value(0x604100) & 0x6F, 0x27);
    bench.exchange(frame(127, kCall));
    bench.run(seconds(4));
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_EQ(*bench.drive().value(0x604100) & 0x6F, 0x00);
    EXPECT_EQ(bench.drive().value(0x606C00), 0);
}

TEST(BootEntry, WithEnablingAtPowerUpTheMotorStaysOffToo) {
    Options options;
    ASSERT_FALSE(add_setting(options, "2FFB00=1"));
    BootBench bench(BootBench::in_bootloader(options));
    bench.run(seconds(1));
    EXPECT_EQ(*bench.drive().value(0x604100) & 0x6F, 0x00);
}

TEST(BootEntry, ARefusedCallLeavesTheDriveRunning) {
    Options options;
    ASSERT_FALSE(add_fault(options, "abort:2FFF00"));
    BootBench bench(options);
    EXPECT_FALSE(bench.write(0x2FFF00, 0x55AA, 2));
    bench.run(seconds(1));
    EXPECT_TRUE(bench.drive().running());
}

TEST(BootEntry, ADriveThatHasJustBeenMadeHasNothingToAnnounce) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.listen(seconds(3)), "");
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootEntry, WithTheOtherProtocolTheBootloaderSpeaksAllTheSame) {
    Options options = BootBench::in_bootloader();
    ASSERT_FALSE(add_setting(options, "65100C=0"));
    BootBench bench(options);
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootObjects, NoneIsAnsweredAndNoTextIsSaidToThem) {
    BootBench bench(BootBench::in_bootloader());
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(bench.exchange(frame(127, kRead)).empty());
    // Line ends inside a frame are bytes like others, so the last of these is no command either.
    EXPECT_TRUE(bench.exchange(frame(127, {0x40, 0x0D, 0x20, 0x0A, 0x0D, 0x0D, 0, 0})).empty());
    EXPECT_TRUE(bench.exchange(frame(127, {0x40, 'h', 'i', 0x0D, 0x0D, 'g', 'o', 0x0D})).empty());
    Bytes burst = frame(127, kRead);
    const Bytes second = frame(127, {0x40, 0x0D, 0x0D, 0, 0, 0, 0, 0});
    burst.insert(burst.end(), second.begin(), second.end());
    EXPECT_TRUE(bench.exchange(burst).empty());
    EXPECT_EQ(bench.listen(seconds(2)), "");
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_EQ(bench.drive().statistics().frames, 0U);
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootObjects, TheProgramHearsNoText) {
    BootBench bench;
    EXPECT_EQ(bench.command("hi"), "");
    EXPECT_EQ(bench.say("go\r\n", seconds(2)), "");
    EXPECT_TRUE(bench.read(0x200001));
}

TEST(BootDialogue, AnswersComeAfterTheTurnaround) {
    BootBench bench(BootBench::in_bootloader());
    const auto answers = bench.exchange({'h', 'i', '\r'});
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].at, microseconds(3 * 10'000'000 / 38400 + 1 + 300));
}

TEST(BootDialogue, TypeWordIsComparedLetterByLetter) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.command("QRL400"), "right\r\n");
    for (const char* word :
         {"qrl400", "QRL401", "QRL40", "QRL4000", " QRL400", "QRL400 ", "ZARN"}) {
        EXPECT_EQ(bench.command(word), "QRL400 bootloader: wrong type\r\n") << word;
    }
}

TEST(BootDialogue, AnotherTypeIsAnOption) {
    Options options = BootBench::in_bootloader();
    options.boot.type = "ZARN";
    BootBench bench(options);
    EXPECT_EQ(bench.command("hi"), "ZARN bootloader 1.3\r\n");
    EXPECT_EQ(bench.command("QRL400"), "ZARN bootloader: wrong type\r\n");
    EXPECT_EQ(bench.command("ZARN"), "right\r\n");
}

TEST(BootDialogue, NothingIsErasedBeforeTheRightType) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.command("e", seconds(5)), "QRL400 bootloader: type first\r\n");
    bench.command("QRL400");
    bench.command("ZARN");
    EXPECT_EQ(bench.command("e", seconds(5)), "QRL400 bootloader: type first\r\n");
    bench.command("QRL400");
    EXPECT_EQ(bench.command("e", seconds(5)), "erased success\r\n");
}

TEST(BootDialogue, TheEraseTakesItsTime) {
    BootBench bench(BootBench::in_bootloader());
    bench.command("QRL400");
    const auto begun = bench.now() + microseconds(2 * 10'000'000 / 38400 + 1);
    const auto answers = bench.exchange({'e', '\r'}, seconds(5));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(as_text(answers[0].bytes), "erased success\r\n");
    EXPECT_EQ(answers[0].at - begun, milliseconds(2560) + microseconds(300));
}

TEST(BootDialogue, NoBlockBeforeTheErase) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: erase first\r\n");
    bench.command("QRL400");
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: erase first\r\n");
}

TEST(BootDialogue, ABlockTakesItsTimeAndIsFollowedByACommandAgain) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    ASSERT_EQ(bench.command("w"), "switch to block receive mode\r\n");
    const auto blocks = image_blocks(ImageSpec{});
    Bytes bytes(blocks[0].begin(), blocks[0].end());
    bytes.push_back('\r');
    const auto begun = bench.now() + microseconds(bytes.size() * 10'000'000 / 38400 + 1);
    const auto answers = bench.exchange(bytes);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(as_text(answers[0].bytes), "programme ok\r\n");
    EXPECT_EQ(answers[0].at - begun, milliseconds(10) + microseconds(300));
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootDialogue, ABrokenBlockIsRefusedAndCanBeSentAgain) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    const auto blocks = image_blocks(ImageSpec{});
    std::string broken = blocks[0];
    broken[2000] = broken[2000] == '0' ? '1' : '0';
    EXPECT_EQ(bench.send_block(broken), "QRL400 bootloader: block error, checksum\r\n");
    EXPECT_TRUE(bench.send_blocks(blocks));
    EXPECT_EQ(bench.command("go"), "");
    bench.run(seconds(2));
    EXPECT_TRUE(bench.drive().running());
}

TEST(BootDialogue, AWholeImageStartsAndShowsItsVersionAndCheckValue) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.version(), "SW 1.00");
    EXPECT_EQ(bench.check_value(), 4711);
    const ImageSpec spec;
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(spec)));
    const auto begun = bench.now() + microseconds(3 * 10'000'000 / 38400 + 1);
    EXPECT_EQ(bench.command("go"), "");
    EXPECT_EQ(bench.listen(begun + milliseconds(1200) - microseconds(1) - bench.now()), "");
    EXPECT_FALSE(bench.drive().running());
    bench.run(microseconds(1));
    EXPECT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.listen(seconds(2)), "");
    EXPECT_EQ(bench.read_text(0x100A00), "SW 2.00.0001");
    EXPECT_EQ(bench.read(0x1F5601), image_check(spec));
    EXPECT_EQ(bench.drive().program_memory().bytes(), image_bytes(spec));
}

TEST(BootDialogue, GoWithTheOldProgramStartsThat) {
    BootBench bench;
    bench.exchange(frame(127, kCall));
    bench.run(seconds(1));
    bench.drive().take_output();
    EXPECT_EQ(bench.say("go\r\n", seconds(2)), "");
    EXPECT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.version(), "SW 1.00");
}

TEST(BootDialogue, GoWithoutAWholeImageIsRefused) {
    BootBench bench(BootBench::in_bootloader());
    const std::string refusal = "QRL400 bootloader: image not valid\r\n";
    EXPECT_EQ(bench.command("go"), refusal);
    ASSERT_TRUE(bench.prepare());
    EXPECT_EQ(bench.command("go"), refusal);
    const auto blocks = image_blocks(ImageSpec{});
    ASSERT_EQ(blocks.size(), 3U);
    ASSERT_TRUE(bench.send_blocks({blocks[0], blocks[1]}));
    EXPECT_EQ(bench.command("go"), refusal);
    ASSERT_TRUE(bench.send_blocks({blocks[2]}));
    EXPECT_EQ(bench.command("go"), "");
    bench.run(seconds(2));
    EXPECT_TRUE(bench.drive().running());
}

TEST(BootDialogue, AnImageOfAnotherTypeIsNotStarted) {
    BootBench bench(BootBench::in_bootloader());
    ImageSpec spec;
    spec.type = "ZARN";
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(spec)));
    EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n");
}

TEST(BootDialogue, ASecondEraseForgetsTheBlocks) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    ASSERT_TRUE(bench.prepare());
    EXPECT_EQ(bench.drive().program_memory().pages(), 0U);
    EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n");
}

TEST(BootDialogue, NoRefusalHoldsAPhraseOfSuccess) {
    BootBench bench(BootBench::in_bootloader());
    std::string refusals = bench.command("e") + bench.command("w") + bench.command("go") +
                           bench.command("ZARN") + bench.command("\xFF");
    ASSERT_TRUE(bench.prepare());
    refusals += bench.send_block("abc") + bench.send_block(std::string(5000, 'a'));
    bench.drive().boot_options().no_switch = true;
    refusals += bench.command("w");
    bench.drive().boot_options().erase_fails = true;
    refusals += bench.command("e", seconds(5));
    for (const char* phrase : {"right", "erased success", "switch to block r", "programme"}) {
        EXPECT_EQ(refusals.find(phrase), std::string::npos) << refusals;
    }
    EXPECT_EQ(std::count(refusals.begin(), refusals.end(), '\r'), 9);
}

TEST(BootInput, ACommandMayComeInPiecesAtEveryPlace) {
    const std::vector<std::string> lines{"hi\r", "QRL400\r", "e\r", "w\r"};
    const std::vector<std::string> answers{std::string(kBanner), "right\r\n", "erased success\r\n",
                                           "switch to block receive mode\r\n"};
    for (std::size_t place = 1; place < 7; ++place) {
        BootBench bench(BootBench::in_bootloader());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string& line = lines[i];
            const std::size_t cut = std::min(place, line.size() - 1);
            EXPECT_EQ(bench.say(line.substr(0, cut), milliseconds(900)), "");
            EXPECT_EQ(bench.say(line.substr(cut), seconds(5)), answers[i]) << place;
        }
    }
}

TEST(BootInput, ABlockMayComeInPiecesAtEveryPlace) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    const std::string block = image_blocks(ImageSpec{})[0] + "\r";
    for (std::size_t place = 0; place <= 4120; place += 103) {
        ASSERT_EQ(bench.command("w"), "switch to block receive mode\r\n");
        EXPECT_EQ(bench.say(block.substr(0, place), milliseconds(100)), "");
        EXPECT_EQ(bench.say(block.substr(place)), "programme ok\r\n") << place;
    }
}

TEST(BootInput, LineFeedsAndEmptyLinesDoNotCount) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.say("\r\n\r\r\n\n"), "");
    EXPECT_EQ(bench.say("hi\r\n"), kBanner);
    EXPECT_EQ(bench.say("h\ni\r"), kBanner);
    ASSERT_TRUE(bench.prepare());
    EXPECT_EQ(bench.say("w\r\n"), "switch to block receive mode\r\n");
    EXPECT_EQ(bench.say("\r\n"), "");
    EXPECT_EQ(bench.say(image_blocks(ImageSpec{})[0] + "\r\n"), "programme ok\r\n");
}

TEST(BootInput, NoiseSpoilsItsLineAndEndsWithAShortSilence) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.say("\xFF\x01hi\r"s), kNotUnderstood);
    EXPECT_EQ(bench.say("\x80"), kNotUnderstood);  // nothing behind it: after 5 ms
    EXPECT_EQ(bench.command("hi"), kBanner);
    // Noise of printable characters joins the next line, as it must.
    EXPECT_EQ(bench.say("x"), "");
    EXPECT_EQ(bench.command("hi"), "QRL400 bootloader: wrong type\r\n");
}

TEST(BootInput, NoiseOnASlowLineIsNotCutBetweenItsBytes) {
    Options options = BootBench::in_bootloader();
    options.baud = 300;
    BootBench bench(options);
    EXPECT_EQ(bench.say("\xFFhi\r", milliseconds(500)), kNotUnderstood);
    EXPECT_EQ(bench.exchange(frame(127, kRead), milliseconds(500)).size(), 0U);
}

// So that a "go" whose end is lost is heard of while the sender still watches.
TEST(BootInput, ACommandWithoutItsEndIsGivenUpAfterASecond) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.say("go", milliseconds(990)), "");
    EXPECT_EQ(bench.listen(milliseconds(20)), kNotUnderstood);
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootInput, ABlockWithoutItsEndIsGivenUpAfterTwoSeconds) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    for (const std::string& part : {"0000"s, image_blocks(ImageSpec{})[0]}) {
        ASSERT_EQ(bench.command("w"), "switch to block receive mode\r\n");
        EXPECT_EQ(bench.say(part, milliseconds(1990)), "");
        EXPECT_EQ(bench.listen(milliseconds(20)), "QRL400 bootloader: block error, incomplete\r\n");
        EXPECT_EQ(bench.command("hi"), kBanner);
    }
    ASSERT_EQ(bench.command("w"), "switch to block receive mode\r\n");
    EXPECT_EQ(bench.listen(seconds(3)), "QRL400 bootloader: block error, incomplete\r\n");
}

TEST(BootInput, OversizeLinesAreRefusedWhole) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_EQ(bench.command(std::string(64, 'a')), "QRL400 bootloader: wrong type\r\n");
    EXPECT_EQ(bench.command(std::string(65, 'a')), kNotUnderstood);
    EXPECT_EQ(bench.command(std::string(5000, 'a')), kNotUnderstood);
    EXPECT_EQ(bench.command("hi"), kBanner);
    ASSERT_TRUE(bench.prepare());
    std::string block = image_blocks(ImageSpec{})[0];
    EXPECT_EQ(bench.send_block(block + "."), "QRL400 bootloader: block error, length\r\n");
    EXPECT_EQ(bench.send_block(block + block), "QRL400 bootloader: block error, length\r\n");
    EXPECT_EQ(bench.send_block(block), "programme ok\r\n");
}

TEST(BootInput, WhileItErases64BytesAreKeptAndMoreAreLost) {
    BootBench bench(BootBench::in_bootloader());
    bench.command("QRL400");
    EXPECT_EQ(bench.say("e\rhi\rw\r", milliseconds(100)), "");
    EXPECT_EQ(bench.listen(seconds(3)),
              "erased success\r\n" + std::string(kBanner) + "switch to block receive mode\r\n");
    BootBench full(BootBench::in_bootloader());
    full.command("QRL400");
    // 21 times "hi" and its end are 63 bytes; the 22nd keeps its "h" only.
    std::string many = "e\r";
    for (int i = 0; i < 30; ++i)
        many += "hi\r";
    EXPECT_EQ(full.say(many, milliseconds(100)), "");
    const std::string said = full.listen(milliseconds(2700));
    std::size_t banners = 0;
    for (std::size_t at = said.find("1.3"); at != std::string::npos; at = said.find("1.3", at + 1))
        ++banners;
    EXPECT_EQ(banners, 21U);
    EXPECT_EQ(full.drive().statistics().lost_input, 26U);
}

TEST(BootInput, AnswersDoNotOverlapOnTheLine) {
    BootBench bench(BootBench::in_bootloader());
    const std::string three = "hi\rhi\rhi\r";
    const auto said = bench.exchange(Bytes(three.begin(), three.end()));
    ASSERT_EQ(said.size(), 3U);
    for (std::size_t i = 1; i < said.size(); ++i) {
        EXPECT_GE(said[i].at - said[i - 1].at, microseconds(kBanner.size() * 10'000'000 / 38400));
    }
}

TEST(BootInput, TheRateOfTheLineHolds) {
    Options options = BootBench::in_bootloader();
    options.baud = 9600;
    BootBench bench(options);
    EXPECT_EQ(bench.drive().baud(), 9600U);
    ASSERT_TRUE(bench.prepare());
    EXPECT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
}

}  // namespace
}  // namespace servo::sim::test
