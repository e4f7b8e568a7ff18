// `record` as a program, beside a simulated drive on a real pseudo-terminal.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/file.h"
#include "cli/running_drive.h"

namespace servo::cli {
namespace {

using test::Process;
using test::program;
using test::Result;
using test::RunningDrive;

struct RecordProcess : testing::Test {
    TempFolder folder;
    std::string file = (folder / "out.scope").string();

    std::string written() const { return base::read_file(file).value_or("no file"); }
};

TEST_F(RecordProcess, FileOfAConstantIsRightToTheByte) {
    const RunningDrive drive({"--set", "607A00=-1234567", "--set", "641003=65536"});
    const Result record =
        drive.ctl({"record", file, "--objects", "607A00", "--samples", "40", "--period", "3"});
    EXPECT_EQ(record.status, 0) << record.err;
    EXPECT_EQ(record.out, "40\n");
    std::string expected = "3,40\r\n65536,150,19661,5000,20000\r\nTarget position,6322688\r\n";
    expected += "NULL,0\r\nNULL,0\r\nNULL,0\r\n";
    for (int i = 0; i < 40; ++i)
        expected += "-1234567,0,0,0\r\n";
    EXPECT_EQ(written(), expected);
    EXPECT_EQ(drive.ctl({"read", "230007"}).out, "230007\t0\t0\tDEC\n");
}

TEST_F(RecordProcess, CtrlCStopsTheRecorderAndFreesThePort) {
    const RunningDrive drive;
    Process record({program("servoctl"), "--port", drive.line(), "record", file, "--objects",
                    "606300", "--trigger", "606300", "--level", "1000000", "--offset", "0"});
    ASSERT_TRUE(record.wait_for_err("waiting for the trigger")) << record.err();
    record.signal(SIGINT);
    EXPECT_EQ(record.wait(), 1) << record.err();
    EXPECT_TRUE(record.err().ends_with("servoctl: interrupted\n")) << record.err();
    EXPECT_EQ(record.out(), "");
    EXPECT_EQ(written(), "no file");
    // It would still wait, and say 2.
    EXPECT_EQ(drive.ctl({"read", "230007"}).out, "230007\t0\t0\tDEC\n");
}

TEST_F(RecordProcess, UnpluggedLineIsThree) {
    RunningDrive drive;
    Process record({program("servoctl"), "--port", drive.line(), "record", file, "--objects",
                    "606300", "--trigger", "606300", "--level", "1000000"});
    ASSERT_TRUE(record.wait_for_err("waiting for the trigger")) << record.err();
    drive.unplug();
    EXPECT_EQ(record.wait(), 3);
    EXPECT_TRUE(record.err().ends_with("servoctl: the link is lost, the drive does not answer\n"))
        << record.err();
    EXPECT_EQ(written(), "no file");
}

TEST_F(RecordProcess, RefusedPlaceIsOneAndADriveThatIsSilentThree) {
    const RunningDrive refusing({"--fault", "abort:230005"});
    const Result refused = refusing.ctl({"record", file, "--objects", "606300"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.starts_with("servoctl: the drive refuses 606300 as a source: 0x08"))
        << refused.err;
    const RunningDrive silent({"--fault", "silent"});
    EXPECT_EQ(silent.ctl({"record", file, "--objects", "606300"}).status, 3);
    EXPECT_EQ(written(), "no file");
}

TEST_F(RecordProcess, FolderThatIsNotThereIsFourAndWrongUseTwo) {
    EXPECT_EQ(
        test::run({"--sim", "record", "/no/such/folder/out.scope", "--objects", "606300"}).status,
        4);
    EXPECT_EQ(test::run({"--sim", "record", file, "--objects", "606300,60FF00"}).status, 2);
    EXPECT_EQ(test::run({"--sim", "record", file}).status, 2);
}

TEST_F(RecordProcess, RecordingIsRightOnALineThatLosesAndDoubles) {
    const RunningDrive drive({"--fault", "drop:0.1", "--fault", "double:0.1", "--fault",
                              "foreign:0.05", "--seed", "11", "--set", "607A00=-1234567", "--set",
                              "608100=2023406814"});
    const Result record = drive.ctl({"--timeout", "20", "record", file, "--objects",
                                     "607A00,604000,608100", "--samples", "20"});
    EXPECT_EQ(record.status, 0) << record.err;
    const std::string text = written();
    const auto count = [&](const std::string& line) {
        std::size_t found = 0;
        for (std::size_t at = text.find(line); at != std::string::npos;
             at = text.find(line, at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count("-1234567,0,2023406814,0\r\n"), 20U) << text;
    EXPECT_EQ(count("\r\n"), 26U);
}

}  // namespace
}  // namespace servo::cli
