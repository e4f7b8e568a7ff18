// servoctl and drive-sim as programs, over a real pseudo-terminal: a configuration goes out of the
// drive, is changed, goes back, and is kept or lost by the drive.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/running_drive.h"

namespace servo::cli {
namespace {

using test::Result;
using test::run;
using test::RunningDrive;

// Of several kinds and widths, a negative one, a PDO's, the motor's.
constexpr const char* kTemplate =
    "60600008\r\n607A0020\r\n60FF0020\r\n60F90110\r\n20100310\r\n60980008\r\n14000120\r\n"
    "16000120\r\n64100320\r\n2FE20010\r\n";

class Configuration : public ::testing::Test {
  protected:
    std::string file(const char* name) const { return (folder / name).string(); }
    Result pull(const RunningDrive& drive, const char* name) const {
        return drive.ctl({"pull", file("all.cdo"), file(name)});
    }
    // The value of a line of a pulled file, changed in another file.
    void change(const char* from, const char* to,
                const std::vector<std::pair<std::string, std::string>>& values) const {
        std::string text = folder.get(from);
        for (const auto& [key, value] : values) {
            const std::size_t line = text.find(key + ",");
            ASSERT_NE(line, std::string::npos) << key;
            const std::size_t at = line + key.size() + 1;
            text.replace(at, text.find(',', at) - at, value);
        }
        folder.put(to, text);
    }

    TempFolder folder;
};

TEST_F(Configuration, PullChangePushPullAndDiffShowsExactlyTheChanges) {
    const RunningDrive drive({"--set", "607A00=-1234"});
    folder.put("all.cdo", kTemplate);
    const Result first = pull(drive, "a.cdi");
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(first.out, "Finished! Fail:0\n");
    change("a.cdi", "b.cdi", {{"607A0020", "-77"}, {"60F90110", "0xC8"}, {"60980008", "34"}});

    const Result pushed = drive.ctl({"push", file("b.cdi")});
    EXPECT_EQ(pushed.status, 0) << pushed.err;
    EXPECT_EQ(pushed.out, "Finished! Fail:0\n");
    ASSERT_EQ(pull(drive, "c.cdi").status, 0);

    const Result expected = run({"diff", file("a.cdi"), file("b.cdi")});
    const Result found = run({"diff", file("a.cdi"), file("c.cdi")});
    EXPECT_EQ(found.status, 1);
    EXPECT_EQ(found.out, expected.out);
    EXPECT_NE(found.out.find("607A00\tTarget position\t-1234\t-77\n"), std::string::npos)
        << found.out;
    EXPECT_NE(found.out.find("609800\t"), std::string::npos) << found.out;
    const Result same = run({"diff", file("b.cdi"), file("c.cdi")});
    EXPECT_EQ(same.status, 0) << same.out;
    EXPECT_EQ(same.out, "");
}

TEST_F(Configuration, WholeShippedTemplateGoesOutAndBackWithoutAFailure) {
    const RunningDrive drive({"--baud", "115200"});
    const auto fast = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"--baud", "115200"});
        return drive.ctl(std::move(words));
    };
    const std::string all = test::program("Servo_Settings.cdo");
    const Result first = fast({"pull", all, file("a.cdi")});
    EXPECT_EQ(first.out, "Finished! Fail:0\n") << first.err;
    change("a.cdi", "b.cdi", {{"60F90110", "123"}, {"60980008", "34"}});
    EXPECT_EQ(fast({"push", file("b.cdi")}).out, "Finished! Fail:0\n");
    EXPECT_EQ(fast({"pull", all, file("c.cdi")}).status, 0);
    EXPECT_EQ(run({"diff", file("b.cdi"), file("c.cdi")}).out, "");
    const std::string changes = run({"diff", file("a.cdi"), file("c.cdi")}).out;
    EXPECT_EQ(std::count(changes.begin(), changes.end(), '\n'), 2) << changes;
}

TEST_F(Configuration, FailedRowsAreNamedAndOne) {
    const RunningDrive drive({"--fault", "abort:60FF00"});
    folder.put("all.cdo", kTemplate);
    const Result pulled = pull(drive, "a.cdi");
    EXPECT_EQ(pulled.status, 1);
    EXPECT_EQ(pulled.out, "Finished! Fail:1\n");
    EXPECT_NE(pulled.err.find("60FF0020 Target velocity: 0x08000000"), std::string::npos)
        << pulled.err;
    EXPECT_NE(folder.get("a.cdi").find("60FF0020,,False\r\n"), std::string::npos);
    // Such a row is passed over on the way back.
    const Result pushed = drive.ctl({"push", file("a.cdi")});
    EXPECT_EQ(pushed.status, 0) << pushed.err;
    EXPECT_EQ(pushed.out, "Finished! Fail:0\n");
    // A mapping of a PDO that is on is refused by the standard's rule.
    folder.put("pdo.cdi", "16000120,0x607A0020,True\n");
    const Result mapped = drive.ctl({"push", file("pdo.cdi")});
    EXPECT_EQ(mapped.status, 1);
    EXPECT_NE(mapped.err.find("0x08000022"), std::string::npos) << mapped.err;
}

TEST_F(Configuration, PdosAreChangedByRowsInTheStandardsOrder) {
    const RunningDrive drive;
    folder.put("pdo.cdi",
               "14000120,0x80000201,True\n16000008,0,True\n16000120,0x607A0020,True\n"
               "16000220,0x60400010,True\n16000008,2,True\n14000120,0x201,True\n");
    const Result pushed = drive.ctl({"push", file("pdo.cdi")});
    EXPECT_EQ(pushed.status, 0) << pushed.err;
    EXPECT_EQ(drive.ctl({"read", "160001", "--unit", "HEX"}).out,
              "160001\t1618608160\t607A0020\tHEX\n");
}

