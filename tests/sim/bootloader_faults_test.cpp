// Each failure that can be asked for, and what the line's faults do to the bootloader's texts.
#include <gtest/gtest.h>

#include "sim/bootloader_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::string_view kBanner = "QRL400 bootloader 1.3\r\n";

Options with_faults(const std::vector<std::string>& specs) {
    Options options = BootBench::in_bootloader();
    for (const std::string& spec : specs)
        EXPECT_EQ(add_fault(options, spec), std::nullopt) << spec;
    return options;
}

TEST(BootFault, SilentEntryStillAnswersHi) {
    Options options = with_faults({"boot-silent:entry"});
    options.bootloader = false;
    BootBench bench(options);
    ASSERT_TRUE(bench.write(0x2FFF00, 0x55AA, 2));
    EXPECT_EQ(bench.listen(seconds(3)), "");
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_EQ(bench.command("hi"), kBanner);
    // The silence is the call's: a power-up with no program announces itself.
    EXPECT_TRUE(bench.prepare());
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(3)), kBanner);
}

TEST(BootFault, SilentInOneTurnIsDoneAndNotAnswered) {
    const auto blocks = image_blocks(ImageSpec{});
    struct Case {
        const char* step;
        std::vector<std::string> answers;  // to hi, type, e, w, block
    };
    const std::string switched = "switch to block receive mode\r\n";
    const std::vector<Case> cases{
        {"hi", {"", "right\r\n", "erased success\r\n", switched, "programme ok\r\n"}},
        {"type", {std::string(kBanner), "", "erased success\r\n", switched, "programme ok\r\n"}},
        {"erase", {std::string(kBanner), "right\r\n", "", switched, "programme ok\r\n"}},
        {"switch",
         {std::string(kBanner), "right\r\n", "erased success\r\n", "", "programme ok\r\n"}},
        {"block", {std::string(kBanner), "right\r\n", "erased success\r\n", switched, ""}},
    };
    for (const Case& one : cases) {
        BootBench bench(with_faults({std::string("boot-silent:") + one.step}));
        const std::vector<std::string> lines{"hi", "QRL400", "e", "w", blocks[0]};
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const milliseconds wait(i == 2 ? 4000 : 100);
            EXPECT_EQ(bench.command(lines[i], wait), one.answers[i]) << one.step << i;
        }
        EXPECT_EQ(bench.drive().program_memory().pages(), 1U) << one.step;
    }
}

TEST(BootFault, SilentGoHangsUntilThePowerGoesOff) {
    BootBench bench(with_faults({"boot-silent:go"}));
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    EXPECT_EQ(bench.command("go", seconds(10)), "");
    EXPECT_FALSE(bench.drive().running());
    EXPECT_EQ(bench.command("hi"), "");
    EXPECT_FALSE(bench.read(0x200001));
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(3)), kBanner);
}

TEST(BootFault, WrongTypeRefusesEveryWord) {
    BootBench bench(with_faults({"boot-wrong-type"}));
    EXPECT_EQ(bench.command("QRL400"), "QRL400 bootloader: wrong type\r\n");
    EXPECT_EQ(bench.command("e", seconds(4)), "QRL400 bootloader: type first\r\n");
}

TEST(BootFault, AFailedEraseTakesItsTimeAndLosesTheOldProgram) {
    Options options = with_faults({"boot-erase-fails"});
    options.bootloader = false;
    BootBench bench(options);
    ASSERT_TRUE(bench.write(0x2FFF00, 0x55AA, 2));
    bench.listen(seconds(1));
    bench.command("QRL400");
    EXPECT_EQ(bench.command("e", milliseconds(2550)), "");
    EXPECT_EQ(bench.listen(milliseconds(100)), "QRL400 bootloader: erase failed\r\n");
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: erase first\r\n");
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(3)), kBanner);
}

TEST(BootFault, TheEraseCanBeAsSlowAsAsked) {
    BootBench bench(with_faults({"boot-erase:20000"}));
    bench.command("QRL400");
    EXPECT_EQ(bench.command("e", milliseconds(19990)), "");
    EXPECT_EQ(bench.listen(milliseconds(20)), "erased success\r\n");
}

TEST(BootFault, WithNoTimesTheAnswersComeAtOnce) {
    BootBench bench(with_faults({"boot-erase:0", "boot-programme:0"}));
    ASSERT_EQ(bench.command("QRL400"), "right\r\n");
    EXPECT_EQ(bench.command("e", milliseconds(1)), "erased success\r\n");
    EXPECT_EQ(bench.command("w"), "switch to block receive mode\r\n");
    EXPECT_EQ(bench.command(image_blocks(ImageSpec{})[0], milliseconds(1)), "programme ok\r\n");
}

