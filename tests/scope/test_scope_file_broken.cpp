// Files that are none, and files that break off: what they change, and what not.
#include <gtest/gtest.h>

#include <utility>

#include "scope/scope_file_support.h"

namespace servo::scope {
namespace {

constexpr std::string_view kOff = "NULL,0";

// A program with something to lose.
Program live_program() {
    Program program;
    program.data.Text1 = "4";
    program.data.Text3 = "1";
    program.data.Label18 = "250us";
    program.data.curvesChanged = false;
    program.operands = {{1, true}, {2, true}, {3, true}, {4, true}, {5, true}};
    program.record(0, kSpeed);
    program.record(1, kSpeed);
    program.put_samples(0, {71, 72, 73, 74});
    return program;
}

std::vector<std::int32_t> operand_values(const link::FormulaOperands& operands) {
    return {operands.o64100320.value, operands.o65100310.value, operands.o30400710.value,
            operands.o60F61310.value, operands.o60F61110.value};
}

std::vector<bool> operands_seen(const link::FormulaOperands& operands) {
    return {operands.o64100320.seen, operands.o65100310.seen, operands.o30400710.seen,
            operands.o60F61310.seen, operands.o60F61110.seen};
}

const std::vector<bool> kAllSeen{true, true, true, true, true};

TEST(BrokenScopeFile, AWrongFirstLineChangesNothing) {
    const std::string rest = lines_of({"9,9,9,9,9", "a,6322176", kOff, kOff, kOff, "1,2,3,4"});
    for (const std::string first : {"16", "16,3,", "16,3,5", ",,", "16;3", " ", "\xFF\xFE"}) {
        Program program = live_program();
        EXPECT_EQ(program.read(lines_of({first}) + rest), Imported::kRefused) << first;
        EXPECT_EQ(program.text(), live_program().text()) << first;
        EXPECT_EQ(program.data.Label18, "250us");
        EXPECT_EQ(operands_seen(program.operands), kAllSeen);
        EXPECT_FALSE(program.data.curvesChanged);
    }
}

TEST(BrokenScopeFile, AnEmptyFileChangesNothing) {
    Program program = live_program();
    EXPECT_EQ(program.read(""), Imported::kRefused);
    EXPECT_EQ(program.text(), live_program().text());
}

TEST(BrokenScopeFile, APeriodThatIsNoNumberOfTheMachineEndsTheImportBehindTheTexts) {
    Program program = live_program();
    EXPECT_EQ(program.read(lines_of({"1E999,7", "9,9,9,9,9"})), Imported::kBroken);
    EXPECT_EQ(program.data.Text1, "1E999");
    EXPECT_EQ(program.data.Text3, "7");
    EXPECT_EQ(program.data.Label18, "250us");
    EXPECT_EQ(operand_values(program.operands), (std::vector<std::int32_t>{1, 2, 3, 4, 5}));
}

// A file that breaks at `bad`, the line of the operands.
void expect_operands(std::string_view bad, const std::vector<std::int32_t>& values,
                     const std::vector<bool>& seen) {
    Program program = live_program();
    EXPECT_EQ(program.read(lines_of({"16,3", bad, kOff, kOff, kOff, kOff})), Imported::kBroken)
        << bad;
    EXPECT_EQ(program.data.Label18, "1ms");
    EXPECT_EQ(operand_values(program.operands), values) << bad;
    EXPECT_EQ(operands_seen(program.operands), seen) << bad;
    EXPECT_TRUE(program.data.channels[0].enable) << "read behind the failure";
}

// Numbers of a file that nobody looks at do not pass for the drive's.
TEST(BrokenScopeFile, OperandsUpToTheFailureStayButDoNotCountAsSeen) {
    const bool no = false;
    const bool yes = true;
    expect_operands("9", {9, 2, 3, 4, 5}, {no, yes, yes, yes, yes});
    expect_operands("9,9,9,9", {9, 9, 9, 9, 5}, {no, no, no, no, yes});
    expect_operands("9,32768,9,9,9", {9, 2, 3, 4, 5}, {no, yes, yes, yes, yes});
    expect_operands("9,-32769,9,9,9", {9, 2, 3, 4, 5}, {no, yes, yes, yes, yes});
    expect_operands("9,9,2147483648,9,9", {9, 9, 3, 4, 5}, {no, no, yes, yes, yes});
    expect_operands("2147483647.5,9,9,9,9", {1, 2, 3, 4, 5}, kAllSeen);
    expect_operands("9,9,9,9,1E999", {9, 9, 9, 9, 5}, {no, no, no, no, yes});
}

TEST(BrokenScopeFile, TheSecondOperandTakesTheWhole16BitRange) {
    for (const auto& [text, value] :
         {std::pair("32767", 32767), std::pair("-32768", -32768), std::pair("32767.5", 0)}) {
        Program program;
        const std::string line = "0," + std::string(text) + ",0,0,0";
        program.read(lines_of({"1,1", line, kOff, kOff, kOff, kOff}));
        EXPECT_EQ(program.operands.o65100310.value, value) << text;
    }
}

TEST(BrokenScopeFile, AChannelLineWithoutItsFieldsEndsTheImportThere) {
    for (const std::string_view bad :
         {"", "6322176", "a", "null", "a,2147483648", "a,-1E10", "a,1E999"}) {
        Program program = live_program();
        EXPECT_EQ(program.read(lines_of({"16,3", "9,9,9,9,9", "a,6322176", bad, kOff, kOff})),
                  Imported::kBroken)
            << bad;
        EXPECT_EQ(program.data.channels[0].picked()->key, kCurrent) << bad;
        EXPECT_TRUE(program.data.channels[1].enable) << bad;
        EXPECT_EQ(program.data.channels[1].picked()->key, kSpeed) << bad;
        EXPECT_EQ(program.data.channels[1].objectList.items.size(), 2U) << bad;
        EXPECT_EQ(operand_values(program.operands), (std::vector<std::int32_t>{9, 9, 9, 9, 9}));
        EXPECT_EQ(operands_seen(program.operands), std::vector<bool>(5, false));
    }
}

TEST(BrokenScopeFile, AFileThatEndsBeforeItsSamplesIsBroken) {
    const std::vector<std::string_view> head{"16,3", "9,9,9,9,9", kOff, kOff, kOff, kOff};
    std::string text;
    for (const std::string_view line : head) {
        if (!text.empty()) {
            Program program = live_program();
            EXPECT_EQ(program.read(text), Imported::kBroken) << text;
            EXPECT_EQ(program.data.Text3, "3");
        }
        text.append(line).append("\r\n");
    }
    EXPECT_EQ(Program().read(text), Imported::kDone);
}

void expect_samples(std::string_view bad, const std::vector<std::int32_t>& row) {
    Program program = live_program();
    program.put_samples(1, {81, 82, 83, 84});
    EXPECT_EQ(program.read(lines_of(
                  {"16,3", "9,9,9,9,9", kOff, kOff, kOff, kOff, "1,2,3,4", bad, "5,6,7,8"})),
              Imported::kBroken)
        << bad;
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 4})) << bad;
    EXPECT_EQ(program.row(1), row) << bad;
    EXPECT_EQ(program.row(2), (std::vector<std::int32_t>{0, 0, 0, 0})) << bad;
}

