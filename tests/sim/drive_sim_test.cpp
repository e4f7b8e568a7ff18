// The program on a real pseudo-terminal. Only what holds on a busy machine is asserted: that
// answers come, and that none comes before the line could have carried it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "sim/bootloader_bench.h"
#include "sim/drive_bench.h"
#include "sim/drive_sim_process.h"
#include "sim/pty_line.h"

namespace servo::sim::test {
namespace {

using Clock = std::chrono::steady_clock;

TEST_F(DriveSim, AnswersOnItsLineAndEndsWithItsInput) {
    start({});
    open_line();
    EXPECT_EQ(ask(kRead), frame(127, {0x4B, 0x00, 0x20, 0x03, 0x40, 0x9C, 0, 0}));
    close(input_);
    input_ = -1;
    const int status = end();
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(DriveSim, SurvivesThatTheOtherSideClosesAndOpensAgain) {
    start({});
    for (int i = 0; i < 3; ++i) {
        open_line();
        EXPECT_EQ(ask(kRead).size(), 10U) << i;
        close(line_);
        line_ = -1;
    }
}

TEST_F(DriveSim, WithALinkItSurvivesItsInputAndEndsOnSigterm) {
    const auto link = folder_ / "line";
    start({"--link", link.string()});
    EXPECT_EQ(std::filesystem::read_symlink(link), path_);
    close(input_);
    input_ = -1;
    open_line();
    EXPECT_EQ(ask(kRead).size(), 10U);
    kill(child_, SIGTERM);
    EXPECT_EQ(end(), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(DriveSim, LinesOfItsInputMoveItsPins) {
    start({"--din", "10000101"});
    type_in("din\ndin 3 0\n\nnonsense\ndin 2 1\ndin\n");
    EXPECT_EQ(line(), "inputs 10000101, outputs 0000000");
    EXPECT_EQ(line(), "inputs 10000011, outputs 0000000");
    type_in("din 4 pul");
    type_in("se 3600000\ndin\n");
    EXPECT_EQ(line(), "inputs 10001011, outputs 0000000");
}

TEST_F(DriveSim, WithALinkItReadsItsInputToo) {
    start({"--link", (folder_ / "line").string()});
    type_in("din 1 1\ndin\n");
    EXPECT_EQ(line(), "inputs 00000001, outputs 0000000");
    close(input_);
    input_ = -1;
    open_line();
    EXPECT_EQ(ask(kRead).size(), 10U);
}

TEST_F(DriveSim, TheLineIsRaw) {
    start({"--set", "20000D=a\r\nb\x03\x04"});
    open_line();
    ask({0x40, 0x00, 0x20, 0x0D, 0, 0, 0, 0});
    const Bytes segment = ask({0x60, 0x00, 0x20, 0x0D, 0x0D, 0x0A, 0x03, 0x04});
    EXPECT_EQ(segment, frame(127, {0x03, 'a', '\r', '\n', 'b', 3, 4, 0}));
}

// A pseudo-terminal itself would carry this in no time.
TEST_F(DriveSim, NoAnswerComesBeforeTheLineCouldCarryIt) {
    start({"--baud", "9600", "--turnaround", "2000"});
    open_line();
    const Bytes one = frame(127, kRead);
    Bytes burst;
    for (int i = 0; i < 10; ++i)
        burst.insert(burst.end(), one.begin(), one.end());
    const auto begin = Clock::now();
    ASSERT_EQ(::write(line_, burst.data(), burst.size()), 100);
    EXPECT_EQ(read_bytes(line_, 100).size(), 100U);
    // Ten requests one after the other, the turnaround, and the last answer: each byte is 1.04 ms.
    const std::chrono::duration<double> took = Clock::now() - begin;
    EXPECT_GE(took.count(), (100 + 10) * 10 / 9600.0 + 0.002);
}

TEST_F(DriveSim, PrintsFramesOfBothDirections) {
    start({"--print-frames"});
    open_line();
    ask(kRead);
    std::string text;
    while (std::count(text.begin(), text.end(), '\n') < 2) {
        const Bytes byte = read_bytes(output_, 1);
        ASSERT_EQ(byte.size(), 1U);
        text += static_cast<char>(byte[0]);
    }
    EXPECT_NE(text.find("< 7F 40 00 20 03 00 00 00 00 1E"), std::string::npos) << text;
    EXPECT_NE(text.find("> 7F 4B"), std::string::npos) << text;
}

TEST_F(DriveSim, KeepsItsStateFileBetweenRuns) {
    const auto state = (folder_ / "state").string();
    start({"--state", state});
    open_line();
    ask({0x2F, 0x00, 0x20, 0x01, 33, 0, 0, 0});
    EXPECT_EQ(ask({0x23, 0x10, 0x10, 0x01, 0x73, 0x61, 0x76, 0x65})[1], 0x60);
    kill(child_, SIGTERM);
    EXPECT_EQ(end(), 0);
    close(line_);
    close(input_);
    close(output_);
    start({"--state", state});
    open_line();
    EXPECT_EQ(ask({0x40, 0x00, 0x20, 0x01, 0, 0, 0, 0})[5], 33);
}

TEST_F(DriveSim, SpeaksAsABootloaderAtTheLinesRate) {
    start({"--bootloader", "--type", "ZARN", "--baud", "9600"});
    open_line();
    const auto begin = Clock::now();
    const std::string_view banner = "ZARN bootloader 1.3\r\n";
    ASSERT_EQ(::write(line_, "hi\r", 3), 3);
    const Bytes said = read_bytes(line_, banner.size());
    EXPECT_EQ(std::string(said.begin(), said.end()), banner);
    const std::chrono::duration<double> took = Clock::now() - begin;
    EXPECT_GE(took.count(), static_cast<double>(3 + banner.size()) * 10 / 9600.0);
}

// A block is longer than what a terminal hands over at once.
TEST_F(DriveSim, TakesAWholeImageAsABootloader) {
    start({"--bootloader", "--speed", "20", "--fault", "boot-erase:10"});
    open_line();
    const auto say = [&](const std::string& line, std::string_view answer) {
        const std::string sent = line + "\r";
        ASSERT_EQ(::write(line_, sent.data(), sent.size()), static_cast<ssize_t>(sent.size()));
        const Bytes said = read_bytes(line_, answer.size());
        ASSERT_EQ(std::string(said.begin(), said.end()), answer);
    };
    say("QRL400", "right\r\n");
    say("e", "erased success\r\n");
    for (const std::string& block : image_blocks(ImageSpec{})) {
        say("w", "switch to block receive mode\r\n");
        say(block, "programme ok\r\n");
    }
    say("go", "");
    Bytes answer;
    for (int i = 0; i < 50 && answer.empty(); ++i) {
        const Bytes request = frame(127, kRead);
        ASSERT_EQ(::write(line_, request.data(), request.size()), 10);
        pollfd wait{line_, POLLIN, 0};
        if (poll(&wait, 1, 100) > 0) answer = read_bytes(line_, 10);
    }
    EXPECT_EQ(answer, frame(127, {0x4B, 0x00, 0x20, 0x03, 0x40, 0x9C, 0, 0}));
}

TEST_F(DriveSim, OptionsThatMayComeAgainAddUp) {
    start({"--fault", "abort:200003", "--fault", "fault1:0020", "--set", "200001=7", "--set",
           "200002=8"});
    open_line();
    EXPECT_EQ(ask(kRead)[1], 0x80);
    EXPECT_EQ(ask({0x40, 0x01, 0x26, 0x00, 0, 0, 0, 0})[5], 0x20);
    EXPECT_EQ(ask({0x40, 0x00, 0x20, 0x01, 0, 0, 0, 0})[5], 7);
    EXPECT_EQ(ask({0x40, 0x00, 0x20, 0x02, 0, 0, 0, 0})[5], 8);
}

TEST_F(DriveSim, SpeedMakesItsSecondsShorter) {
    const auto begin = Clock::now();
    start({"--speed", "50"});
    open_line();
    Bytes answer;
    do {
        answer = ask({0x40, 0xF5, 0x2F, 0x00, 0, 0, 0, 0});
        ASSERT_EQ(answer.size(), 10U);
    } while (answer[5] < 10);
    // Ten seconds of the drive.
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(9));
}

TEST_F(DriveSim, WrongUseIsRefused) {
    const std::string data = "--data " + folder_.string() + " ";
    EXPECT_EQ(exit_status(data + "--fault lightning:1"), 2);
    EXPECT_EQ(exit_status(data + "--set 6410=1"), 2);
    EXPECT_EQ(exit_status(data + "--id 256"), 2);
    EXPECT_EQ(exit_status(data + "--what"), 2);
    EXPECT_EQ(exit_status(data + "--din 101"), 2);
    for (const char* speed : {"nan", "inf", "0", "-1", "1e300"})
        EXPECT_EQ(exit_status(data + "--speed " + speed), 2) << speed;
    EXPECT_EQ(exit_status(data + "--fault boot-silent:all"), 2);
    for (const char* type : {"'A B'", "''", "go", "SEVENTEENLETTERSX"}) {
        EXPECT_EQ(exit_status(data + "--type " + type), 2) << type;
    }
    EXPECT_EQ(exit_status("--data " + (folder_ / "sim").string()), 4);
    EXPECT_EQ(exit_status("--help"), 0);
    std::ofstream(folder_ / "taken") << "x";
    EXPECT_EQ(exit_status(data + "--link " + (folder_ / "taken").string()), 4);
    EXPECT_TRUE(std::filesystem::is_regular_file(folder_ / "taken"));
}

TEST(PtyLink, ReplacesALinkAndRemovesOnlyItsOwn) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("servo_link_" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const auto link = folder / "line";
    EXPECT_EQ(make_link(link, "/dev/one"), std::nullopt);
    EXPECT_EQ(make_link(link, "/dev/two"), std::nullopt);
    EXPECT_EQ(std::filesystem::read_symlink(link), "/dev/two");
    remove_link(link, "/dev/one");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    remove_link(link, "/dev/two");
    EXPECT_FALSE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(make_link(folder / "no" / "such", "/dev/one"));
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace servo::sim::test
