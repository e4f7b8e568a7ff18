// `servoctl scan` in virtual time.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/scan_machine.h"
#include "tuner/bode_file.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

struct Scan : testing::Test, ScanMachine {};

std::vector<std::string> words(std::vector<std::string> replaced) {
    std::vector<std::string> all{"scan", "out.bode", "--start", "4",         "--stop",
                                 "100",  "--step",   "3",       "--current", "60"};
    for (std::size_t i = 0; i + 1 < replaced.size(); i += 2)
        *(std::find(all.begin(), all.end(), replaced[i]) + 1) = replaced[i + 1];
    return all;
}

TEST_F(Scan, WritesWhatTheDriveHolds) {
    EXPECT_EQ(scan(), 0) << err;
    EXPECT_EQ(out, "Finished\n");
    tuner::ScanSettings settings;
    auto buffers = std::make_unique<tuner::ScanBuffers>();
    ASSERT_TRUE(tuner::read_bode(written(), settings, *buffers).buffers);
    EXPECT_EQ(settings.startFreq, 4);
    EXPECT_EQ(settings.stopFreq, 100);
    EXPECT_EQ(settings.stepFreq, 3);
    EXPECT_EQ(settings.magCurrent, 60);
    EXPECT_EQ(settings.encoderCounts, 131072);
    EXPECT_EQ(buffers->pointCount, 33);
    for (std::size_t i = 0; i < 33; ++i) {
        EXPECT_EQ(buffers->commandA[i], drive.blocks.commandA[i]);
        EXPECT_EQ(buffers->commandB[i], drive.blocks.commandB[i]);
        EXPECT_EQ(buffers->response[2 * i], drive.blocks.response[2 * i]);
        EXPECT_EQ(buffers->response[2 * i + 1], drive.blocks.response[2 * i + 1]);
    }
}

TEST_F(Scan, TellsItsStepsAndEveryTenthOfTheReading) {
    EXPECT_EQ(scan(), 0);
    EXPECT_EQ(err,
              "servoctl: the motor moves by itself during the scan\n"
              "Write the plan\n"
              "The drive measures 33 points\n"
              "Read the data\n"
              " 10 %\n 20 %\n 30 %\n 40 %\n 50 %\n 60 %\n 70 %\n 80 %\n 90 %\n100 %\n");
}

TEST_F(Scan, SpeaksTheLanguageThatIsAsked) {
    EXPECT_EQ(scan({"--lang", "zh"}), 0);
    EXPECT_EQ(out, "结束\n");
    EXPECT_NE(err.find("驱动器正在测量 33 个点\n"), std::string::npos);
}

TEST_F(Scan, JsonIsOneObject) {
    EXPECT_EQ(scan({"--json"}), 0);
    const auto json = nlohmann::json::parse(out);
    EXPECT_EQ(json["file"], file());
    EXPECT_EQ(json["points"], 33);
    EXPECT_EQ(json["result"], "Finished");
    EXPECT_GT(json["seconds"].get<double>(), 1.0);
}

TEST_F(Scan, WrongUseIsFoundBeforeTheLinkIsOpened) {
    for (const std::vector<std::string>& wrong :
         {words({"--start", "3"}), words({"--start", "901"}), words({"--stop", "1001"}),
          words({"--step", "2"}), words({"--step", "201"}), words({"--current", "31"}),
          words({"--current", "801"}), words({"--current", "x"}), words({"--start", "4.5"}),
          words({"--stop", "6"}), std::vector<std::string>{"scan", "out.bode"}}) {
        EXPECT_EQ(run(wrong), 2);
        EXPECT_FALSE(err.empty());
    }
    EXPECT_EQ(opened, 0);
}

TEST_F(Scan, LimitsAreInclusive) {
    EXPECT_EQ(run({"scan", file(), "--start", "900", "--stop", "1000", "--step", "100", "--current",
                   "800"}),
              0)
        << err;
    EXPECT_EQ(drive.value(0x60F910), 800);
    EXPECT_EQ(
        run({"scan", file(), "--start", "4", "--stop", "7", "--step", "3", "--current", "32"}), 0)
        << err;
}

TEST_F(Scan, FileThatCantBeWrittenIsFoundBeforeTheMotorMoves) {
    std::vector<std::string> arguments = words({});
    arguments[1] = (bench.folder / "no folder/out.bode").string();
    EXPECT_EQ(run(arguments), 4);
    arguments[1] = bench.folder.path().string();
    EXPECT_EQ(run(arguments), 4);
    EXPECT_EQ(opened, 0);
}

