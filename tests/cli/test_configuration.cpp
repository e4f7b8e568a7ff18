// servoctl pull, push, diff: what they print where, what they write, and the status of every end.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/configuration_input.h"
#include "cli/configuration_machine.h"

namespace servo::cli {
namespace {

using Json = nlohmann::json;

constexpr const char* kTemplate = "60600008\r\n607A0020,comment\r\n60FF0020\r\n";

TEST(Pull, ReadsTheTemplatesObjectsIntoAFile) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", kTemplate);
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 0);
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_EQ(machine.bench.folder.get("out.cdi"),
              "60600008,1,True\r\n607A0020,1000,True\r\n60FF0020,273067,True\r\n");
}

TEST(Pull, ProgressGoesToStandardError) {
    ConfigurationMachine machine;
    std::string wanted;
    for (int i = 0; i < 40; ++i)
        wanted += "60600008\n";
    machine.bench.folder.put("all.cdo", wanted);
    ASSERT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 0);
    std::vector<std::string> lines;
    std::istringstream stream(machine.err);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 10U) << machine.err;
    EXPECT_EQ(lines.front(), "Reading  10 %");
    EXPECT_EQ(lines.back(), "Reading 100 %");
}

TEST(Pull, NamesTheRowsThatFailAndWritesTheFileWithThem) {
    ConfigurationMachine machine;
    machine.drive.refuse.insert(0x607A00);
    machine.bench.folder.put("all.cdo", kTemplate);
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 1);
    EXPECT_EQ(machine.out, "Finished! Fail:1\n");
    EXPECT_TRUE(machine.told("servoctl: row 1, 607A0020 Target Position: 0x")) << machine.err;
    EXPECT_EQ(machine.bench.folder.get("out.cdi"),
              "60600008,1,True\r\n607A0020,,False\r\n60FF0020,273067,True\r\n");
}

TEST(Pull, KeyThatIsNoneIsAFailedRow) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", "60600008\nhello\n60FF0030\n");
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 1);
    EXPECT_EQ(machine.out, "Finished! Fail:2\n");
    EXPECT_EQ(machine.bench.folder.get("out.cdi"),
              "60600008,1,True\r\nhello,,False\r\n60FF0030,,False\r\n");
    EXPECT_EQ(machine.writes(0x60FF00), 0);
}

TEST(Pull, BlankLineEndsTheTemplateAndWhatIsBehindItIsSaid) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", "60600008\n\n607A0020\n");
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 1);
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_TRUE(machine.told("breaks off at line 2")) << machine.err;
    EXPECT_EQ(machine.bench.folder.get("out.cdi"), "60600008,1,True\r\n");
}

TEST(Pull, BlankLinesAtTheEndAreNoLoss) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", "60600008\r\n\r\n \r\n");
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 0)
        << machine.err;
    EXPECT_FALSE(machine.told("breaks off"));
}

TEST(Pull, WhatCannotBeReadOrWrittenIsFoundBeforeTheLinkIsOpened) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", kTemplate);
    machine.bench.folder.put("empty.cdo", "");
    EXPECT_EQ(machine.run({"pull", machine.file("none.cdo"), machine.file("out.cdi")}), 4);
    EXPECT_TRUE(machine.told("none.cdo can't be read"));
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("no/folder.cdi")}), 4);
    EXPECT_TRUE(machine.told("can't be written"));
    EXPECT_EQ(machine.run({"pull", machine.file("empty.cdo"), machine.file("out.cdi")}), 4);
    EXPECT_TRUE(machine.told("holds no row"));
    EXPECT_EQ(machine.opened, 0);
}

TEST(Pull, ADriveThatFallsSilentIsALostLinkAndNoFile) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", kTemplate);
    machine.bench.folder.put("out.cdi", "old");
    machine.drive.mute.insert(0x607A00);
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 3);
    EXPECT_TRUE(machine.told("1 of 3 rows are done, the next is 607A0020")) << machine.err;
    EXPECT_EQ(machine.bench.folder.get("out.cdi"), "old");
    EXPECT_EQ(machine.bench.engine.state.batch_mode, 0);
}

