// The added lines in words, in every state of the form.
#include <gtest/gtest.h>

#include "../firmware/transfer_bench.h"
#include "firmware/download_shown.h"

namespace servo::firmware {
namespace {

using base::Language;
using namespace std::chrono_literals;

struct DownloadLines : testing::Test, servo::test::TransferBench {
    std::string step_line() { return transfer_line(download, port.is_open()).step; }
};

TEST_F(DownloadLines, BeforeAndAfterLoading) {
    EXPECT_EQ(step_line(), "No image is loaded");
    EXPECT_EQ(image_facts(download), "");
    load(4120 * 3);
    EXPECT_EQ(step_line(), "Ready");
    EXPECT_EQ(image_facts(download), "3 blocks, 12363 bytes");
    language = Language::kChinese;
    EXPECT_EQ(step_line(), "就绪");
    EXPECT_EQ(image_facts(download), "3 块，12363 字节");
}

TEST_F(DownloadLines, EachStepHasItsName) {
    load(4120);
    start();
    std::vector<std::string> lines;
    run_until(
        [&] {
            if (download.transfer_running() && (lines.empty() || lines.back() != step_line()))
                lines.push_back(step_line());
            return !download.transfer_running();
        },
        60s);
    EXPECT_EQ(lines, (std::vector<std::string>{"Flush the line", "Shake hands",
                                               "Enter the bootloader", "Check the firmware type",
                                               "Erase", "Switch to block reception", "Block 1 of 1",
                                               "Start the new firmware"}));
}

TEST_F(DownloadLines, AnAnswerBehindATransferIsTold) {
    load(4120);
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(step_line(), "Finished; waiting for the drive");
    ++engine.counters.frames;
    EXPECT_EQ(step_line(), "Finished; the drive answers again");
}

TEST_F(DownloadLines, TheSameFileCanBeLoadedAgainBehindAFailureOnly) {
    load(4120);
    EXPECT_FALSE(can_load_again(download));
    drive.silent = true;
    start();
    EXPECT_FALSE(can_load_again(download));
    ASSERT_TRUE(finish());
    EXPECT_TRUE(can_load_again(download));
    EXPECT_EQ(step_line(), "Failed: Enter the bootloader");
    load(4120);
    EXPECT_FALSE(can_load_again(download)) << "it has been";
}

}  // namespace
}  // namespace servo::firmware
