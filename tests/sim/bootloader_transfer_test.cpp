// The workstation's transfer against this bootloader, on the virtual bench: two readings of one
// dialogue, made apart from each other.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "firmware/download.h"
#include "sim/bootloader_bench.h"
#include "sim/chance.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct TransferOnSim : servo::test::VirtualBench {
    explicit TransferOnSim(Options options = BootBench::in_bootloader())
        : drive(time, line, store(), with_boot_values(std::move(options))) {}

    static const dictionary::Store& store() {
        static const dictionary::Store kStore = [] {
            dictionary::Store made;
            made.load(dictionary_file(boot_entries()));
            return made;
        }();
        return kStore;
    }

    void load(const std::string& payload, const std::string& type = "QRL400") {
        folder.put("a.servo", "This is " + type + " firmware 1234\r\n" + payload + "\r\n");
        ASSERT_TRUE(download.load_image(folder / "a.servo"));
    }
    void load(const std::vector<std::string>& blocks) {
        std::string payload;
        for (const std::string& block : blocks)
            payload += block;
        load(payload);
    }
    // The message at the end.
    std::string transfer() {
        if (!port.is_open()) open_link();
        download.Command4_Click();
        run_until([this] { return engine.state.download_active == 0; }, seconds(600));
        return download.result() ? download.result()->message : "no end";
    }
    std::string stored() { return drive.drive().program_memory().characters(); }

    base::Language language = base::Language::kEnglish;
    dictionary::Variant brand = dictionary::Variant::kAllItems;
    servo::test::SimDriveOnLine drive;
    firmware::Download download{{
        .engine = engine,
        .notice = notice,
        .language = language,
        .Tavro_Nevra_Other_mode = brand,
        .ask_file = [](const firmware::FileQuestion&) { return std::nullopt; },
        .software_version = [] { return std::string(); },
        .file_date =
            [](const std::filesystem::path& file) { return firmware::modification_date(file); },
    }};
};

constexpr const char* kFinished = "Download Finished!";

TEST(SimTransfer, FromTheBootloaderAndFromTheRunningProgram) {
    for (const bool in_bootloader : {true, false}) {
        Options options;
        options.bootloader = in_bootloader;
        TransferOnSim bench(options);
        const auto blocks = image_blocks(ImageSpec{});
        bench.load(blocks);
        EXPECT_EQ(bench.transfer(), kFinished);
        bench.run_for(seconds(2));
        EXPECT_TRUE(bench.drive.drive().running());
        EXPECT_EQ(bench.drive.drive().text(0x100A00), "SW 2.00.0001");
        EXPECT_EQ(bench.stored(), blocks[0] + blocks[1] + blocks[2]);
        // Once more, with the program that has just come.
        EXPECT_EQ(bench.transfer(), kFinished);
    }
}

// Capitals in the file are small letters on the line.
TEST(SimTransfer, CapitalsOfTheFileArriveAsSmallLetters) {
    TransferOnSim bench;
    std::string payload;
    for (const std::string& block : image_blocks(ImageSpec{}))
        payload += block;
    for (char& c : payload)
        c = static_cast<char>(std::toupper(c));
    bench.load(payload);
    EXPECT_EQ(bench.transfer(), kFinished);
}