TEST(BrokenScopeFile, ASampleLineWithoutFourNumbersEndsTheImportThere) {
    expect_samples("", {81, 82, 83, 84});
    expect_samples("10", {10, 82, 83, 84});
    expect_samples("10,20,30", {10, 20, 30, 84});
    expect_samples("10,20,2147483648,40", {10, 20, 83, 84});
    expect_samples("-2147483649,20,30,40", {81, 82, 83, 84});
    expect_samples("10,20,30,1E999", {10, 20, 30, 84});
}

TEST(BrokenScopeFile, OneSampleLineMoreThan8192IsRefusedThere) {
    std::string text = lines_of({"1,8193", "9,9,9,9,9", kOff, kOff, kOff, kOff});
    for (int i = 0; i < 8193; ++i)
        text += "1,2,3," + std::to_string(i) + "\r\n";
    Program program = live_program();
    EXPECT_EQ(program.read(text), Imported::kBroken);
    EXPECT_EQ(program.row(0), (std::vector<std::int32_t>{1, 2, 3, 0}));
    EXPECT_EQ(program.row(8191), (std::vector<std::int32_t>{1, 2, 3, 8191}));
    for (const ScopeChannel& channel : program.data.channels)
        EXPECT_EQ(channel.samples.size(), kMaxSamples);
}

}  // namespace
}  // namespace servo::scope
