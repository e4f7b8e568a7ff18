#include <gtest/gtest.h>

#include "cli/options.h"

namespace servo::cli {
namespace {

Options good(std::vector<std::string> arguments) {
    const ParsedLine parsed = parse_command_line(std::move(arguments));
    EXPECT_TRUE(parsed.options.has_value()) << parsed.end.err;
    return parsed.options.value_or(Options{});
}

EarlyEnd ended(std::vector<std::string> arguments) {
    const ParsedLine parsed = parse_command_line(std::move(arguments));
    EXPECT_FALSE(parsed.options.has_value());
    return parsed.end;
}

TEST(Options, ReadTakesSeveralKeysInAnyCase) {
    const Options options = good({"--sim", "read", "606300", "607a00"});
    EXPECT_TRUE(options.sim);
    EXPECT_EQ(options.command, CommandName::kRead);
    EXPECT_EQ(options.keys, (std::vector<dictionary::Identity>{0x606300, 0x607A00}));
    EXPECT_EQ(options.unit, "");
}

TEST(Options, DefaultsOfTheLine) {
    const Options options = good({"ports"});
    EXPECT_EQ(options.baud, 38400);
    EXPECT_EQ(options.id, 127);
    EXPECT_EQ(options.timeout, std::chrono::milliseconds(5000));
    EXPECT_EQ(options.language, base::Language::kEnglish);
    EXPECT_FALSE(options.json);
    EXPECT_TRUE(options.port.empty());
}

TEST(Options, GlobalOptionsBeforeAndBehindTheCommand) {
    const Options before = good({"--port", "/dev/ttyS1", "--baud", "9600", "--id", "1", "--data",
                                 "d", "--lang", "zh", "--json", "--timeout", "0.5", "faults"});
    const Options behind = good({"faults", "--port", "/dev/ttyS1", "--baud", "9600", "--id", "1",
                                 "--data", "d", "--lang", "zh", "--json", "--timeout", "0.5"});
    for (const Options& options : {before, behind}) {
        EXPECT_EQ(options.command, CommandName::kFaults);
        EXPECT_EQ(options.port, "/dev/ttyS1");
        EXPECT_EQ(options.baud, 9600);
        EXPECT_EQ(options.id, 1);
        EXPECT_EQ(options.data, "d");
        EXPECT_EQ(options.language, base::Language::kChinese);
        EXPECT_TRUE(options.json);
        EXPECT_EQ(options.timeout, std::chrono::milliseconds(500));
    }
}

TEST(Options, WriteTakesAKeyATextAndAUnit) {
    const Options options = good({"write", "60FF00", "12.5", "--unit", "rpm"});
    EXPECT_EQ(options.command, CommandName::kWrite);
    EXPECT_EQ(options.keys, (std::vector<dictionary::Identity>{0x60FF00}));
    EXPECT_EQ(options.text, "12.5");
    EXPECT_EQ(options.unit, "rpm");
}

TEST(Options, NegativeTextIsNoOption) {
    EXPECT_EQ(good({"write", "607A00", "-5"}).text, "-5");
    EXPECT_EQ(good({"write", "607A00", "-12.5", "--unit", "rpm"}).text, "-12.5");
    EXPECT_EQ(good({"write", "607A00", "--", "-.5"}).text, "-.5");
}

TEST(Options, EmptyTextIsAText) {
    EXPECT_EQ(good({"write", "607A00", ""}).text, "");
}

TEST(Options, WatchTakesCountAndPeriod) {
    const Options options = good({"watch", "606300", "606C00", "--count", "3", "--every", "0"});
    EXPECT_EQ(options.command, CommandName::kWatch);
    EXPECT_EQ(options.keys.size(), 2U);
    EXPECT_EQ(options.count, 3);
    EXPECT_EQ(options.every, std::chrono::milliseconds(0));
    EXPECT_EQ(good({"watch", "606300"}).count, 0);
}

TEST(Options, RecordTakesAFileObjectsAndTheScreensDefaults) {
    const Options options = good({"record", "out.scope", "--objects", "606300,60ff00"});
    EXPECT_EQ(options.command, CommandName::kRecord);
    EXPECT_EQ(options.keys, (std::vector<dictionary::Identity>{0x606300, 0x60FF00}));
    EXPECT_EQ(options.record.file, "out.scope");
    EXPECT_EQ(options.record.period, 1);
    EXPECT_EQ(options.record.samples, 500);
    EXPECT_EQ(options.record.offset, 250);
    EXPECT_FALSE(options.record.trigger.has_value());
}

TEST(Options, RecordTakesATriggerWithALevelThatMayBeNegative) {
    const Options options =
        good({"record", "--objects", "606300", "out.scope", "--period", "16", "--samples", "2000",
              "--trigger", "60FF00", "--level", "-12.5", "--edge", "0", "--offset", "0", "--json"});
    EXPECT_EQ(options.record.file, "out.scope");
    EXPECT_EQ(options.record.period, 16);
    EXPECT_EQ(options.record.samples, 2000);
    EXPECT_EQ(options.record.offset, 0);
    ASSERT_TRUE(options.record.trigger.has_value());
    EXPECT_EQ(options.record.trigger->key, 0x60FF00);
    EXPECT_EQ(options.record.trigger->level, "-12.5");
    EXPECT_EQ(options.record.trigger->edge, 0);
    EXPECT_TRUE(options.json);
    EXPECT_EQ(good({"record", "o", "--objects", "606300", "--trigger", "606300", "--level", "1"})
                  .record.trigger->edge,
              1);
}

TEST(Options, DictHasTwoCommandsOfItsOwn) {
    const Options find = good({"dict", "find", "velocity loop"});
    EXPECT_EQ(find.command, CommandName::kDictFind);
    EXPECT_EQ(find.text, "velocity loop");
    const Options show = good({"dict", "show", "60F611"});
    EXPECT_EQ(show.command, CommandName::kDictShow);
    EXPECT_EQ(show.keys.front(), 0x60F611);
    EXPECT_EQ(good({"dict", "find", "x", "--json"}).json, true);
}

TEST(Options, WrongUseEndsWithTwo) {
    const std::vector<std::vector<std::string>> lines{
        {},
        {"bogus"},
        {"--bogus", "ports"},
        {"read"},
        {"read", "60630"},
        {"read", "6063000"},
        {"read", "60630G"},
        {"read", "0x6063"},
        {"read", "+06063"},
        {"write", "607A00"},
        {"write", "607A00", "1", "2"},
        {"dict"},
        {"dict", "bogus"},
        {"dict", "show", "607A00", "606300"},
        {"--sim", "--port", "/dev/ttyS0", "ports"},
        {"--baud", "1234", "ports"},
        {"--id", "256", "ports"},
        {"--lang", "de", "ports"},
        {"--timeout", "0", "ports"},
        {"--timeout", "x", "ports"},
        {"--timeout", "nan", "ports"},
        {"--timeout", "inf", "ports"},
        {"watch", "606300", "--count", "0"},
        {"watch", "606300", "--every", "-1"},
        {"watch", "606300", "--every", "3600001"},
        {"ports", "ports"},
        {"record", "out.scope"},
        {"record", "--objects", "606300"},
        {"record", "out.scope", "--objects", ""},
        {"record", "out.scope", "--objects", "606300,"},
        {"record", "out.scope", "--objects", "606300,60630G"},
        {"record", "out.scope", "--objects", "606300 607A00"},
        {"record", "out.scope", "--objects", "606000,606100,606200,606300,606400"},
        {"record", "out.scope", "--objects", "606300", "--period", "0"},
        {"record", "out.scope", "--objects", "606300", "--period", "65536"},
        {"record", "out.scope", "--objects", "606300", "--samples", "0"},
        {"record", "out.scope", "--objects", "606300", "--samples", "8193"},
        {"record", "out.scope", "--objects", "606300", "--samples", "x"},
        {"record", "out.scope", "--objects", "606300", "--offset", "-1"},
        {"record", "out.scope", "--objects", "606300", "--trigger", "606300"},
        {"record", "out.scope", "--objects", "606300", "--level", "5"},
        {"record", "out.scope", "--objects", "606300", "--edge", "1"},
        {"record", "out.scope", "--objects", "606300", "--trigger", "606300", "--level", "5",
         "--edge", "2"},
    };
    for (const std::vector<std::string>& line : lines) {
        const EarlyEnd end = ended(line);
        EXPECT_EQ(end.status, ExitStatus::kWrongUse);
        EXPECT_TRUE(end.out.empty());
        EXPECT_TRUE(end.err.starts_with("servoctl: ")) << end.err;
    }
}

TEST(Options, ALimitIsToldAsANumberThatCanBeRead) {
    EXPECT_EQ(ended({"--timeout", "nan", "ports"}).err,
              "servoctl: --timeout: nan is no time from 0.001 to 3600 s\n"
              "servoctl --help tells the use.\n");
    for (const char* option : {"--count", "--every"})
        EXPECT_LT(ended({"watch", "606300", option, "-1"}).err.size(), 120U);
}

TEST(Options, WrongKeyIsNamed) {
    EXPECT_NE(ended({"read", "60630G"}).err.find("60630G"), std::string::npos);
    EXPECT_NE(ended({"read", "60630G"}).err.find("six hexadecimal digits"), std::string::npos);
}

TEST(Options, HelpAndVersionGoToStandardOutput) {
    const EarlyEnd help = ended({"--help"});
    EXPECT_EQ(help.status, ExitStatus::kDone);
    for (const char* word :
         {"ports", "dict", "read", "write", "watch", "faults", "formula", "record"})
        EXPECT_NE(help.out.find(word), std::string::npos) << word;
    EXPECT_NE(ended({"watch", "--help"}).out.find("--every"), std::string::npos);
    EXPECT_TRUE(ended({"--version"}).out.starts_with("servoctl "));
}

TEST(Options, KeysPrintAsSixUpperCaseDigits) {
    EXPECT_EQ(key_text(0x60f611), "60F611");
    EXPECT_EQ(key_text(0x100000), "100000");
    EXPECT_EQ(key_text(0x000001), "000001");
}

}  // namespace
}  // namespace servo::cli
