// What a whole file sets in the program that reads it.
#include <gtest/gtest.h>

#include <utility>

#include "base/temp_folder.h"
#include "scope/scope_file_support.h"

namespace servo::scope {
namespace {

constexpr std::string_view kSettings = "16,3";
constexpr std::string_view kOperands = "10000,150,7,-8,9";
constexpr std::string_view kOff = "NULL,0";

std::string file_of(std::initializer_list<std::string_view> channels_and_samples) {
    return lines_of({kSettings, kOperands}) + lines_of(channels_and_samples);
}

std::string samples_file(std::size_t count) {
    std::string text = file_of({"a,6322176", kOff, kOff, kOff});
    for (std::size_t i = 0; i < count; ++i)
        text += std::to_string(i) + ",0,-1," + std::to_string(2 * i) + "\r\n";
    return text;
}

TEST(ScopeImport, SetsTextsOperandsChannelsAndSamples) {
    Program program;
    EXPECT_EQ(program.read(file_of({"Actual current,6322176", kOff, "Actual position,6316800", kOff,
                                    "1,2,3,4", "-1,0,2147483647,-2147483648"})),
              Imported::kDone);
    EXPECT_EQ(program.data.Text1, "16");
    EXPECT_EQ(program.data.Text3, "3");
    EXPECT_EQ(program.data.Label18, "1ms");
    EXPECT_EQ(program.operands.o64100320.value, 10000);
    EXPECT_EQ(program.operands.o65100310.value, 150);
    EXPECT_EQ(program.operands.o30400710.value, 7);
    EXPECT_EQ(program.operands.o60F61310.value, -8);
    EXPECT_EQ(program.operands.o60F61110.value, 9);
    const auto& channels = program.data.channels;
    EXPECT_TRUE(channels[0].enable);
    EXPECT_FALSE(channels[1].enable);
    EXPECT_TRUE(channels[2].enable);
    EXPECT_FALSE(channels[3].enable);
    EXPECT_EQ(channels[0].objectList.text().substr(0, 14), "Actual current");
    EXPECT_EQ(channels[2].picked()->key, kPosition);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4}));
    EXPECT_EQ(program.row(1), (std::vector<std::int32_t>{-1, 0, 2147483647, -2147483647 - 1}));
    EXPECT_EQ(program.row(2), (std::vector<std::int32_t>{0, 0, 0, 0}));
}

TEST(ScopeImport, ListsTheUnitsOfTheObjects) {
    Program program;
    program.read(file_of({"a,6322176", kOff, kOff, kOff}));
    EXPECT_EQ(program.data.channels[0].unitList.items, (std::vector<std::string>{"Ap"}));
    EXPECT_EQ(program.data.channels[0].unitsShown, kCurrent);
}

TEST(ScopeImport, Label18TellsThePeriodInUsOrMs) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"1", "62.5us"}, {"16", "1ms"}, {"2.4", "150us"}, {"32000", "2000ms"}, {"", "0ms"}};
    for (const auto& [text1, label] : table) {
        Program program;
        program.read(text1 + ",1\r\n");
        EXPECT_EQ(program.data.Label18, label) << text1;
    }
}

TEST(ScopeImport, TheOperandsCountAsSeenSoThatEveryFormulaWorks) {
    Program program;
    program.read(samples_file(1));
    EXPECT_TRUE(program.operands.o64100320.seen);
    EXPECT_TRUE(program.operands.o65100310.seen);
    EXPECT_TRUE(program.operands.o30400710.seen);
    EXPECT_TRUE(program.operands.o60F61310.seen);
    EXPECT_TRUE(program.operands.o60F61110.seen);
}

TEST(ScopeImport, AChannelThatWasDisabledLoadsAsDisabledAlthoughItsColumnHasNumbers) {
    Program program;
    program.record(1, kSpeed);
    program.data.driveConfigValues = {11, 12, 13, 14, 15, 16};
    program.data.driveConfigNext = 3;
    EXPECT_EQ(program.read(file_of({kOff, "NULL,6318848", kOff, kOff, "1,2,3,4"})),
              Imported::kDone);
    EXPECT_FALSE(program.data.channels[1].enable);
    EXPECT_EQ(program.data.channels[1].picked()->key, kSpeed);  // the choice stays
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4}));
    EXPECT_EQ(program.data.driveConfigValues, (std::array<std::int32_t, 6>{0, 0, 0, 0, 15, 16}));
    EXPECT_EQ(program.data.driveConfigNext, 0);
}

