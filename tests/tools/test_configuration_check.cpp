// The dry run, the report that can be kept, and the notes.
#include <gtest/gtest.h>

#include "configuration_bench.h"
#include "tools/configuration_notes.h"

namespace servo::tools::test {
namespace {

using base::Language;
using enum RowWarning;

const dictionary::Store& store() {
    static const dictionary::Store made = small_dictionary();
    return made;
}

std::vector<RowWarning> warnings(std::string_view line) {
    return row_warnings(read_cdi(line, store()).at(0), store());
}

TEST(RowWarnings, OfOrdinaryRowsThereAreNone) {
    for (const char* line :
         {"60600008,252,True", "60600008,-4,True", "20100310,65535,True", "20100310,0xFFFF,True",
          "60810020,4294967295,True", "60810020,0xFFFFFFFF,True", "60810020,0x00010000,True"})
        EXPECT_TRUE(warnings(line).empty()) << line;
}

TEST(RowWarnings, EachDoubtfulThingHasItsOwn) {
    const std::vector<std::pair<const char*, RowWarning>> told{
        {"60600008,1,False", kInvalid},
        {"60600004,1,True", kNoKey},
        {"606000008,1,True", kNoKey},
        {"60600008,,True", kNoNumber},
        {"60600008,abc,True", kNoNumber},
        {"60600008,0x,True", kNoNumber},
        {"60600008,1 rpm,True", kLeftOver},
        {"60600008,1.5,True", kRounded},
        {"60810020,99999999999,True", kTooLarge},
        {"60810020,4294967296,True", kWrapped},
        {"60810020,0x8000,True", kSignExtended},
        {"60600008,256,True", kTooWide},
        {"60600008,-129,True", kTooWide},
        {"20100310,70000,True", kTooWide},
        {"77770008,1,True", kUnknownObject},
        {"60600010,1,True", kOtherLength},
        {"60410010,1,True", kReadOnly},
        {"2FFF0010,1,True", kCommand},
    };
    for (const auto& [line, warning] : told) {
        const auto found = warnings(line);
        EXPECT_NE(std::ranges::find(found, warning), found.end()) << line;
    }
}

TEST(RowWarnings, HaveATextInBothLanguages) {
    for (int warning = 0; warning <= static_cast<int>(kNotRead); ++warning) {
        const base::Text text = warning_text(static_cast<RowWarning>(warning));
        EXPECT_FALSE(text.chinese.empty()) << warning;
        EXPECT_FALSE(text.english.empty()) << warning;
    }
}

struct DryRunTest : testing::Test, ConfigurationLine {
    const DryRun& run(std::string_view file) {
        load(file);
        form.dry_run();
        EXPECT_TRUE(finish());
        return std::get<DryRunFinding>(*form.finding()).run;
    }
};

TEST_F(DryRunTest, NamesWhatAWriteWouldChangeAndWritesNothing) {
    drive.objects[0x606000].value = 3;
    drive.objects[0x201003].value = 0x8003;
    const DryRun& found = run("60600008,1,True\n20100310,32771,True\n");
    EXPECT_EQ(found.writes, 2U);
    EXPECT_EQ(found.changes, 1U);
    EXPECT_EQ(found.warned, 0U);
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_EQ(found.rows[0].values.A.shown, "3");
    EXPECT_EQ(found.rows[0].values.B.shown, "1");
    EXPECT_TRUE(writes().empty());
    EXPECT_EQ(drive.value(0x606000), 3);
    EXPECT_FALSE(form.locked()) << "nothing is written that the drive would work on";
    EXPECT_EQ(form.Label2(), (folder / "values.cdi").string()) << "the path stays";
    EXPECT_EQ(form.data().ProgressBar1, 0);
    EXPECT_EQ(row(0).Result, "") << "so does the grid";
}

TEST_F(DryRunTest, WarnsOfWhatDoesNotFitEvenWhereNothingChanges) {
    drive.objects[0x606000].value = 0;
    const DryRun& found = run("60600008,256,True\n");
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_FALSE(found.rows[0].changes) << "its low byte is what is there";
    EXPECT_EQ(found.rows[0].warnings, std::vector{kTooWide});
    EXPECT_EQ(found.rows[0].values.A.shown, "0");
}

TEST_F(DryRunTest, ALaterRowMeetsWhatAnEarlierHasLeft) {
    const DryRun& found = run("60600008,1,True\n60600008,3,True\n60600008,3,True\n");
    EXPECT_EQ(found.changes, 2U);
    ASSERT_EQ(found.rows.size(), 3U);
    EXPECT_EQ(found.rows[1].values.A.shown, "1");
    EXPECT_EQ(found.rows[1].warnings, std::vector{kAgain});
    EXPECT_FALSE(found.rows[2].changes);
}

TEST_F(DryRunTest, AnObjectThatCannotBeReadIsTold) {
    const DryRun& found = run("77770008,5,True\n");
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_EQ(found.rows[0].warnings, (std::vector{kUnknownObject, kNotRead}));
    EXPECT_TRUE(found.rows[0].changes) << "nobody can say that it does not";
}

TEST_F(DryRunTest, RowsThatAreNotSentChangeNothing) {
    const DryRun& found = run("60600008,1,False\nnonsense,2,True\n60810020,99999999999,True\n");
    EXPECT_EQ(found.writes, 0U);
    EXPECT_EQ(found.changes, 0U);
    EXPECT_EQ(found.warned, 3U);
    const ConfigurationReport report = form.report();
    EXPECT_EQ(report.rows.at(2).cells[3], "(not sent)");
    EXPECT_EQ(report.rows.at(0).cells[2], "(not read)") << "nobody asked the drive for it";
}

// What the dry run says is what the write then does.
TEST_F(DryRunTest, FitsTheWriteBehindIt) {
    drive.objects[0x606000].value = 3;
    const DryRun found = run("60600008,1,True\n20100310,70000,True\n60810020,0x8000,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(found.writes, writes().size());
    EXPECT_EQ(found.rows.at(1).values.B.raw, std::to_string(drive.value(0x201003)));
    EXPECT_EQ(found.rows.at(2).goes_out, "-32768");
    EXPECT_EQ(found.rows.at(2).values.B.raw, std::to_string(drive.value(0x608100)));
}

TEST_F(DryRunTest, WithoutAFileTheMessageIsThatOfTheWrite) {
    form.dry_run();
    form.compare_with_drive();
    form.compare_with_file(ConfigurationSide::kWrite);
    EXPECT_EQ(notice.boxes.size(), 3U);
    EXPECT_EQ(notice.boxes.at(0).second, "Did not chose any cdi file!");
    EXPECT_TRUE(questions.empty());
}

TEST_F(DryRunTest, AFileAgainstTheDrive) {
    drive.objects[0x606000].value = 3;
    load("60600008,1,True\n20100310,0,True\n");
    form.compare_with_drive();
    ASSERT_TRUE(finish());
    const ConfigurationReport report = form.report();
    EXPECT_EQ(report.title, "Comparison: values.cdi / Drive");
    EXPECT_EQ(report.summary, "1 value differs, 1 object is the same");
    ASSERT_EQ(report.rows.size(), 1U);
    EXPECT_EQ(report.rows[0].cells, (std::array<std::string, kReportColumns>{
                                        "60600008", "Modes of operation", "1", "3", ""}));
    EXPECT_TRUE(writes().empty());
}

TEST_F(DryRunTest, WhatWasReadAgainstAFile) {
    drive.objects[0x606000].value = 3;
    load_list("60600008\n");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    unlock();
    answers = {put("other.cdi", "60600008,1,True\n")};
    form.compare_with_file(ConfigurationSide::kRead);
    EXPECT_EQ(form.report().title, "Comparison: Drive / other.cdi");
    EXPECT_EQ(form.report().rows.size(), 1U);
    form.close_report();
    EXPECT_FALSE(form.finding().has_value());
}

TEST_F(DryRunTest, AReportFollowsTheLanguageAndCanBeKept) {
    drive.refuse.insert(0x606000);
    load("60600008,1,True\n20100310,2,False\nnonsense,3,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    form.show_failures(ConfigurationSide::kWrite);
    EXPECT_EQ(form.report().summary, "2 rows failed, 1 invalid row was passed over");
    answers = {folder / "failed.txt"};
    form.save_report();
    EXPECT_TRUE(questions.back().save);
    EXPECT_EQ(questions.back().suffix, "txt");
    EXPECT_EQ(folder.get("failed.txt"),
              "Failed rows: values.cdi\r\n2 rows failed, 1 invalid row was passed over\r\n\r\n"
              "Index\tName\tRow\tValue\tReason\r\n"
              "60600008\tModes of operation\t0\t1\t0x06020000, the drive has no such object\r\n"
              "20100310\tInput 1 function\t1\t2\tnot marked True in the file: passed over\r\n"
              "nonsense\t\t2\t3\tkey or value that cannot be sent\r\n");
    language = Language::kChinese;
    EXPECT_EQ(form.report().summary, "2 行失败，1 行无效而被跳过");
    EXPECT_EQ(form.report().rows.at(0).cells[4], "0x06020000，对象不存在");
}

TEST_F(DryRunTest, AReportThatCannotBeSavedIsTold) {
    load("60600008,1,False\n");
    form.show_failures(ConfigurationSide::kWrite);
    answers = {folder / "no/such/folder.txt"};
    form.save_report();
    EXPECT_EQ(notice.boxes.at(0).second, "The file could not be written.");
}

TEST(ConfigurationReports, AComparisonTellsWhatOnlyOneSideLists) {
    const auto values = [](std::string_view text) {
        return configuration_values(read_cdi(text, store()));
    };
    const ComparisonFinding finding{
        compare_configurations(
            values("60600008,1,True\n20100310,2,True\n60810020,5,True\n"),
            values("60600008,3,True\n60810020,5,True\n60860010,0,True\n60730010,1,True\n"),
            store()),
        "a.cdi", "b.cdi"};
    EXPECT_EQ(report_of(finding, Language::kEnglish).summary,
              "1 value differs, 1 object is only in a.cdi, 2 objects are only in b.cdi, 1 object "
              "is the same");
    EXPECT_EQ(report_of(finding, Language::kChinese).summary,
              "1 个数值不同，1 个对象仅在 a.cdi 中，2 个对象仅在 b.cdi 中，1 个对象相同");
}

TEST(ConfigurationReports, ACellStaysInItsCell) {
    ConfigurationReport report;
    report.rows.push_back({.cells = {"a\tb", "c\r\nd", "", "", ""}});
    EXPECT_NE(report_text(report).find("a b\tc  d\t\t\t\r\n"), std::string::npos);
}

TEST_F(DryRunTest, TheNotesTellHowASideStands) {
    const auto note = [this](ConfigurationSide side) {
        return configuration_note(form, side).text;
    };
    using enum ConfigurationSide;
    EXPECT_EQ(note(kWrite), "Choose a file to write");
    EXPECT_EQ(note(kRead), "Choose a template of what to read");
    load("60600008,1,True\n20100310,2,False\n");
    EXPECT_EQ(note(kWrite), "2 rows; 1 of them invalid, to be passed over");
    load_list("60600008\n77770008\n");
    EXPECT_EQ(note(kRead), "2 rows");
    form.Command2_Click();
    EXPECT_EQ(note(kWrite), "Row 0 of 2; 0 failed");
    ASSERT_TRUE(finish());
    unlock();
    EXPECT_EQ(note(kWrite), "Written. To keep it over a power-off, store it to the EEPROM");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(note(kRead), "1 of 2 rows failed: see Failed Rows");
}

}  // namespace
}  // namespace servo::tools::test