TEST(Pull, NobodyThereIsNoLink) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", kTemplate);
    machine.drive.silent = true;
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 3);
    EXPECT_FALSE(std::filesystem::exists(machine.file("out.cdi")));
}

TEST(Pull, CtrlCEndsTheJobAndLeavesTheFile) {
    ConfigurationMachine machine;
    std::string wanted;
    for (int i = 0; i < 100; ++i)
        wanted += "60600008\n";
    machine.bench.folder.put("all.cdo", wanted);
    machine.interrupted = [&] { return machine.bench.engine.state.batch_row > 20; };
    EXPECT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("out.cdi")}), 1);
    EXPECT_TRUE(machine.told("servoctl: interrupted; 20 of 100 rows are done")) << machine.err;
    EXPECT_FALSE(std::filesystem::exists(machine.file("out.cdi")));
    EXPECT_EQ(machine.bench.engine.state.batch_mode, 0);
}

TEST(Pull, PrintsOneJsonValue) {
    ConfigurationMachine machine;
    machine.drive.refuse.insert(0x607A00);
    machine.bench.folder.put("all.cdo", kTemplate);
    EXPECT_EQ(machine.run({"--json", "pull", machine.file("all.cdo"), machine.file("out.cdi")}), 1);
    const Json value = Json::parse(machine.out);
    EXPECT_EQ(value["file"], machine.file("out.cdi"));
    EXPECT_EQ(value["rows"], 3);
    EXPECT_EQ(value["done"], 3);
    EXPECT_EQ(value["failed"], 1);
    EXPECT_EQ(value["result"], "Finished! Fail:1");
    EXPECT_GT(value["seconds"].get<double>(), 0.01);
}

TEST(Pull, SpeaksChinese) {
    ConfigurationMachine machine;
    machine.bench.folder.put("all.cdo", "60600008\n");
    ASSERT_EQ(machine.run({"--lang", "zh", "pull", machine.file("all.cdo"), machine.file("o.cdi")}),
              0);
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_TRUE(machine.told("读取 100 %")) << machine.err;
}

TEST(Push, WritesTheFilesValues) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi",
                             "60600008,3,True\r\n607A0020,-5,True\r\n60FF0020,0x10,True\r\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 0) << machine.err;
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_TRUE(machine.told("Writing 100 %"));
    EXPECT_EQ(machine.drive.value(0x606000), 3);
    EXPECT_EQ(machine.drive.value(0x60FF00), 16);
    EXPECT_EQ(machine.writes(0x606000), 1);
}

TEST(Push, RowsThatWereNotReadAreSkippedAndNoFailure) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi", "60600008,3,True\n607A0020,7,False\n60FF0020,5,\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 0) << machine.err;
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_EQ(machine.writes(0x607A00), 0);
    EXPECT_EQ(machine.writes(0x60FF00), 0);
    EXPECT_TRUE(machine.told("2 invalid rows were passed over")) << machine.err;
}

TEST(Push, FileWhoseRowsAreAllInvalidFinishesAtOnce) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi", "60600008,3,False\n607A0020,7,False\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 0) << machine.err;
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
}

TEST(Push, NamesTheRowsThatFail) {
    ConfigurationMachine machine;
    machine.drive.refuse.insert(0x607A00);
    machine.bench.folder.put("in.cdi", "607A0020,7,True\n60600008,3,True\n60600099,3,True\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 1);
    EXPECT_EQ(machine.out, "Finished! Fail:2\n");
    EXPECT_TRUE(machine.told("servoctl: row 0, 607A0020 Target Position, 7: 0x")) << machine.err;
    EXPECT_TRUE(
        machine.told("servoctl: row 2, 60600099 Mode, 3: key or value that cannot be sent"));
    EXPECT_TRUE(machine.told("servoctl: 2 rows failed"));
    EXPECT_EQ(machine.drive.value(0x606000), 3);
}

TEST(Push, FileThatBreaksOffIsWrittenUpToThereAndOne) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi", "60600008,3,True\n607A0020,7\n60FF0020,5,True\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 1);
    EXPECT_EQ(machine.out, "Finished! Fail:0\n");
    EXPECT_TRUE(machine.told("breaks off at line 2")) << machine.err;
    EXPECT_EQ(machine.drive.value(0x606000), 3);
    EXPECT_EQ(machine.writes(0x607A00), 0);
    EXPECT_EQ(machine.writes(0x60FF00), 0);
}