TEST(SimTransfer, EveryFailureHasItsMessage) {
    struct Case {
        std::vector<std::string> faults;
        const char* message;
        bool bootloader = true;
    };
    const std::vector<Case> cases{
        {{"abort:2FFF00"}, "Shake hands with no response!", false},
        {{"boot-silent:entry"}, "Shake hands with no response!", false},
        {{"boot-silent:hi"}, "Shake hands with no response!"},
        {{"silent"}, "Shake hands with no response!"},
        {{"boot-wrong-type"}, "Firmware and bootloader not match!"},
        {{"boot-silent:type"}, "Firmware and bootloader not match!"},
        {{"boot-erase-fails"}, "Erase failed!"},
        {{"boot-erase:15000"}, "Erase failed!"},
        {{"boot-silent:erase"}, "Erase failed!"},
        {{"boot-no-switch"}, "Can't switch to block receive mode!"},
        {{"boot-silent:switch"}, "Can't switch to block receive mode!"},
        {{"boot-silent:block"}, "Programing overtime!"},
        {{"boot-refuse:2"}, "Programing overtime!"},
        {{"boot-programme:5000"}, "Programing overtime!"},
        {{"boot-flash:3"}, "Error,can't quit bootloader mode after reboot!"},
        {{"boot-start-fails"}, "Error,can't quit bootloader mode after reboot!"},
    };
    for (const Case& one : cases) {
        Options options;
        options.bootloader = one.bootloader;
        for (const std::string& fault : one.faults)
            ASSERT_FALSE(add_fault(options, fault));
        TransferOnSim bench(options);
        bench.load(image_blocks(ImageSpec{}));
        EXPECT_EQ(bench.transfer(), one.message) << one.faults[0];
        bench.run_for(seconds(2));
        EXPECT_FALSE(bench.drive.drive().running() && one.bootloader) << one.faults[0];
    }
}

TEST(SimTransfer, AnotherTypeOfImageIsRefusedByItsWordOrByGo) {
    ImageSpec spec;
    spec.type = "ZARN";
    std::string payload;
    for (const std::string& block : image_blocks(spec))
        payload += block;
    TransferOnSim named;
    named.load(payload, "ZARN");
    EXPECT_EQ(named.transfer(), "Firmware and bootloader not match!");
    TransferOnSim misnamed;
    misnamed.load(payload, "QRL400");
    EXPECT_EQ(misnamed.transfer(), "Error,can't quit bootloader mode after reboot!");
}

// Silence behind "go" is all that tells of a start, so a drive that hangs there looks like one.
TEST(SimTransfer, ADriveThatHangsBehindGoIsTakenForStarted) {
    Options options = BootBench::in_bootloader();
    ASSERT_FALSE(add_fault(options, "boot-silent:go"));
    TransferOnSim bench(options);
    bench.load(image_blocks(ImageSpec{}));
    EXPECT_EQ(bench.transfer(), kFinished);
    bench.run_for(seconds(2));
    EXPECT_FALSE(bench.drive.drive().running());
}

// The rule of the half block: a rest that is left out leaves the image without its last block.
TEST(SimTransfer, PayloadLengths) {
    struct Case {
        std::size_t bytes;  // of the program
        std::size_t length;
        std::size_t blocks;  // that are sent
        const char* message;
    };
    const char* const cut = "Error,can't quit bootloader mode after reboot!";
    const std::vector<Case> cases{
        {10, 2059, 0, "Programing overtime!"},
        {10, 2060, 0, "Programing overtime!"},
        {10, 2061, 1, kFinished},
        {10, 4120, 1, kFinished},
        {2000, 6179, 1, cut},
        {2000, 6180, 2, kFinished},
        {2000, 8240, 2, kFinished},
        {5000, 2 * 4120 + 2060, 2, cut},
        {5000, 2 * 4120 + 2061, 3, kFinished},
        {100 * 2048 - 64, 100 * 4120, 100, kFinished},
    };
    for (const Case& one : cases) {
        ImageSpec spec;
        spec.bytes = one.bytes;
        const std::size_t rest = one.length % 4120 == 0 ? 4120 : one.length % 4120;
        auto blocks = image_blocks(spec, rest);
        TransferOnSim bench;
        bench.load(blocks);
        EXPECT_EQ(bench.transfer(), one.message) << one.length;
        blocks.resize(one.blocks);
        std::string sent;
        for (const std::string& block : blocks)
            sent += block;
        EXPECT_EQ(bench.stored(), sent) << one.length;
        EXPECT_EQ(plain_crc32(bench.stored()), plain_crc32(sent)) << one.length;
    }
}

