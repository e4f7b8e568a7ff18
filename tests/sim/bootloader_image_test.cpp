// Images as they lie in files: the two that are shipped, and what the maker of images can make.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "base/file.h"
#include "sim/bootloader_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct ImageFile {
    std::string header;
    std::string payload;  // in small letters
};

ImageFile read_image(const std::filesystem::path& path) {
    const std::string text = base::read_file(path).value_or("");
    base::LineReader lines(text);
    ImageFile file;
    file.header = lines.next().value_or("");
    file.payload = lines.next().value_or("");
    std::transform(file.payload.begin(), file.payload.end(), file.payload.begin(), ::tolower);
    return file;
}

// Blocks as the workstation cuts them: a rest of less than half a block is left out.
std::vector<std::string> cut(const std::string& payload) {
    std::vector<std::string> blocks;
    for (std::size_t at = 0; at < payload.size(); at += 4120)
        blocks.push_back(payload.substr(at, 4120));
    if (!blocks.empty() && blocks.back().size() < 2060) blocks.pop_back();
    return blocks;
}

// The answer to "go" behind all blocks, or to the first block that was refused.
std::string transfer(BootBench& bench, const std::vector<std::string>& blocks) {
    if (!bench.prepare(bench.drive().boot_options().type)) return "not prepared";
    for (const std::string& block : blocks) {
        const std::string answer = bench.send_block(block);
        if (answer != "programme ok\r\n") return answer;
    }
    const std::string answer = bench.command("go");
    bench.run(seconds(2));
    return answer;
}

void expect_good(const ImageFile& file, std::size_t blocks, const std::string& version) {
    BootBench bench(BootBench::in_bootloader());
    ASSERT_EQ(cut(file.payload).size(), blocks);
    ASSERT_EQ(transfer(bench, cut(file.payload)), "");
    ASSERT_TRUE(bench.drive().running());
    EXPECT_EQ(bench.version(), version);
    EXPECT_EQ(bench.drive().program_memory().characters(), file.payload);
    char check[16];
    std::snprintf(check, sizeof check, "%llX", static_cast<long long>(bench.check_value()));
    EXPECT_EQ(file.header, std::string("This is QRL400 firmware ") + check);
}

TEST(ShippedImage, BothAreTakenAndShowTheirVersions) {
    const std::filesystem::path folder = SERVO_BIN_DIR "/firmware";
    expect_good(read_image(folder / "QRL400_1.06.0401.servo"), 20, "SW 1.06.0401");
    expect_good(read_image(folder / "QRL400_1.07.0518.servo"), 60, "SW 1.07.0518");
}

TEST(ShippedImage, OneChangedCharacterAnywhereIsFound) {
    const auto blocks = cut(read_image(SERVO_BIN_DIR "/firmware/QRL400_1.06.0401.servo").payload);
    ASSERT_EQ(blocks.size(), 20U);
    BootBench bench(BootBench::in_bootloader());
    ASSERT_TRUE(bench.prepare());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::string wrong = blocks[i];
        const std::size_t at = (i * 1009 + 5) % wrong.size();
        wrong[at] = wrong[at] == '7' ? '8' : '7';
        EXPECT_EQ(bench.send_block(wrong), "QRL400 bootloader: block error, checksum\r\n") << i;
    }
    EXPECT_EQ(bench.drive().program_memory().pages(), 0U);
}