TEST(Push, SilenceInTheMiddleIsALostLink) {
    ConfigurationMachine machine;
    machine.drive.mute.insert(0x607A00);
    machine.bench.folder.put("in.cdi", "60600008,3,True\n607A0020,7,True\n");
    EXPECT_EQ(machine.run({"push", machine.file("in.cdi")}), 3);
    EXPECT_EQ(machine.out, "Stopped! Fail:0\n");
    EXPECT_TRUE(machine.told("1 of 2 rows are done, the next is 607A0020")) << machine.err;
}

TEST(Push, DryRunTellsWhatWouldChangeAndWritesNothing) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi", "60600008,1,True\n60FF0020,546133,True\n26010010,0,True\n");
    EXPECT_EQ(machine.run({"push", "--dry-run", machine.file("in.cdi")}), 1);
    EXPECT_TRUE(machine.out.starts_with(
        "60FF00\tTarget Velocity\t100.00 rpm\t200.00 rpm\t\n260100\tFault Word 1\t"))
        << machine.out;
    EXPECT_TRUE(machine.told("Nothing was written.")) << machine.err;
    EXPECT_EQ(machine.writes(0x60FF00), 0);
    EXPECT_EQ(machine.drive.value(0x60FF00), 273067);
}

TEST(Push, DryRunOfWhatTheDriveHoldsIsZero) {
    ConfigurationMachine machine;
    machine.bench.folder.put("in.cdi", "60600008,1,True\n");
    EXPECT_EQ(machine.run({"push", "--dry-run", machine.file("in.cdi")}), 0) << machine.err;
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.run({"--json", "push", "--dry-run", machine.file("in.cdi")}), 0);
    EXPECT_EQ(Json::parse(machine.out), Json::array());
}

TEST(PullAndPush, WhatWasReadIsWrittenBackAsItIs) {
    ConfigurationMachine machine;
    machine.drive.objects[0x607A00].value = -1;
    machine.bench.folder.put("all.cdo", kTemplate);
    ASSERT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("a.cdi")}), 0);
    EXPECT_NE(machine.bench.folder.get("a.cdi").find("607A0020,4294967295,True"),
              std::string::npos);
    ASSERT_EQ(machine.run({"push", machine.file("a.cdi")}), 0) << machine.err;
    ASSERT_EQ(machine.run({"pull", machine.file("all.cdo"), machine.file("b.cdi")}), 0);
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("b.cdi")}), 0);
    EXPECT_EQ(machine.out, "");
}

TEST(Diff, PrintsKeyNameAAndBForEachDifference) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi",
                             "60600008,1,True\n607A0020,4294967295,True\n64100320,1,True\n");
    machine.bench.folder.put("b.cdi", "60600008,3,True\n607A0020,5,True\n64100320,1,True\n");
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("b.cdi")}), 1);
    EXPECT_EQ(machine.out, "606000\tMode\t1\t3\n607A00\tTarget Position\t-1\t5\n");
    EXPECT_EQ(machine.err, "");
    EXPECT_EQ(machine.opened, 0);
}

TEST(Diff, EqualFilesAreZeroAndSilent) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,1,True\n607A0020,0xFFFFFFFF,True\n");
    machine.bench.folder.put("b.cdi", "607A0020,-1,True\r\n60600008,1,True\r\n");
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("b.cdi")}), 0);
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.err, "");
    EXPECT_EQ(machine.run({"--json", "diff", machine.file("a.cdi"), machine.file("b.cdi")}), 0);
    EXPECT_EQ(machine.out, "[]\n");
}