TEST_F(Configuration, LineThatLosesAndManglesMakesNoDifference) {
    const RunningDrive drive(
        {"--fault", "drop:0.05", "--fault", "corrupt:0.05", "--seed", "11", "--set", "607A00=-9"});
    folder.put("all.cdo", kTemplate);
    ASSERT_EQ(pull(drive, "a.cdi").status, 0);
    change("a.cdi", "b.cdi", {{"607A0020", "4711"}});
    ASSERT_EQ(drive.ctl({"push", file("b.cdi")}).status, 0);
    ASSERT_EQ(pull(drive, "c.cdi").status, 0);
    EXPECT_EQ(run({"diff", file("a.cdi"), file("c.cdi")}).out,
              "607A00\tTarget position\t-9\t4711\n");
}

TEST_F(Configuration, DryRunTellsTheChangesAndWritesNothing) {
    const RunningDrive drive;
    folder.put("in.cdi", "60F90110,150,True\n");
    const std::string before = drive.ctl({"read", "60F901"}).out;
    const Result dry = drive.ctl({"push", "--dry-run", file("in.cdi")});
    EXPECT_EQ(dry.status, 1) << dry.err;
    EXPECT_TRUE(dry.out.starts_with("60F901\t")) << dry.out;
    EXPECT_EQ(drive.ctl({"read", "60F901"}).out, before);
}

TEST_F(Configuration, StoredValuesSurviveARestartAndOthersDoNot) {
    const RunningDrive drive;
    ASSERT_EQ(drive.ctl({"write", "60F901", "150"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"save"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"write", "60F902", "7"}).out, "ok\n");
    const Result restarted = drive.ctl({"restart", "--wait"});
    EXPECT_EQ(restarted.out, "ok\n") << restarted.err;
    EXPECT_EQ(restarted.status, 0);
    EXPECT_TRUE(drive.ctl({"read", "60F901"}).out.starts_with("60F901\t150\t"));
    EXPECT_FALSE(drive.ctl({"read", "60F902"}).out.starts_with("60F902\t7\t"));
}

TEST_F(Configuration, ResetBringsTheFactoryValuesUntilTheyAreStored) {
    const RunningDrive drive;
    const std::string factory = drive.ctl({"read", "60F901"}).out;
    ASSERT_EQ(drive.ctl({"write", "60F901", "150"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"save"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"reset"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"read", "60F901"}).out, factory);
    // The next command finds the drive, which needs less time than the link has patience.
    ASSERT_EQ(drive.ctl({"restart"}).out, "ok\n");
    EXPECT_TRUE(drive.ctl({"read", "60F901"}).out.starts_with("60F901\t150\t"));
    ASSERT_EQ(drive.ctl({"reset"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"save"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"restart", "--wait"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"read", "60F901"}).out, factory);
}

TEST_F(Configuration, MotorParametersAreStoredByTheirOwnCommand) {
    const RunningDrive drive;
    ASSERT_EQ(drive.ctl({"write", "641003", "20000"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"save"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"restart", "--wait"}).out, "ok\n");
    EXPECT_TRUE(drive.ctl({"read", "641003"}).out.starts_with("641003\t10000\t"));
    ASSERT_EQ(drive.ctl({"write", "641003", "20000"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"save", "--motor"}).out, "ok\n");
    ASSERT_EQ(drive.ctl({"restart", "--wait"}).out, "ok\n");
    EXPECT_TRUE(drive.ctl({"read", "641003"}).out.starts_with("641003\t20000\t"));
}

TEST_F(Configuration, RefusedStoreIsPrintedAndOne) {
    const RunningDrive drive({"--fault", "abort:2FF001"});
    const Result saved = drive.ctl({"save"});
    EXPECT_EQ(saved.status, 1);
    EXPECT_TRUE(saved.out.starts_with("refused: 0x08000000")) << saved.out;
}

TEST_F(Configuration, FaultsComeAndGoWhileTheDriveRuns) {
    RunningDrive drive;
    drive.say("fault 1 0200");
    drive.say("fault 2 0008");
    drive.say("fault");
    ASSERT_TRUE(drive.wait_for("causes 0200 0008"));
    const Result faults = drive.ctl({"faults"});
    EXPECT_NE(faults.out.find("1\t0200\t"), std::string::npos) << faults.out;
    EXPECT_NE(faults.out.find("2\t0008\t"), std::string::npos) << faults.out;
    ASSERT_EQ(drive.ctl({"write", "260600", "1"}).out, "ok\n");
    EXPECT_NE(drive.ctl({"faults"}).out.find("1\t0200\t"), std::string::npos) << "they stand";
    drive.say("fault clear");
    drive.say("fault");
    ASSERT_TRUE(drive.wait_for("causes 0000 0000"));
    ASSERT_EQ(drive.ctl({"write", "260600", "1"}).out, "ok\n");
    EXPECT_EQ(drive.ctl({"faults"}).out, "");
    const Result history = drive.ctl({"read", "261002", "261101"});
    EXPECT_TRUE(history.out.starts_with("261002\t8\t")) << history.out;
    EXPECT_NE(history.out.find("261101\t512\t"), std::string::npos) << history.out;
}

}  // namespace
}  // namespace servo::cli
