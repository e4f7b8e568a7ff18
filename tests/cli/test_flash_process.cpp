// servoctl flash over a real pseudo-terminal, against the simulated drive's bootloader.
#include <gtest/gtest.h>

#include "cli/running_drive.h"

namespace servo::cli {
namespace {

using test::Process;
using test::program;
using test::Result;
using test::RunningDrive;

// 20 blocks: some seconds at this rate.
const std::string kImage = std::string(SERVO_BIN_DIR) + "/firmware/QRL400_1.06.0401.servo";

std::vector<std::string> fast(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"--baud", "115200"});
    return more;
}

std::vector<std::string> flash_words(const RunningDrive& drive) {
    return {program("servoctl"), "--port", drive.line(), "--baud", "115200", "flash", kImage};
}

TEST(FlashProcess, TheDriveRunsTheNewFirmwareBehindIt) {
    const RunningDrive drive(fast());
    const Result result = drive.ctl(fast({"flash", "--verify", kImage}));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Download Finished!\n");
    EXPECT_NE(result.err.find("Enter the bootloader\n"), std::string::npos);
    EXPECT_NE(result.err.find("100 %  block 20/20"), std::string::npos);
    EXPECT_NE(result.err.find("check value E74E3F67"), std::string::npos);
    const Result version = drive.ctl(fast({"read", "100A00"}));
    EXPECT_NE(version.out.find("SW 1.06.0401"), std::string::npos) << version.out;
}

TEST(FlashProcess, ADriveOfAnotherTypeKeepsItsFirmware) {
    const RunningDrive drive(fast({"--type", "QRL750"}));
    const Result result = drive.ctl(fast({"flash", kImage}));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "Firmware and bootloader not match!\n");
    EXPECT_NE(result.err.find("its firmware is untouched"), std::string::npos);
}

TEST(FlashProcess, CtrlCClosesThePortAndTheNextRunPicksTheDriveUp) {
    const RunningDrive drive(fast());
    Process process(flash_words(drive));
    ASSERT_TRUE(process.wait_for_err("block 2/20")) << process.err();
    process.signal(SIGINT);
    EXPECT_EQ(process.wait(), 1);
    EXPECT_EQ(process.out(), "");
    EXPECT_NE(process.err().find("interrupted; the transfer is cut off"), std::string::npos);
    EXPECT_NE(process.err().find("The drive holds no complete firmware"), std::string::npos);
    const Result again = drive.ctl(fast({"flash", "--verify", kImage}));
    EXPECT_EQ(again.status, 0) << again.err;
}

TEST(FlashProcess, ALineThatDiesInTheMiddleIsNoLink) {
    RunningDrive drive(fast());
    Process process(flash_words(drive));
    ASSERT_TRUE(process.wait_for_err("block 1/20")) << process.err();
    drive.unplug();
    EXPECT_EQ(process.wait(), 3);
    EXPECT_NE(process.out().find("!\n"), std::string::npos) << "one of the messages of a failure";
    EXPECT_NE(process.err().find("The drive holds no complete firmware"), std::string::npos);
}

TEST(FlashProcess, ASecondCopyOnThePortIsRefused) {
    const RunningDrive drive(fast());
    Process process(flash_words(drive));
    ASSERT_TRUE(process.wait_for_err("block 1/20")) << process.err();
    const Result second = drive.ctl(fast({"flash", kImage}));
    EXPECT_EQ(second.status, 3);
    EXPECT_NE(second.err.find("is in use by another program"), std::string::npos) << second.err;
    EXPECT_EQ(process.wait(), 0) << process.err();
    EXPECT_EQ(process.out(), "Download Finished!\n");
}

}  // namespace
}  // namespace servo::cli
