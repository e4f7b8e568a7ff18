// servoctl and drive-sim as programs, over a real pseudo-terminal.
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/running_drive.h"

namespace servo::cli {
namespace {

using test::Process;
using test::program;
using test::Result;
using test::run;
using test::RunningDrive;

TEST(ServoctlProcess, SimulatedDriveIsReadAndEndsWithTheCommand) {
    Process process({program("servoctl"), "--sim", "read", "606300", "607A00"});
    EXPECT_EQ(process.wait(), 0) << process.err();
    EXPECT_EQ(process.out(), "606300\t0\t0\tinc\n607A00\t0\t0\tinc\n");
    EXPECT_FALSE(process.session_alive());
}

TEST(ServoctlProcess, WriteIsReadBackFromTheDrive) {
    const RunningDrive drive;
    EXPECT_EQ(drive.ctl({"write", "607A00", "-1234"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"read", "607A00"}).out, "607A00\t-1234\t-1234\tinc\n");
    EXPECT_EQ(drive.ctl({"write", "60FF00", "100"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"read", "60FF00"}).out, "60FF00\t273067\t100.00\trpm\n");
    EXPECT_EQ(drive.ctl({"read", "60FF00", "--unit", "HEX"}).out,
              "60FF00\t273067\t00042AAB\tHEX\n");
    EXPECT_EQ(drive.ctl({"write", "604000", "6"}).status, 0);
    const Result json = drive.ctl({"--json", "read", "604000", "100800"});
    EXPECT_EQ(json.status, 0);
    const auto value = nlohmann::json::parse(json.out);
    EXPECT_EQ(value[0]["raw"], 6);
    EXPECT_EQ(value[1]["raw"], nullptr);
    EXPECT_FALSE(value[1]["text"].get<std::string>().empty());
}

TEST(ServoctlProcess, RefusalOfTheDriveIsPrintedAndOne) {
    const RunningDrive drive({"--fault", "abort:606300"});
    const Result read = drive.ctl({"read", "606300", "607A00"});
    EXPECT_EQ(read.status, 1);
    EXPECT_EQ(read.out, "606300\t\t?????\tinc\n607A00\t0\t0\tinc\n");
    EXPECT_TRUE(read.err.starts_with("servoctl: the drive refuses 606300: 0x")) << read.err;
    const Result write = drive.ctl({"write", "606000", "77"});
    EXPECT_EQ(write.status, 1);
    EXPECT_TRUE(write.out.starts_with("refused: 0x0609003")) << write.out;
}

TEST(ServoctlProcess, SilentObjectIsOneAndTheLinkStays) {
    const RunningDrive drive({"--fault", "mute:606300"});
    const Result read = drive.ctl({"--timeout", "1", "read", "606300", "607A00"});
    EXPECT_EQ(read.status, 1);
    EXPECT_EQ(read.out, "606300\t\t?????\tinc\n607A00\t0\t0\tinc\n");
    EXPECT_EQ(read.err, "servoctl: no answer to 606300 within 1 s\n");
}

TEST(ServoctlProcess, SilentDriveIsThree) {
    const RunningDrive drive({"--fault", "silent"});
    const Result read = drive.ctl({"read", "606300"});
    EXPECT_EQ(read.status, 3);
    EXPECT_EQ(read.err, "servoctl: the link is lost, the drive does not answer\n");
}

TEST(ServoctlProcess, WrongPortIsThree) {
    const Result result = run({"--port", "/dev/no-such-port", "read", "606300"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "servoctl: the port /dev/no-such-port can't be opened\n");
}

TEST(ServoctlProcess, PortUsedLastIsTakenAndNoneAtAllIsTwo) {
    const TempFolder data;
    std::filesystem::create_symlink(program("qorlan.dat"), data / "qorlan.dat");
    const Result none = run({"--data", data.path().string(), "read", "606300"});
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err, "servoctl: no port is known; name one with --port, or use --sim\n");
    std::filesystem::create_directory(data / "sys");
    data.put("sys/sys.ini", "[com]\r\ncomid=COM99\r\n");
    const Result saved = run({"--data", data.path().string(), "read", "606300"});
    EXPECT_EQ(saved.status, 3);
    EXPECT_EQ(saved.err, "servoctl: the port COM99 can't be opened\n");
}

TEST(ServoctlProcess, WrongKeyIsTwo) {
    const Result digits = run({"--sim", "read", "60630G"});
    EXPECT_EQ(digits.status, 2);
    EXPECT_NE(digits.err.find("six hexadecimal digits"), std::string::npos);
    const Result unknown = run({"--sim", "read", "FFFFFF"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.err, "servoctl: FFFFFF is not in the dictionary\n");
    EXPECT_EQ(run({"--sim", "bogus"}).status, 2);
    EXPECT_EQ(run({}).status, 2);
}

TEST(ServoctlProcess, MissingDictionaryIsFour) {
    EXPECT_EQ(run({"--data", "/no/such/folder", "--sim", "read", "606300"}).status, 4);
}

// Through a shell, which directs the output elsewhere.
Result run_in_shell(const std::string& line) {
    Process process({"/bin/sh", "-c", program("servoctl") + " " + line});
    process.close_input();
    const int status = process.wait();
    return {status, process.out(), process.err()};
}

TEST(ServoctlProcess, ResultsThatCannotBeWrittenAreFour) {
    const std::string lost = "servoctl: standard output can't be written\n";
    const Result found = run_in_shell("dict find velocity > /dev/full");
    EXPECT_EQ(found.status, 4);
    EXPECT_EQ(found.err, lost);
    EXPECT_EQ(run_in_shell("--help > /dev/full").status, 4);
    const RunningDrive drive;
    const Result watched =
        run_in_shell("--port " + drive.line() + " watch 606300 --every 0 > /dev/full");
    EXPECT_EQ(watched.status, 4) << "it ends by itself";
    EXPECT_EQ(watched.err, lost);
}

TEST(ServoctlProcess, AClosedOutputIsNotTheDrivesLine) {
    RunningDrive drive({"--print-frames"});
    const Result read = run_in_shell("--port " + drive.line() + " read 606300 606000 >&- 0<&-");
    EXPECT_EQ(read.status, 4);
    EXPECT_EQ(read.err, "servoctl: standard output can't be written\n");
}

TEST(ServoctlProcess, UnpluggedLineEndsAWatchWithThree) {
    RunningDrive drive;
    Process watch(
        {program("servoctl"), "--port", drive.line(), "watch", "606300", "--every", "10"});
    ASSERT_TRUE(watch.wait_for("606300")) << watch.err();
    drive.unplug();
    EXPECT_EQ(watch.wait(), 3);
    EXPECT_EQ(watch.err(), "servoctl: the link is lost, the drive does not answer\n");
}

TEST(ServoctlProcess, CtrlCEndsAWatchCleanlyAndFreesThePort) {
    const RunningDrive drive;
    Process watch({program("servoctl"), "--json", "--port", drive.line(), "watch", "606300",
                   "--every", "10"});
    ASSERT_TRUE(watch.wait_for("\n {")) << watch.err();
    const Result busy = drive.ctl({"read", "606300"});
    EXPECT_EQ(busy.status, 3);
    EXPECT_NE(busy.err.find("is in use by another program"), std::string::npos) << busy.err;
    watch.signal(SIGINT);
    EXPECT_EQ(watch.wait(), 0) << watch.err();
    EXPECT_GE(nlohmann::json::parse(watch.out()).size(), 1U);
    EXPECT_EQ(drive.ctl({"read", "606300"}).status, 0);
}

TEST(ServoctlProcess, CtrlCTakesTheSimulatedDriveAlong) {
    Process watch({program("servoctl"), "--sim", "watch", "606300", "--every", "10"});
    ASSERT_TRUE(watch.wait_for("606300")) << watch.err();
    watch.signal(SIGINT);
    EXPECT_EQ(watch.wait(), 0) << watch.err();
    EXPECT_FALSE(watch.session_alive());
}

TEST(ServoctlProcess, WatchCountsItsRounds) {
    const Result watch =
        run({"--sim", "watch", "606300", "606C00", "--count", "3", "--every", "1"});
    EXPECT_EQ(watch.status, 0) << watch.err;
    EXPECT_EQ(std::count(watch.out.begin(), watch.out.end(), '\n'), 6);
}

TEST(ServoctlProcess, FaultsAreListedBitByBit) {
    const RunningDrive drive({"--fault", "fault1:0200", "--fault", "fault2:0008"});
    const Result faults = drive.ctl({"faults"});
    EXPECT_EQ(faults.status, 0);
    EXPECT_NE(faults.out.find("1\t0200\tFollowing error\n"), std::string::npos) << faults.out;
    EXPECT_NE(faults.out.find("2\t0008\tCAN bus\n"), std::string::npos) << faults.out;
}

TEST(ServoctlProcess, ValuesAreRightOnALineThatLosesAndMangles) {
    const RunningDrive drive({"--fault", "drop:0.2", "--fault", "corrupt:0.1", "--fault",
                              "double:0.2", "--fault", "foreign:0.1", "--seed", "7", "--set",
                              "607A00=-4242"});
    for (int i = 0; i < 5; ++i) {
        const Result read = drive.ctl({"--timeout", "20", "read", "607A00", "60FF00"});
        EXPECT_EQ(read.status, 0) << read.err;
        EXPECT_EQ(read.out, "607A00\t-4242\t-4242\tinc\n60FF00\t0\t0.00\trpm\n");
    }
}

TEST(ServoctlProcess, GivenDeviceIsListedAmongThePorts) {
    const Result ports = run({"--port", "/tmp/some-line", "ports"});
    EXPECT_EQ(ports.status, 0);
    EXPECT_NE(ports.out.find("COM31\t/tmp/some-line\t\n"), std::string::npos) << ports.out;
}

TEST(ServoctlProcess, DictionaryNeedsNoDrive) {
    EXPECT_NE(run({"dict", "find", "606300"}).out.find("606300\tint32\t"), std::string::npos);
    EXPECT_NE(run({"dict", "show", "606300"}).out.find("key: 606300\n"), std::string::npos);
}

TEST(ServoctlProcess, FormulaAnswersEachLineAsItComes) {
    Process process({program("servoctl"), "formula"});
    process.write("eval\t2+3*4\n");
    ASSERT_TRUE(process.wait_for("14\n"));
    process.write("nonsense\n");
    ASSERT_TRUE(process.wait_for("bad request\n"));
    process.close_input();
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.out(), "14\nbad request\n");
    EXPECT_EQ(nlohmann::json::parse(run({"--json", "formula"}, "eval\t1\neval\t(\n").out),
              nlohmann::json::parse(R"(["1","error"])"));
}

}  // namespace
}  // namespace servo::cli
