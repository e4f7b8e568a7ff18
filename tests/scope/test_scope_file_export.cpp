// What an export writes, byte by byte, and when it writes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "base/temp_folder.h"
#include "scope/scope_file_support.h"

namespace servo::scope {
namespace {

using base::Language;
using Bytes = std::string;

std::vector<Bytes> split_lines(const Bytes& text) {
    std::vector<Bytes> lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find("\r\n", begin)) != Bytes::npos; begin = end + 2)
        lines.push_back(text.substr(begin, end - begin));
    EXPECT_EQ(begin, text.size()) << "a line without its end";
    return lines;
}

Bytes line_of(Program& program, std::size_t index) {
    const std::vector<Bytes> lines = split_lines(program.text());
    return index < lines.size() ? lines[index] : "(no such line)";
}

Program small_recording() {
    Program program;
    program.data.Text1 = "16";
    program.data.Text3 = "2";
    program.operands = {{10000, true}, {150, true}, {7, true}, {-8, true}, {9, false}};
    program.record(0, kCurrent);
    program.record(2, kPosition);
    program.put_samples(0, {1, 20, -300, 4000});
    program.put_samples(1, {-5, 0, 2147483647, -2147483647 - 1});
    program.put_samples(2, {99, 99, 99, 99});  // behind the recording
    return program;
}

TEST(ScopeExport, WritesTheToldLines) {
    Program program = small_recording();
    EXPECT_EQ(program.text(),
              "16,2\r\n"
              "10000,150,7,-8,9\r\n"
              "Actual current,6322176\r\n"
              "NULL,0\r\n"
              "Actual position,6316800\r\n"
              "NULL,0\r\n"
              "1,20,-300,4000\r\n"
              "-5,0,2147483647,-2147483648\r\n");
}

TEST(ScopeExport, NamesAreThoseOfTheLanguageInTheCodePage) {
    Program program(usual_dictionary(), Language::kChinese);
    program.record(1, kCurrent);
    EXPECT_EQ(line_of(program, 3), "\xCA\xB5\xBC\xCA\xB5\xE7\xC1\xF7,6322176");
}

TEST(ScopeExport, ANameKeepsItsCommas) {
    Program program;
    program.record(3, kCommand);
    EXPECT_EQ(line_of(program, 5), "Target current, q axis,6354444");
}

TEST(ScopeExport, TheSecondOperandIsSigned16Bit) {
    Program program;
    program.operands.o64100320.value = -1;
    program.operands.o65100310.value = 0xFFFE;
    program.operands.o30400710.value = 0x7FFFFFFF;
    EXPECT_EQ(line_of(program, 1), "-1,-2,2147483647,0,0");
}

TEST(ScopeExport, OperandsThatWereNotSeenAreWrittenAsTheyAreCached) {
    Program program;
    program.operands.o64100320 = {4096, false};
    EXPECT_EQ(line_of(program, 1), "4096,0,0,0,0");
}

TEST(ScopeExport, ADisabledChannelWritesNullAndTheKeyOfItsObject) {
    Program program;
    program.pick(1, kSpeed);
    EXPECT_EQ(line_of(program, 3), "NULL,6318848");
}

TEST(ScopeExport, ADisabledChannelWithoutAnObjectWritesKey0) {
    Program program;
    EXPECT_EQ(line_of(program, 2), "NULL,0");
    program.data.channels[0].objectList.ListIndex = -1;
    EXPECT_EQ(line_of(program, 2), "NULL,0");
}

// The refresh ticks a channel whose object the dictionary does not know.
TEST(ScopeExport, ARecordedChannelWithoutAnObjectIsWrittenLikeADisabledOne) {
    Program program;
    program.data.channels[0].enable = true;
    EXPECT_EQ(line_of(program, 2), "NULL,0");
}

TEST(ScopeExport, TheColumnOfADisabledChannelIsWhateverItsArrayHolds) {
    Program program;
    program.data.Text3 = "1";
    program.record(0, kCurrent);
    program.put_samples(0, {1, 2, 3, 4});
    EXPECT_EQ(line_of(program, 6), "1,2,3,4");
}

TEST(ScopeExport, TextsGoOutAsTheOperatorTypedThem) {
    Program program;
    program.data.Text1 = "007.50";
    program.data.Text3 = "1a-";
    EXPECT_EQ(line_of(program, 0), "007.50,1a-");
}

// A comma can be pasted where none can be typed. Three fields would make a file that no import
// takes; the number stays the same.
TEST(ScopeExport, ACommaOrALineBreakInTheTextsBecomesABlank) {
    Program program;
    program.data.Text1 = "1,5";
    program.data.Text3 = "2\r\n3";
    const std::vector<Bytes> lines = split_lines(program.text());
    ASSERT_EQ(lines.size(), 6U + 2U);
    EXPECT_EQ(lines[0], "1 5,2  3");
}

TEST(ScopeExport, ALineBreakInANameBecomesABlank) {
    Program program(dictionary::store_of({object("6078", "00", "", "a\nb\r\nc", "Integer16")}));
    program.record(0, kCurrent);
    EXPECT_EQ(line_of(program, 2), "a b  c,6322176");
}