TEST(BootFault, ProgrammingCanBeAsSlowAsAsked) {
    BootBench bench(with_faults({"boot-programme:5000"}));
    ASSERT_TRUE(bench.prepare());
    ASSERT_EQ(bench.command("w"), "switch to block receive mode\r\n");
    EXPECT_EQ(bench.command(image_blocks(ImageSpec{})[0], milliseconds(4990)), "");
    EXPECT_EQ(bench.listen(milliseconds(20)), "programme ok\r\n");
}

TEST(BootFault, NoSwitchRefusesBlockReception) {
    BootBench bench(with_faults({"boot-no-switch"}));
    ASSERT_TRUE(bench.prepare());
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: no block receive mode\r\n");
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootFault, OneBlockIsRefusedAlthoughItIsGood) {
    const auto blocks = image_blocks(ImageSpec{});
    for (std::size_t refused = 1; refused <= blocks.size(); ++refused) {
        BootBench bench(with_faults({"boot-refuse:" + std::to_string(refused)}));
        ASSERT_TRUE(bench.prepare());
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(bench.send_block(blocks[i]),
                      i + 1 == refused ? "QRL400 bootloader: block error, checksum\r\n"
                                       : "programme ok\r\n");
        }
        EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n");
        // Sent again it is another block, and taken.
        EXPECT_EQ(bench.send_block(blocks[refused - 1]), "programme ok\r\n");
        EXPECT_EQ(bench.command("go"), "");
    }
}

TEST(BootFault, AWrongBitInTheMemoryIsFoundByGo) {
    for (const char* spec : {"boot-flash:1", "boot-flash:2", "boot-flash:3"}) {
        BootBench bench(with_faults({spec}));
        ASSERT_TRUE(bench.prepare());
        ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
        EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n") << spec;
    }
}

TEST(BootFault, AStartThatFailsBringsTheBannerBack) {
    BootBench bench(with_faults({"boot-start-fails"}));
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    EXPECT_EQ(bench.command("go", milliseconds(490)), "");
    EXPECT_EQ(bench.listen(milliseconds(20)), kBanner);
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_EQ(bench.version(), "SW 1.00");
    bench.drive().boot_options().start_fails = false;
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    EXPECT_EQ(bench.command("go", seconds(2)), "");
    EXPECT_TRUE(bench.drive().running());
}

TEST(BootFault, TheOldProgramToo) {
    Options options = with_faults({"boot-start-fails"});
    options.bootloader = false;
    BootBench bench(options);
    ASSERT_TRUE(bench.write(0x2FFF00, 0x55AA, 2));
    bench.listen(seconds(1));
    EXPECT_EQ(bench.command("go", milliseconds(510)), kBanner);
    EXPECT_TRUE(bench.drive().in_bootloader());
}

TEST(BootLineFault, SilentKeepsTextsBackToo) {
    BootBench bench(with_faults({"silent"}));
    EXPECT_EQ(bench.command("hi"), "");
    EXPECT_EQ(bench.command("QRL400"), "");
    bench.drive().faults().silent = false;
    EXPECT_EQ(bench.command("e", seconds(4)), "erased success\r\n");
}

TEST(BootLineFault, DropAndDelayHoldForTexts) {
    BootBench dropping(with_faults({"drop:1"}));
    EXPECT_EQ(dropping.command("hi"), "");
    EXPECT_EQ(dropping.drive().statistics().dropped, 1U);
    BootBench late(with_faults({"delay:200"}));
    const auto answers = late.exchange({'h', 'i', '\r'}, seconds(1));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].at, microseconds(3 * 10'000'000 / 38400 + 1 + 300) + milliseconds(200));
}

TEST(BootLineFault, CorruptLoseStutterAndDoubleHoldForTexts) {
    const std::string banner(kBanner);
    BootBench corrupt(with_faults({"corrupt:1"}));
    const std::string wrong = corrupt.command("hi");
    EXPECT_EQ(wrong.size(), banner.size());
    EXPECT_NE(wrong, banner);
    BootBench lose(with_faults({"lose:1"}));
    EXPECT_EQ(lose.command("hi").size(), banner.size() - 1);
    BootBench stutter(with_faults({"stutter:1"}));
    EXPECT_EQ(stutter.command("hi").size(), banner.size() + 1);
    BootBench doubled(with_faults({"double:1"}));
    EXPECT_EQ(doubled.command("hi"), banner + banner);
    BootBench foreign(with_faults({"foreign:1"}));
    EXPECT_EQ(foreign.command("hi"), banner);
}

TEST(BootStatistics, CountWhatCameAndWhatWasSaid) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    bench.send_block("abc");
    bench.command("go");
    const Statistics& counted = bench.drive().statistics();
    EXPECT_EQ(counted.commands, 8U);  // hi, type, e, four times w, go
    EXPECT_EQ(counted.blocks, 3U);
    EXPECT_EQ(counted.refusals, 1U);
    EXPECT_EQ(counted.texts, 11U);
    EXPECT_EQ(counted.lost_input, 0U);
    EXPECT_EQ(counted.answers, 0U);
}

}  // namespace
}  // namespace servo::sim::test
