// Which program the drive starts with, over power cycles and runs.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "sim/bootloader_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::string_view kBanner = "QRL400 bootloader 1.3\r\n";
constexpr std::uint32_t kSave = 0x65766173;
constexpr std::uint32_t kLoad = 0x64616F6C;

class TempState {
  public:
    TempState()
        : folder_(std::filesystem::temp_directory_path() /
                  ("servo_boot_" + std::to_string(getpid()) + "_" + std::to_string(++count_))) {
        std::filesystem::create_directories(folder_);
    }
    TempState(const TempState&) = delete;
    TempState& operator=(const TempState&) = delete;
    ~TempState() { std::filesystem::remove_all(folder_); }
    Options options() const {
        Options made;
        made.state_file = folder_ / "state";
        return made;
    }

  private:
    static inline int count_ = 0;
    std::filesystem::path folder_;
};

void call(BootBench& bench) {
    ASSERT_TRUE(bench.write(0x2FFF00, 0x55AA, 2));
    ASSERT_EQ(bench.listen(milliseconds(200)), kBanner);
}

bool transfer(BootBench& bench, const ImageSpec& spec) {
    const bool sent =
        bench.prepare() && bench.send_blocks(image_blocks(spec)) && bench.command("go").empty();
    bench.run(seconds(2));
    return sent && bench.drive().running();
}

TEST(BootState, PowerOffBeforeTheEraseBringsTheOldProgramBack) {
    BootBench bench;
    call(bench);
    bench.command("QRL400");
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(2)), "");
    EXPECT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.version(), "SW 1.00");
}

TEST(BootState, OnceErasedItStaysInTheBootloaderOverPowerCycles) {
    BootBench bench;
    call(bench);
    ASSERT_TRUE(bench.prepare());
    for (int i = 0; i < 3; ++i) {
        bench.drive().power_cycle();
        EXPECT_EQ(bench.listen(milliseconds(149)), "");
        EXPECT_EQ(bench.listen(milliseconds(2)), kBanner);
        EXPECT_FALSE(bench.drive().running());
        EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n");
    }
    EXPECT_TRUE(transfer(bench, ImageSpec{}));
}

TEST(BootState, PowerOffDuringTheEraseIsTheSame) {
    BootBench bench;
    call(bench);
    bench.command("QRL400");
    bench.command("e", milliseconds(100));
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(5)), kBanner);
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: erase first\r\n");
}

// Which pages came in is known in working memory only.
TEST(BootState, PowerOffInTheMiddleOfATransferLosesWhatCame) {
    BootBench bench;
    call(bench);
    const auto blocks = image_blocks(ImageSpec{});
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(blocks));
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(1)), kBanner);
    EXPECT_EQ(bench.command("go"), "QRL400 bootloader: image not valid\r\n");
    EXPECT_EQ(bench.command("w"), "QRL400 bootloader: erase first\r\n");
}

TEST(BootState, PowerOffInTheMiddleOfABlockEndsBlockReception) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    bench.command("w");
    bench.say("0000");
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(5)), kBanner);
    EXPECT_EQ(bench.command("hi"), kBanner);
}

TEST(BootState, ANewProgramStaysOverRestartsAndPowerCycles) {
    BootBench bench;
    call(bench);
    const ImageSpec spec;
    ASSERT_TRUE(transfer(bench, spec));
    for (int i = 0; i < 2; ++i) {
        bench.drive().power_cycle();
        EXPECT_EQ(bench.listen(seconds(2)), "");
        EXPECT_EQ(bench.version(), spec.version);
        EXPECT_EQ(bench.check_value(), image_check(spec));
    }
    ASSERT_TRUE(bench.write(0x2FFF00, 0xAA55, 2));
    bench.run(seconds(2));
    EXPECT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.version(), spec.version);
}