TEST_F(Scan, DeadLineIsNoLink) {
    drive.silent = true;
    EXPECT_EQ(scan(), 3);
    EXPECT_EQ(out, "");
    EXPECT_NE(err.find("the link is lost"), std::string::npos);
    EXPECT_EQ(written(), "no file");
}

TEST_F(Scan, LineThatDiesInTheMiddleIsNoLinkAndNoFile) {
    bench.time.after(1500ms, [this] { drive.silent = true; });
    EXPECT_EQ(scan(), 3);
    EXPECT_NE(err.find(" 10 %"), std::string::npos) << "it had begun to read";
    EXPECT_EQ(written(), "no file");
}

TEST_F(Scan, LineThatDiesUnderTheMeasurementLeavesTheMotorToTheDrive) {
    drive.polls = 1000000;
    bench.time.after(1500ms, [this] { drive.silent = true; });
    EXPECT_EQ(scan(), 3);
    EXPECT_NE(err.find("the motor may still move"), std::string::npos);
}

TEST_F(Scan, RefusedStepIsToldWithItsReason) {
    drive.refuse.insert(0x304003);
    EXPECT_EQ(scan({"--timeout", "1"}), 1);
    EXPECT_NE(err.find("the drive refuses 304003: 0x06020000"), std::string::npos) << err;
    EXPECT_EQ(written(), "no file");
    EXPECT_TRUE(drive.commands.empty()) << "it was never started";
}

TEST_F(Scan, RefusedReadIsToldWithItsReason) {
    drive.refuse.insert(0x60F901);
    EXPECT_EQ(scan({"--timeout", "1"}), 1);
    EXPECT_NE(err.find("the drive refuses 60F901: 0x06020000"), std::string::npos) << err;
}

TEST_F(Scan, MuteObjectIsToldAndTheDriveStopped) {
    drive.answers = [this](const link::Payload& request) {
        drive.heard(request);
        return link::reply_key(request) != 0x304001;
    };
    // The line lives: somebody else on it talks.
    std::function<void()> talk = [&] {
        drive.send_payload({0x4B, 0x01, 0x26, 0x00, 0, 0, 0, 0});
        bench.time.after(50ms, talk);
    };
    talk();
    EXPECT_EQ(scan({"--timeout", "1"}), 1);
    EXPECT_NE(err.find("no answer to 304001 within 1 s"), std::string::npos) << err;
    EXPECT_NE(err.find("the motor may still move"), std::string::npos) << err;
    EXPECT_EQ(drive.commands.back(), 0);
    EXPECT_EQ(drive.commands.front(), 14);
}

TEST_F(Scan, LongMeasurementIsNoTimeOut) {
    drive.polls = 1000000;
    bench.time.after(100s, [this] { drive.polls_left = 0; });
    EXPECT_EQ(scan({"--timeout", "1"}), 0) << err;
}

TEST_F(Scan, CtrlCStopsTheDriveAndWritesNothing) {
    drive.polls = 1000000;
    ctrl_c = [this] { return bench.time.now() > 2s; };
    EXPECT_EQ(scan(), 1);
    EXPECT_NE(err.find("interrupted, the scan is cut off"), std::string::npos);
    EXPECT_EQ(err.find("may still move"), std::string::npos);
    EXPECT_EQ(drive.commands.back(), 0);
    EXPECT_EQ(written(), "no file");
    EXPECT_EQ(out, "");
}

TEST_F(Scan, CtrlCBehindTheMeasurementHasNothingToStop) {
    ctrl_c = [this] { return err.find("50 %") != std::string::npos; };
    EXPECT_EQ(scan(), 1);
    EXPECT_NE(drive.commands.back(), 0);
    EXPECT_EQ(written(), "no file");
}

TEST_F(Scan, DriveThatSaysItsScanIsNoneIsBelieved) {
    drive.objects[0x30400E].value = 3;
    EXPECT_EQ(scan(), 1);
    EXPECT_NE(err.find("has not completed the scan: it travelled too far"), std::string::npos);
    EXPECT_EQ(written(), "no file");
    drive.objects[0x30400E].value = 77;
    session.close();
    EXPECT_EQ(scan(), 1);
    EXPECT_NE(err.find("has not completed the scan: 77"), std::string::npos);
}

TEST_F(Scan, DriveThatDoesNotSayIsBelievedToo) {
    drive.objects.erase(0x30400E);
    EXPECT_EQ(scan(), 0) << err;
    EXPECT_EQ(out, "Finished\n");
}

}  // namespace
}  // namespace servo::cli