TEST(ScopeImport, NullNeedsNoKey) {
    Program program;
    EXPECT_EQ(program.read(file_of({"NULL", "NULL", "NULL,", "NULL,x,y"})), Imported::kDone);
}

TEST(ScopeImport, OnlyNullInCapitalsIsADisabledChannel) {
    Program program;
    EXPECT_EQ(program.read(file_of({"null,6322176", "NULL ,6322176", "NULLs,6322176", ",6322176"})),
              Imported::kDone);
    for (std::size_t channel = 0; channel < kCurves; ++channel)
        EXPECT_TRUE(program.data.channels[channel].enable) << channel;
}

TEST(ScopeImport, AKeyUnknownToTheDictionaryDoesNotStopTheRemainingLines) {
    Program program;
    program.record(0, kSpeed);
    program.data.lastObjectPick[0] = 1;
    EXPECT_EQ(program.read(file_of({"Gone,1193046", "b,6354444", kOff, kOff, "1,2,3,4"})),
              Imported::kDone);
    const ScopeChannel& unknown = program.data.channels[0];
    EXPECT_FALSE(unknown.enable);
    EXPECT_EQ(unknown.objectList.ListIndex, 0);
    EXPECT_EQ(unknown.objectList.items.size(), 2U);  // left out of the list
    EXPECT_EQ(program.data.lastObjectPick[0], 0);
    EXPECT_TRUE(program.data.channels[1].enable);
    EXPECT_EQ(program.data.channels[1].picked()->key, kCommand);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4}));
}

TEST(ScopeImport, TheKeyIsTheLastFieldSoCommasInANameDoNoHarm) {
    Program program;
    EXPECT_EQ(
        program.read(file_of({"Target current, q axis,6354444", "1,2,3,6322176", kOff, kOff})),
        Imported::kDone);
    EXPECT_EQ(program.data.channels[0].picked()->key, kCommand);
    EXPECT_EQ(program.data.channels[1].picked()->key, kCurrent);
}

TEST(ScopeImport, APickIsRememberedLikeTheOperatorsOwn) {
    Program program;
    program.pick(0, kSpeed);
    program.pick(0, kPosition);
    program.data.curvesChanged = false;
    program.read(file_of({"a,6318848", "a,6355968", kOff, kOff}));
    EXPECT_EQ(program.data.channels[0].objectList.ListIndex, 1);
    EXPECT_EQ(program.data.lastObjectPick[0], 1);
    EXPECT_EQ(program.data.lastObjectPick[1], 1);
    EXPECT_TRUE(program.data.curvesChanged);
}

TEST(ScopeImport, NumbersAreReadFromTheStartOfTheirFieldAndRounded) {
    const std::vector<std::pair<std::string, std::int32_t>> table{
        {"12abc", 12},
        {"", 0},
        {"x", 0},
        {" 7", 7},
        {"1.5", 2},
        {"2.5", 2},
        {"-1.5", -2},
        {"1E3", 1000},
        {"&HFFFF", -1},
        {"2147483647.4", 2147483647},
        {"-2147483648.5", -2147483647 - 1}};
    for (const auto& [field, value] : table) {
        Program program;
        EXPECT_EQ(program.read(file_of({kOff, kOff, kOff, kOff, field + ",,,1"})), Imported::kDone);
        EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{value, 0, 0, 1})) << field;
    }
}

TEST(ScopeImport, FieldsBehindTheToldOnesAreIgnored) {
    Program program;
    EXPECT_EQ(
        program.read(lines_of({"1,2", "1,2,3,4,5,6,x", kOff, kOff, kOff, kOff, "1,2,3,4,5,"})),
        Imported::kDone);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4}));
}

TEST(ScopeImport, EightThousandOneHundredAndNinetyTwoSampleLinesLoad) {
    Program program;
    EXPECT_EQ(program.read(samples_file(8192)), Imported::kDone);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{0, 0, -1, 0}));
    EXPECT_EQ(program.row(8191), (std::vector<std::int32_t>{8191, 0, -1, 16382}));
}