TEST(BootState, ASecondTransferReplacesTheFirst) {
    BootBench bench;
    call(bench);
    ASSERT_TRUE(transfer(bench, ImageSpec{}));
    call(bench);
    ImageSpec second;
    second.version = "SW 2.00.0002";
    second.bytes = 100;
    ASSERT_TRUE(transfer(bench, second));
    EXPECT_EQ(bench.version(), "SW 2.00.0002");
    EXPECT_EQ(bench.check_value(), image_check(second));
}

TEST(BootState, TheOptionPutsTheDriveThereAsAfterABrokenTransfer) {
    BootBench bench(BootBench::in_bootloader());
    EXPECT_TRUE(bench.drive().in_bootloader());
    bench.drive().power_cycle();
    EXPECT_EQ(bench.listen(seconds(5)), kBanner);
    ASSERT_TRUE(transfer(bench, ImageSpec{}));
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_TRUE(bench.drive().running());
}

TEST(BootState, StoredParametersOutliveATransfer) {
    BootBench bench;
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    call(bench);
    ASSERT_TRUE(transfer(bench, ImageSpec{}));
    EXPECT_EQ(bench.read(0x200001), 11U);
}

TEST(BootState, FactoryParametersDoNotBringTheFactoryProgramBack) {
    BootBench bench;
    call(bench);
    ASSERT_TRUE(transfer(bench, ImageSpec{}));
    ASSERT_TRUE(bench.write(0x101101, kLoad, 4));
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(bench.version(), "SW 2.00.0001");
}

TEST(BootStateFile, KeepsAnErasedDriveInItsBootloaderBetweenRuns) {
    const TempState state;
    {
        BootBench bench(state.options());
        call(bench);
        ASSERT_TRUE(bench.prepare());
    }
    BootBench bench(state.options());
    EXPECT_TRUE(bench.drive().in_bootloader());
    EXPECT_EQ(bench.command("hi"), kBanner);
    ASSERT_TRUE(transfer(bench, ImageSpec{}));
    EXPECT_EQ(bench.version(), "SW 2.00.0001");
}

TEST(BootStateFile, KeepsTheNewProgramsVersionBetweenRuns) {
    const TempState state;
    const ImageSpec spec;
    {
        BootBench bench(BootBench::in_bootloader(state.options()));
        ASSERT_TRUE(transfer(bench, spec));
    }
    BootBench bench(state.options());
    EXPECT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.read_text(0x100A00), spec.version);
    EXPECT_EQ(bench.read(0x1F5601), image_check(spec));
}

TEST(BootStateFile, ASettingGoesBeforeTheVersionAtTheFirstPowerUp) {
    const TempState state;
    {
        BootBench bench(BootBench::in_bootloader(state.options()));
        ASSERT_TRUE(transfer(bench, ImageSpec{}));
    }
    Options options = state.options();
    ASSERT_FALSE(add_setting(options, "100A00=mine"));
    BootBench bench(options);
    EXPECT_EQ(bench.version(), "mine");
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(bench.version(), "SW 2.00.0001");
}

TEST(BootStateFile, TheOptionIsKeptThereToo) {
    const TempState state;
    { const BootBench bench(BootBench::in_bootloader(state.options())); }
    BootBench bench(state.options());
    EXPECT_TRUE(bench.drive().in_bootloader());
}

// A program that could not be noted as installed is not there at the next start.
TEST(BootStateFile, OneThatCannotBeWrittenAnyMoreLeavesTheDriveInItsBootloader) {
    const TempState state;
    BootBench bench(BootBench::in_bootloader(state.options()));
    ASSERT_TRUE(bench.prepare());
    ASSERT_TRUE(bench.send_blocks(image_blocks(ImageSpec{})));
    const auto folder = state.options().state_file.parent_path();
    const auto kept = folder / "kept";
    std::filesystem::copy(state.options().state_file, kept);
    EXPECT_EQ(bench.command("go"), "");
    std::filesystem::copy(kept, state.options().state_file,
                          std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(bench.listen(seconds(2)), kBanner);
    EXPECT_FALSE(bench.drive().running());
}

}  // namespace
}  // namespace servo::sim::test