TEST(SimTransfer, ADriveWithoutAProgramIsPickedUpAfterPowerOffAndOn) {
    TransferOnSim bench;
    bench.load(image_blocks(ImageSpec{}));
    bench.open_link();
    bench.download.Command4_Click();
    bench.run_until([&] { return bench.engine.state.download_step == 8; });
    bench.run_for(milliseconds(300));
    bench.line.set_cut(true);
    bench.run_until([&] { return bench.engine.state.download_active == 0; });
    EXPECT_EQ(bench.download.result()->message, "Programing overtime!");
    bench.line.set_cut(false);
    bench.drive.drive().power_cycle();
    bench.run_for(seconds(1));
    EXPECT_TRUE(bench.drive.drive().in_bootloader());
    EXPECT_EQ(bench.transfer(), kFinished);
}

// Without the power cycle too: the bootloader has given the broken block up by then, and what the
// workstation asked for in between has ended by itself.
TEST(SimTransfer, AndWithoutPowerOffOnceTheBlockWasGivenUp) {
    TransferOnSim bench;
    bench.load(image_blocks(ImageSpec{}));
    bench.open_link();
    bench.download.Command4_Click();
    bench.run_until([&] { return bench.engine.state.download_step == 8; });
    bench.run_for(milliseconds(300));
    bench.line.set_cut(true);
    bench.run_for(milliseconds(100));
    bench.line.set_cut(false);
    bench.run_until([&] { return bench.engine.state.download_active == 0; });
    EXPECT_EQ(bench.download.result()->message, "Programing overtime!");
    bench.run_for(seconds(1));
    EXPECT_EQ(bench.transfer(), kFinished);
}

// Noise on both directions, a transfer for each seed. "Finished" with something else than the image
// in the drive would be a lie.
TEST(SimTransfer, OnABadLineItHoldsOrIsSaidToHaveFailed) {
    const auto blocks = image_blocks(ImageSpec{});
    const std::string sent = blocks[0] + blocks[1] + blocks[2];
    int finished = 0;
    int running = 0;
    constexpr int kSeeds = 100;
    for (std::uint64_t seed = 1; seed <= kSeeds; ++seed) {
        TransferOnSim bench;
        bench.open_link();
        Chance chance(mix(seed));
        // From one fault in 2,000 bytes to one in 50,000.
        const double share = 1.0 / (2000.0 + 48000.0 * unit(chance.next()));
        const auto noise = [&](std::uint8_t byte) -> std::vector<std::uint8_t> {
            if (!chance.happens(share)) return {byte};
            switch (chance.below(4)) {
                case 0:
                    return {};
                case 1:
                    return {byte, byte};
                case 2:
                    return {static_cast<std::uint8_t>(chance.below(256)), byte};
                case 3:
                    return {static_cast<std::uint8_t>(byte ^ 1U << chance.below(8))};
            }
            return {byte};
        };
        bench.line.to_drive.noise = noise;
        bench.line.to_pc.noise = noise;
        bench.load(blocks);
        const std::string message = bench.transfer();
        ASSERT_NE(message, "no end") << seed;
        bench.line.to_drive.noise = {};
        bench.line.to_pc.noise = {};
        if (message == kFinished) {
            ++finished;
            EXPECT_EQ(bench.stored(), sent) << seed;
            bench.run_for(seconds(2));
            if (bench.drive.drive().running()) ++running;
        }
        // Whatever came of it, a second attempt on a good line helps, after power off and on.
        bench.drive.drive().power_cycle();
        bench.run_for(seconds(2));
        EXPECT_EQ(bench.transfer(), kFinished) << seed;
        bench.run_for(seconds(2));
        EXPECT_TRUE(bench.drive.drive().running()) << seed;
    }
    fmt::print("{} transfers on a bad line: {} finished, {} of these run\n", kSeeds, finished,
               running);
    EXPECT_GT(finished, kSeeds / 4);
    EXPECT_LT(finished, kSeeds);
}

}  // namespace
}  // namespace servo::sim::test