TEST(ScopeExport, ThereAreAsManySampleLinesAsText3Says) {
    const std::vector<std::pair<std::string, std::size_t>> table{
        {"0", 0},   {"1", 1},  {"10.9", 10}, {"-5", 0},   {"-0.5", 0},    {"", 0},
        {"abc", 0}, {"3x", 3}, {" 2", 2},    {"1e1", 10}, {"8192", 8192}, {"8192.9", 8192}};
    for (const auto& [text3, count] : table) {
        Program program;
        program.data.Text3 = text3;
        EXPECT_EQ(split_lines(program.text()).size(), 6 + count) << text3;
    }
}

TEST(ScopeExport, MoreSamplesThanTheArraysHoldGiveNothing) {
    for (const char* text3 : {"8193", "65536", "1E9", "1E999"}) {
        Program program;
        program.data.Text3 = text3;
        EXPECT_FALSE(scope_text(program.data, program.operands, program.language)) << text3;
    }
}

TEST(ScopeExport, TheTrimmedNameIsWrittenBackToTheEntry) {
    Program program(dictionary::store_of({object("6078", "00", "", "Current  \n", "Integer16")}));
    program.record(0, kCurrent);
    ASSERT_EQ(program.data.channels[0].entries[0].name_en, filled("Current  \n", 64));
    EXPECT_EQ(line_of(program, 2), "Current,6322176");
    EXPECT_EQ(program.data.channels[0].entries[0].name_en, filled("Current", 64));
}

TEST(ScopeExport, TheOtherLanguageIsNotTrimmed) {
    Program program(dictionary::store_of({object("6078", "00", "I\n", "Current\n", "Integer16")}));
    program.record(0, kCurrent);
    program.text();
    EXPECT_EQ(program.data.channels[0].entries[0].name_ch, filled("I\n", 64));
}

// The trim does not look at the first byte, and leaves a text alone in which it finds no other.
TEST(ScopeExport, ANameOfOneByteKeepsItsBlanks) {
    Program program(dictionary::store_of(
        {object("6078", "00", "", "I", "Integer16"), object("60F6", "0C", "", "", "Integer16")}));
    program.record(0, kCurrent);
    program.record(1, kCommand);
    EXPECT_EQ(line_of(program, 2), filled("I", 64) + ",6322176");
    EXPECT_EQ(line_of(program, 3), filled("", 64) + ",6354444");
}

TEST(ScopeExportFile, HoldsTheText) {
    const TempFolder folder;
    Program program = small_recording();
    EXPECT_EQ(export_scope(folder / "a.scope", program.data, program.operands, program.language),
              Exported::kWritten);
    EXPECT_EQ(folder.get("a.scope"), program.text());
    EXPECT_EQ(folder.entries(), 1U);
}

TEST(ScopeExportFile, ANameThatEndsInXlsLeavesNoFile) {
    const TempFolder folder;
    Program program = small_recording();
    for (const char* name : {"a.xls", "a.xlsx", "axls", "xls", ".xlsm", "xls\xE4\xB8\xAD"}) {
        EXPECT_EQ(export_scope(folder / name, program.data, program.operands, program.language),
                  Exported::kNothing)
            << name;
    }
    EXPECT_EQ(folder.entries(), 0U);
}

TEST(ScopeExportFile, OnlyTheLastFourCharactersAndTheirCaseCount) {
    const TempFolder folder;
    Program program = small_recording();
    for (const char* name : {"a.XLS", "xls.scope", "a.xlsab", "xls\xE4\xB8\xAD\xE4\xB8\xAD"}) {
        EXPECT_EQ(export_scope(folder / name, program.data, program.operands, program.language),
                  Exported::kWritten)
            << name;
    }
    EXPECT_EQ(folder.entries(), 4U);
}

TEST(ScopeExportFile, TheXlsRuleLooksAtTheCleanedName) {
    const TempFolder folder;
    Program program = small_recording();
    // The line feed counts as a character: "xls" are the last three of four.
    EXPECT_EQ(export_scope(folder / "a.xls\n", program.data, program.operands, program.language),
              Exported::kNothing);
    EXPECT_EQ(export_scope(folder / "b\n.scope", program.data, program.operands, program.language),
              Exported::kWritten);
    EXPECT_EQ(folder.get("b .scope"), program.text());
}

TEST(ScopeExportFile, Characters0CrAndLfOfTheNameBecomeBlanks) {
    EXPECT_EQ(clean_file_name(std::string_view("a\0b\rc\nd e\t.scope", 16)), "a b c d e\t.scope");
    EXPECT_EQ(clean_file_name(""), "");
}

TEST(ScopeExportFile, AnEmptyNameIsACancelledDialog) {
    Program program;
    EXPECT_EQ(export_scope("", program.data, program.operands, program.language),
              Exported::kNothing);
}

TEST(ScopeExportFile, TooManySamplesLeaveTheOldFileWhole) {
    const TempFolder folder;
    folder.put("a.scope", "old");
    Program program = small_recording();
    program.data.Text3 = "8193";
    EXPECT_EQ(export_scope(folder / "a.scope", program.data, program.operands, program.language),
              Exported::kFailed);
    EXPECT_EQ(folder.get("a.scope"), "old");
    EXPECT_EQ(folder.entries(), 1U);
}

TEST(ScopeExportFile, AFolderThatIsNotThereFails) {
    const TempFolder folder;
    Program program = small_recording();
    EXPECT_EQ(
        export_scope(folder / "none" / "a.scope", program.data, program.operands, program.language),
        Exported::kFailed);
}

}  // namespace
}  // namespace servo::scope
