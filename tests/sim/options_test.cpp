// What the command line's texts mean.
#include "sim/options.h"

#include <gtest/gtest.h>

#include "sim/text.h"

namespace servo::sim {
namespace {

TEST(FaultOption, EachKindIsTaken) {
    Options options;
    for (const char* spec : {"drop:0.25", "corrupt:0.5", "double:1", "foreign:0.125", "lose:0.0625",
                             "stutter:0", "delay:20", "silent", "abort:606300", "mute:60F901",
                             "mute:607A00", "fault1:0200", "fault2:8000"}) {
        EXPECT_EQ(add_fault(options, spec), std::nullopt) << spec;
    }
    EXPECT_EQ(options.faults.drop, 0.25);
    EXPECT_EQ(options.faults.corrupt, 0.5);
    EXPECT_EQ(options.faults.doubled, 1.0);
    EXPECT_EQ(options.faults.foreign, 0.125);
    EXPECT_EQ(options.faults.lose, 0.0625);
    EXPECT_EQ(options.faults.stutter, 0.0);
    EXPECT_EQ(options.faults.delay.count(), 20);
    EXPECT_TRUE(options.faults.silent);
    EXPECT_EQ(options.faults.abort, std::vector<dictionary::Identity>{0x606300});
    EXPECT_EQ(options.faults.mute, (std::vector<dictionary::Identity>{0x60F901, 0x607A00}));
    EXPECT_EQ(options.fault1, 0x0200);
    EXPECT_EQ(options.fault2, 0x8000);
}

TEST(FaultOption, NonsenseIsSaidAndChangesNothing) {
    Options options;
    for (const char* spec :
         {"", "drop", "drop:", "drop:2", "drop:-0.1", "drop:nan", "drop:0.1x", "delay:x",
          "delay:-1", "delay:99999999", "silent:1", "abort:6063", "abort:6063000", "abort:60630G",
          "fault1:12345", "fault1:", "lightning:1"}) {
        EXPECT_TRUE(add_fault(options, spec)) << spec;
    }
    EXPECT_EQ(options.faults.drop, 0.0);
    EXPECT_EQ(options.faults.delay.count(), 0);
    EXPECT_FALSE(options.faults.silent);
    EXPECT_TRUE(options.faults.abort.empty());
    EXPECT_EQ(options.fault1, 0);
}

TEST(FaultOption, EachOfTheBootloaderIsTaken) {
    Options options;
    for (const char* spec :
         {"boot-silent:entry", "boot-silent:hi", "boot-silent:type", "boot-silent:erase",
          "boot-silent:switch", "boot-silent:block", "boot-silent:go", "boot-wrong-type",
          "boot-erase-fails", "boot-no-switch", "boot-start-fails", "boot-erase:0",
          "boot-programme:25", "boot-refuse:1", "boot-flash:256"}) {
        EXPECT_EQ(add_fault(options, spec), std::nullopt) << spec;
    }
    const BootOptions& boot = options.boot;
    EXPECT_EQ(boot.silent.size(), 7U);
    EXPECT_TRUE(boot.wrong_type && boot.erase_fails && boot.no_switch && boot.start_fails);
    EXPECT_EQ(boot.erase_time.count(), 0);
    EXPECT_EQ(boot.programme_time.count(), 25);
    EXPECT_EQ(boot.refused_block, 1U);
    EXPECT_EQ(boot.flash_block, 256U);
}

TEST(FaultOption, NonsenseOfTheBootloaderIsSaidAndChangesNothing) {
    Options options;
    for (const char* spec : {"boot-silent", "boot-silent:", "boot-silent:all", "boot-wrong-type:1",
                             "boot-erase", "boot-erase:", "boot-erase:-1", "boot-erase:99999999",
                             "boot-programme:x", "boot-refuse:0", "boot-refuse:257",
                             "boot-flash:", "boot-start-fails:0", "boot-", "boot"}) {
        EXPECT_TRUE(add_fault(options, spec)) << spec;
    }
    EXPECT_TRUE(options.boot.silent.empty());
    EXPECT_FALSE(options.boot.wrong_type);
    EXPECT_FALSE(options.boot.start_fails);
    EXPECT_EQ(options.boot.erase_time.count(), 2560);
    EXPECT_EQ(options.boot.programme_time.count(), 10);
    EXPECT_FALSE(options.boot.refused_block);
    EXPECT_FALSE(options.boot.flash_block);
}

TEST(SettingOption, TakesAllBehindTheFirstEqualsSign) {
    Options options;
    EXPECT_EQ(add_setting(options, "100800=a = b"), std::nullopt);
    EXPECT_EQ(add_setting(options, "641003=0x10000"), std::nullopt);
    ASSERT_EQ(options.settings.size(), 2U);
    EXPECT_EQ(options.settings[0].object, 0x100800);
    EXPECT_EQ(options.settings[0].value, "a = b");
    EXPECT_TRUE(add_setting(options, "641003"));
    EXPECT_TRUE(add_setting(options, "6410=1"));
}

TEST(Text, IntegersAreWholeTextsOnly) {
    EXPECT_EQ(parse_integer("-5"), -5);
    EXPECT_EQ(parse_integer("+5"), 5);
    EXPECT_EQ(parse_integer("0xFFFFFFFF"), 4294967295);
    EXPECT_EQ(parse_integer("4294967295"), 4294967295);
    for (const char* text : {"", "+", "++5", "-", "5 ", " 5", "5x", "0x", "0x123456789", "1.0"}) {
        EXPECT_FALSE(parse_integer(text)) << text;
    }
}

TEST(Text, SplitGivesOnePieceMoreThanSeparators) {
    EXPECT_EQ(split("a\t\tb", '\t'), (std::vector<std::string_view>{"a", "", "b"}));
    EXPECT_EQ(split("", '\t'), std::vector<std::string_view>{""});
    EXPECT_EQ(trim(" \ta b\t "), "a b");
    EXPECT_EQ(trim("\t "), "");
}

}  // namespace
}  // namespace servo::sim
