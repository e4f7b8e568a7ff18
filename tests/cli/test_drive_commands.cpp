// servoctl save, restart, reset: the frames, what is printed, and the status of every end.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/configuration_machine.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::json;

class DriveCommand : public ::testing::Test {
  protected:
    DriveCommand() {
        machine.drive.add(0x2FF00101, 0);
        machine.drive.add(0x2FF00301, 0);
        machine.drive.add(0x10100104, 0);
        machine.drive.add(0x2FFF0002, 0);
    }
    // Payloads of the writes, in their order.
    std::vector<link::Payload> written() const {
        std::vector<link::Payload> all;
        for (const auto& request : machine.drive.requests)
            if (request.payload[0] != link::kRead) all.push_back(request.payload);
        return all;
    }

    ConfigurationMachine machine;
};

TEST_F(DriveCommand, SaveStoresTheControlParameters) {
    EXPECT_EQ(machine.run({"save"}), 0) << machine.err;
    EXPECT_EQ(machine.out, "ok\n");
    EXPECT_EQ(written(), (std::vector<link::Payload>{{0x2F, 0xF0, 0x2F, 1, 1, 0, 0, 0}}));
}

TEST_F(DriveCommand, SaveOfTheMotorAndOfEverything) {
    EXPECT_EQ(machine.run({"save", "--motor"}), 0);
    EXPECT_EQ(machine.run({"save", "--all"}), 0);
    EXPECT_EQ(written(),
              (std::vector<link::Payload>{{0x2F, 0xF0, 0x2F, 3, 1, 0, 0, 0},
                                          {0x23, 0x10, 0x10, 1, 0x73, 0x61, 0x76, 0x65}}));
}

TEST_F(DriveCommand, ResetWritesTheSameObjectWithTen) {
    EXPECT_EQ(machine.run({"reset"}), 0);
    EXPECT_EQ(machine.out, "ok\n");
    EXPECT_EQ(written(), (std::vector<link::Payload>{{0x2F, 0xF0, 0x2F, 1, 10, 0, 0, 0}}));
}

TEST_F(DriveCommand, RestartSendsTheWindowsEightBytes) {
    EXPECT_EQ(machine.run({"restart"}), 0);
    EXPECT_EQ(machine.out, "ok\n");
    EXPECT_EQ(written(),
              (std::vector<link::Payload>{{0x2B, 0xFF, 0x2F, 0, 0x55, 0xAA, 0xFF, 0xFF}}));
}

TEST_F(DriveCommand, RefusalIsPrintedAndOne) {
    machine.drive.refuse.insert(0x2FF001);
    EXPECT_EQ(machine.run({"save"}), 1);
    EXPECT_TRUE(machine.out.starts_with("refused: 0x")) << machine.out;
    EXPECT_EQ(machine.run({"--json", "reset"}), 1);
    EXPECT_TRUE(Json::parse(machine.out)["result"].get<std::string>().starts_with("refused: 0x"));
}

TEST_F(DriveCommand, JsonTellsTheResult) {
    EXPECT_EQ(machine.run({"--json", "save"}), 0);
    EXPECT_EQ(Json::parse(machine.out), Json({{"result", "ok"}}));
}

TEST_F(DriveCommand, SaveThatIsLostIsSentAgainWhenTheDriveCanNoLongerBeBusy) {
    int lost = 0;
    machine.drive.answers = [&](const link::Payload& request) {
        return link::reply_key(request) != 0x2FF001 || lost++ > 0;
    };
    EXPECT_EQ(machine.run({"save"}), 0) << machine.err;
    EXPECT_EQ(machine.writes(0x2FF001), 2);
    std::vector<test::VirtualTime::Duration> at;
    for (const auto& request : machine.drive.requests)
        if (link::reply_key(request.payload) == 0x2FF001) at.push_back(request.at);
    ASSERT_EQ(at.size(), 2U);
    EXPECT_GE(at[1] - at[0], 3190ms) << "less the time of the first one on the line";
}

TEST_F(DriveCommand, SaveWithoutAnAnswerIsOne) {
    machine.drive.mute.insert(0x2FF001);
    EXPECT_EQ(machine.run({"--timeout", "1", "save"}), 1);
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.err, "servoctl: no answer to the save within 1 s\n");
}

TEST_F(DriveCommand, RestartIsNeverSentTwice) {
    machine.drive.mute.insert(0x2FFF00);
    EXPECT_EQ(machine.run({"restart"}), 1);
    EXPECT_EQ(machine.writes(0x2FFF00), 1);
    EXPECT_TRUE(machine.told("has not acknowledged the restart, though it may have begun one"));
}

TEST_F(DriveCommand, NobodyThereIsNoLink) {
    machine.drive.silent = true;
    for (const char* command : {"save", "restart", "reset"}) {
        EXPECT_EQ(machine.run({command}), 3) << command;
        EXPECT_EQ(machine.out, "");
        EXPECT_TRUE(machine.told("the link is lost")) << machine.err;
    }
}

TEST_F(DriveCommand, RestartWaitsForADriveThatComesBack) {
    std::optional<test::VirtualTime::Duration> off;
    machine.drive.answers = [&](const link::Payload& request) {
        const auto now = machine.bench.clock.now();
        if (request[0] == 0x2B) off = now;
        return !off || request[0] == 0x2B || now - *off > 1200ms;
    };
    EXPECT_EQ(machine.run({"restart", "--wait"}), 0) << machine.err;
    EXPECT_EQ(machine.out, "ok\n");
    ASSERT_TRUE(off);
    EXPECT_GE(machine.bench.clock.now() - *off, 1200ms);
}

TEST_F(DriveCommand, RestartThatDoesNotComeBackIsThree) {
    bool gone = false;
    machine.drive.answers = [&](const link::Payload& request) {
        if (gone) return false;
        gone = request[0] == 0x2B;
        return true;
    };
    EXPECT_EQ(machine.run({"restart", "--wait"}), 3);
    EXPECT_EQ(machine.out, "");
    EXPECT_TRUE(machine.told("does not answer after the restart")) << machine.err;
}

TEST_F(DriveCommand, DriveThatGoesOnAsIfNothingHadBeenIsOne) {
    EXPECT_EQ(machine.run({"restart", "--wait"}), 1);
    EXPECT_EQ(machine.out, "");
    EXPECT_TRUE(machine.told("goes on without one")) << machine.err;
}

TEST_F(DriveCommand, CtrlCEndsTheWait) {
    machine.drive.mute.insert(0x2FF001);
    machine.interrupted = [&] { return machine.writes(0x2FF001) > 0; };
    EXPECT_EQ(machine.run({"save"}), 1);
    EXPECT_TRUE(machine.told("servoctl: interrupted"));
}

}  // namespace
}  // namespace servo::cli
