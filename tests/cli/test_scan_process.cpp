// servoctl scan over a real pseudo-terminal, against the simulated drive.
#include <gtest/gtest.h>

#include "cli/running_drive.h"

namespace servo::cli {
namespace {

using test::Process;
using test::program;
using test::Result;
using test::RunningDrive;

std::vector<std::string> plan(const TempFolder& folder, const char* start, const char* stop) {
    return {"--baud",  "115200", "scan",      (folder / "out.bode").string(),
            "--start", start,    "--stop",    stop,
            "--step",  "50",     "--current", "100"};
}

TEST(ScanProcess, FileIsWritten) {
    const TempFolder folder;
    const RunningDrive drive({"--baud", "115200"});
    const Result result = drive.ctl(plan(folder, "200", "400"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "Finished\n");
    const std::string file = folder.get("out.bode");
    EXPECT_EQ(file.rfind("200;400;50;", 0), 0U) << file;
    EXPECT_NE(file.find("\r\nlength 5\r\n"), std::string::npos);
}

TEST(ScanProcess, CtrlCStopsTheDriveAndTheNextRunFindsItIdle) {
    const TempFolder folder;
    const RunningDrive drive({"--baud", "115200"});
    std::vector<std::string> words = plan(folder, "4", "904");
    words.insert(words.begin(), {program("servoctl"), "--port", drive.line()});
    Process process(std::move(words));
    ASSERT_TRUE(process.wait_for_err("The drive measures")) << process.err();
    process.signal(SIGINT);
    EXPECT_EQ(process.wait(), 1);
    EXPECT_NE(process.err().find("the scan is cut off"), std::string::npos);
    EXPECT_EQ(folder.entries(), 0U) << "no file";
    const Result result = drive.ctl({"--baud", "115200", "read", "30400E"});
    EXPECT_EQ(result.out.rfind("30400E\t5\t", 0), 0U) << "stopped: " << result.out;
}

TEST(ScanProcess, LineThatDiesIsNoLink) {
    const TempFolder folder;
    RunningDrive drive({"--baud", "115200"});
    std::vector<std::string> words = plan(folder, "4", "904");
    words.insert(words.begin(), {program("servoctl"), "--port", drive.line()});
    Process process(std::move(words));
    ASSERT_TRUE(process.wait_for_err("The drive measures")) << process.err();
    drive.unplug();
    EXPECT_EQ(process.wait(), 3);
    EXPECT_NE(process.err().find("the link is lost"), std::string::npos);
    EXPECT_EQ(folder.entries(), 0U);
}

}  // namespace
}  // namespace servo::cli