TEST(ScopeImport, TheNumberOfSampleLinesNeedNotBeThatOfTheFirstLine) {
    Program program;
    EXPECT_EQ(program.read(samples_file(0)), Imported::kDone);
    EXPECT_EQ(program.read(samples_file(100)), Imported::kDone);
    EXPECT_EQ(program.row(99), (std::vector<std::int32_t>{99, 0, -1, 198}));
}

TEST(ScopeImport, AnEmptyFirstOrSecondLineChangesNothingAndReadingGoesOn) {
    Program program;
    program.data.Text1 = "5";
    program.data.Label18 = "as before";
    program.operands.o64100320 = {4096, true};
    program.operands.o30400710 = {3, false};
    EXPECT_EQ(program.read(lines_of({"", "", kOff, kOff, kOff, "a,6322176", "1,2,3,4"})),
              Imported::kDone);
    EXPECT_EQ(program.data.Text1, "5");
    EXPECT_EQ(program.data.Text3, "500");
    EXPECT_EQ(program.data.Label18, "as before");
    EXPECT_EQ(program.operands.o64100320.value, 4096);
    EXPECT_TRUE(program.operands.o64100320.seen);
    EXPECT_FALSE(program.operands.o30400710.seen);
    EXPECT_TRUE(program.data.channels[3].enable);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4}));
}

TEST(ScopeImport, EmptyLinesAtTheEndAreNoSamples) {
    Program program;
    EXPECT_EQ(program.read(samples_file(8192) + "\r\n\r\n"), Imported::kDone);
}

TEST(ScopeImport, LinesMayEndInALineFeedAlone) {
    Program program;
    EXPECT_EQ(program.read("1,2\n1,2,3,4,5\nNULL,0\nNULL,0\nNULL,0\nNULL,0\n1,2,3,4\n5,6,7,8"),
              Imported::kDone);
    EXPECT_EQ(program.data.Text3, "2");
    EXPECT_EQ(program.row(1), (std::vector<std::int32_t>{5, 6, 7, 8}));
}

TEST(ScopeImport, TextsComeFromTheCodePage) {
    Program program;
    program.read("1\xD6\xDC\xC6\xDA,2\xB8\xF6\r\n");
    EXPECT_EQ(program.data.Text1, "1周期");
    EXPECT_EQ(program.data.Text3, "2个");
}

TEST(ScopeImport, LeavesEverythingElseAlone) {
    Program program;
    program.data.Text2 = "17";
    program.data.rawBytes[5] = 99;
    program.data.rawLength = 12;
    program.data.zoomDepth = 3;
    program.data.zoomWindow[3] = {4, 9};
    program.data.channels[0].hide = true;
    program.data.channels[0].scaleText = "2.0E03";
    program.pick(kTrigger, kSpeed);
    EXPECT_EQ(program.read(samples_file(20)), Imported::kDone);
    EXPECT_FALSE(program.data.importMode);  // for the caller to switch
    EXPECT_FALSE(program.data.dataValid);
    EXPECT_EQ(program.data.Text2, "17");
    EXPECT_EQ(program.data.Text4, "500");
    EXPECT_EQ(program.data.rawBytes[5], 99);
    EXPECT_EQ(program.data.rawLength, 12);
    EXPECT_EQ(program.data.zoomDepth, 3);
    EXPECT_EQ(program.data.window(), (ZoomWindow{4, 9}));
    EXPECT_TRUE(program.data.channels[0].hide);
    EXPECT_EQ(program.data.channels[0].scaleText, "2.0E03");
    EXPECT_EQ(program.data.channels[kTrigger].picked()->key, kSpeed);
}

TEST(ScopeImportFile, ReadsWhatTheFileHolds) {
    const TempFolder folder;
    folder.put("a.scope", samples_file(3));
    Program program;
    EXPECT_EQ(import_scope(folder / "a.scope", program.data, program.operands, program.dictionary,
                           program.language),
              Imported::kDone);
    EXPECT_EQ(program.row(2), (std::vector<std::int32_t>{2, 0, -1, 4}));
}

TEST(ScopeImportFile, NoFileAndAFolderCannotBeRead) {
    const TempFolder folder;
    Program program;
    for (const auto& file : {folder / "none.scope", folder.path(), std::filesystem::path()}) {
        EXPECT_EQ(import_scope(file, program.data, program.operands, program.dictionary,
                               program.language),
                  Imported::kUnreadable)
            << file;
    }
    EXPECT_EQ(program.text(), Program().text());
}

}  // namespace
}  // namespace servo::scope
