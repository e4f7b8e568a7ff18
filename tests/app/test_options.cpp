#include "app/options.h"

#include <gtest/gtest.h>

#include <vector>

namespace servo::app {
namespace {

ParsedOptions parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "servo-workstation");
    return parse_options(static_cast<int>(arguments.size()), arguments.data());
}

TEST(Options, NothingGivenIsThePlainProgram) {
    const auto parsed = parse({});
    EXPECT_FALSE(parsed.exit_status);
    EXPECT_TRUE(parsed.options.data.empty());
    EXPECT_FALSE(parsed.options.simulate);
    EXPECT_TRUE(parsed.options.connect.empty());
    EXPECT_FALSE(parsed.options.language);
    EXPECT_FALSE(parsed.options.ready);
    EXPECT_TRUE(parse({"--ready"}).options.ready);
}

TEST(Options, AllOfThem) {
    const auto parsed = parse({"--data", "/tmp", "--connect", "/dev/ttyUSB0", "--baud", "115200",
                               "--id", "5", "--open", "Basic", "--open", "VLoop", "--lang", "zh"});
    ASSERT_FALSE(parsed.exit_status) << parsed.error;
    EXPECT_EQ(parsed.options.data, "/tmp");
    EXPECT_EQ(parsed.options.connect, "/dev/ttyUSB0");
    EXPECT_EQ(parsed.options.baud, 115200);
    EXPECT_EQ(parsed.options.id, 5);
    EXPECT_EQ(parsed.options.open, (std::vector<std::string>{"Basic", "VLoop"}));
    EXPECT_EQ(parsed.options.language, base::Language::kChinese);
    EXPECT_EQ(parse({"--simulate", "--lang", "en"}).options.language, base::Language::kEnglish);
}

TEST(Options, WrongUseEndsWithTwoAndSaysWhy) {
    for (const auto& arguments :
         std::vector<std::vector<const char*>>{{"--nonsense"},
                                               {"--baud", "1234"},
                                               {"--id", "256"},
                                               {"--id", "-1"},
                                               {"--lang", "fr"},
                                               {"--data", "/nowhere/at/all"},
                                               {"--walk", "/nowhere/at/all.walk"},
                                               {"--simulate", "--connect", "/dev/ttyUSB0"},
                                               {"stray"}}) {
        const auto parsed = parse(arguments);
        EXPECT_EQ(parsed.exit_status, 2) << arguments.front();
        EXPECT_FALSE(parsed.error.empty()) << arguments.front();
    }
}

TEST(Options, HelpAndVersionEndWell) {
    const auto help = parse({"--help"});
    EXPECT_EQ(help.exit_status, 0);
    for (const char* option : {"--data", "--simulate", "--connect", "--baud", "--id", "--open",
                               "--walk", "--lang", "--help", "--version"})
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    const auto version = parse({"--version"});
    EXPECT_EQ(version.exit_status, 0);
    EXPECT_EQ(version.output.substr(0, 18), "servo-workstation ");
}

}  // namespace
}  // namespace servo::app