TEST(Diff, WhatOneSideLacksIsSaid) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,1,True\n607A0020,,False\n");
    machine.bench.folder.put("b.cdi", "607A0020,5,True\n60FF0020,0,True\n");
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("b.cdi")}), 1);
    EXPECT_EQ(machine.out,
              "606000\tMode\t1\t(not listed)\n607A00\tTarget Position\t(not read)\t5\n"
              "60FF00\tTarget Velocity\t(not listed)\t0\n");
}

TEST(Diff, ShowsUnitsWhenAsked) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60FF0020,273067,True\n64100320,10000,True\n");
    machine.bench.folder.put("b.cdi", "60FF0020,546133,True\n64100320,10000,True\n");
    EXPECT_EQ(machine.run({"diff", "--units", machine.file("a.cdi"), machine.file("b.cdi")}), 1);
    EXPECT_EQ(machine.out, "60FF00\tTarget Velocity\t100.00 rpm\t200.00 rpm\n");
}

TEST(Diff, JsonHasNumbersAndTheReasonWhereThereIsNone) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,255,True\n607A0020,1,True\n");
    machine.bench.folder.put("b.cdi", "60600008,3,True\n");
    EXPECT_EQ(machine.run({"--json", "diff", machine.file("a.cdi"), machine.file("b.cdi")}), 1);
    const Json value = Json::parse(machine.out);
    ASSERT_EQ(value.size(), 2U);
    EXPECT_EQ(value[0]["key"], "606000");
    EXPECT_EQ(value[0]["A"], -1);
    EXPECT_EQ(value[0]["B"], 3);
    EXPECT_EQ(value[1]["A"], 1);
    EXPECT_EQ(value[1]["B"], "(not listed)");
}

TEST(Diff, SpeaksChinese) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,1,True\n");
    machine.bench.folder.put("b.cdi", "60600008,3,True\n607A0020,3,True\n");
    EXPECT_EQ(machine.run({"--lang", "zh", "diff", machine.file("a.cdi"), machine.file("b.cdi")}),
              1);
    EXPECT_EQ(machine.out, "606000\t模式\t1\t3\n607A00\tTarget Position\t（未列出）\t3\n");
}

TEST(Diff, FileThatCannotBeReadIsFour) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,1,True\n");
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("none.cdi")}), 4);
    EXPECT_TRUE(machine.told("none.cdi can't be read"));
    EXPECT_EQ(machine.run({"diff", machine.file("none.cdi"), machine.file("a.cdi")}), 4);
    EXPECT_EQ(machine.out, "");
}

TEST(Diff, RowsWithoutAnObjectAreSaid) {
    ConfigurationMachine machine;
    machine.bench.folder.put("a.cdi", "60600008,1,True\nxyz,3,True\n");
    machine.bench.folder.put("b.cdi", "60600008,1,True\n");
    EXPECT_EQ(machine.run({"diff", machine.file("a.cdi"), machine.file("b.cdi")}), 0);
    EXPECT_TRUE(machine.told("name no object to be compared: 1")) << machine.err;
}

TEST(ConfigurationOptions, WrongUseIsToldAsSuch) {
    ConfigurationMachine machine;
    EXPECT_EQ(machine.run({"pull"}), 2);
    EXPECT_EQ(machine.run({"pull", "a.cdo"}), 2);
    EXPECT_EQ(machine.run({"push"}), 2);
    EXPECT_EQ(machine.run({"diff", "a.cdi"}), 2);
    EXPECT_EQ(machine.run({"diff", "a.cdi", "b.cdi", "c.cdi"}), 2);
    EXPECT_EQ(machine.run({"save", "--motor", "--all"}), 2);
    EXPECT_EQ(machine.run({"reset", "now"}), 2);
    EXPECT_EQ(machine.opened, 0);
}

}  // namespace
}  // namespace servo::cli