class MakeFirmware : public ::testing::Test {
  protected:
    MakeFirmware()
        : folder_(std::filesystem::temp_directory_path() /
                  ("servo_make_firmware_" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~MakeFirmware() override { std::filesystem::remove_all(folder_); }

    int run(const std::string& arguments) {
        const std::string command = SERVO_SOURCE_DIR "/scripts/make_firmware " + path().string() +
                                    " " + arguments + " >/dev/null 2>&1";
        return std::system(command.c_str());
    }
    std::filesystem::path path() const { return folder_ / "a.servo"; }
    ImageFile made() const { return read_image(path()); }

    std::filesystem::path folder_;
};

TEST_F(MakeFirmware, MakesTheShippedImages) {
    ASSERT_EQ(run("--version 'SW 1.06.0401' --blocks 20"), 0);
    EXPECT_EQ(base::read_file(path()),
              base::read_file(SERVO_SOURCE_DIR "/data/firmware/QRL400_1.06.0401.servo"));
    ASSERT_EQ(run("--version 'SW 1.07.0518' --blocks 60"), 0);
    EXPECT_EQ(base::read_file(path()),
              base::read_file(SERVO_SOURCE_DIR "/data/firmware/QRL400_1.07.0518.servo"));
}

TEST_F(MakeFirmware, FillsTheLastBlockUpSoThatNothingIsCut) {
    ASSERT_EQ(run("--bytes 2000"), 0);
    EXPECT_EQ(made().payload.size(), 2U * 4120);
    expect_good(made(), 2, "SW 1.06.0401");
}

TEST_F(MakeFirmware, WithoutPaddingAShortRestIsCutAndTheImageIsNotWhole) {
    ASSERT_EQ(run("--bytes 2000 --no-padding"), 0);
    const ImageFile file = made();
    EXPECT_EQ(file.payload.size(), 4120U + 16 + 2 * 16 + 8);
    BootBench bench(BootBench::in_bootloader());
    ASSERT_EQ(cut(file.payload).size(), 1U);
    EXPECT_EQ(transfer(bench, cut(file.payload)), "QRL400 bootloader: image not valid\r\n");
}

TEST_F(MakeFirmware, WithoutPaddingALongRestIsAShortBlock) {
    ASSERT_EQ(run("--bytes 3500 --no-padding"), 0);
    EXPECT_EQ(made().payload.size(), 4120U + 16 + 2 * 1516 + 8);
    expect_good(made(), 2, "SW 1.06.0401");
}

TEST_F(MakeFirmware, MakesAPayloadOfAnyLength) {
    for (const std::size_t length : {2059, 2060, 2061, 4119, 4120}) {
        ASSERT_EQ(run("--bytes 10 --length " + std::to_string(length)), 0);
        EXPECT_EQ(made().payload.size(), length);
    }
    ASSERT_EQ(run("--bytes 2000 --length 6181"), 0);
    expect_good(made(), 2, "SW 1.06.0401");
    EXPECT_NE(run("--bytes 10 --length 100"), 0);
    EXPECT_NE(run("--bytes 10 --length 4121"), 0);
}

TEST_F(MakeFirmware, MakesWhatTheBootloaderFinds) {
    ASSERT_EQ(run("--blocks 3 --damage 2"), 0);
    BootBench damaged(BootBench::in_bootloader());
    EXPECT_EQ(transfer(damaged, cut(made().payload)),
              "QRL400 bootloader: block error, checksum\r\n");
    EXPECT_EQ(damaged.drive().program_memory().pages(), 1U);
    ASSERT_EQ(run("--blocks 3 --wrong-check"), 0);
    BootBench wrong(BootBench::in_bootloader());
    EXPECT_EQ(transfer(wrong, cut(made().payload)), "QRL400 bootloader: image not valid\r\n");
}

TEST_F(MakeFirmware, TakesAnotherTypeVersionAndProgram) {
    ASSERT_EQ(run("--type ZARN --version v9 --program " SERVO_SOURCE_DIR "/CMakeLists.txt"), 0);
    const ImageFile file = made();
    EXPECT_TRUE(file.header.starts_with("This is ZARN firmware ")) << file.header;
    Options options = BootBench::in_bootloader();
    options.boot.type = "ZARN";
    BootBench bench(options);
    EXPECT_EQ(transfer(bench, cut(file.payload)), "");
    EXPECT_EQ(bench.version(), "v9");
    const Bytes image = bench.drive().program_memory().bytes();
    ASSERT_GT(image.size(), 64U);
    EXPECT_EQ(std::string(image.begin() + 64, image.end()),
              base::read_file(SERVO_SOURCE_DIR "/CMakeLists.txt"));
}

TEST_F(MakeFirmware, RefusesWhatNoBootloaderTakes) {
    for (const char* arguments :
         {"--type ''", "--type 'A B'", "--type SEVENTEENLETTERSX", "--type firmware",
          "--version ''", "--version 123456789012345678901234567890123", "--bytes 0",
          "--bytes 524225", "--blocks 257", "--blocks 2 --damage 3", "--blocks 2 --bytes 3"}) {
        EXPECT_NE(run(arguments), 0) << arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(path()));
    EXPECT_EQ(run("--bytes 524224"), 0);
    EXPECT_EQ(made().payload.size(), 256U * 4120);
}

}  // namespace
}  // namespace servo::sim::test
