#include <gtest/gtest.h>

#include <set>
#include <string>

#include "base/file.h"
#include "params/page_loader.h"
#include "params/page_table.h"

namespace servo::params {
namespace {

using Keys = std::vector<dictionary::Identity>;

TEST(PageLoader, AFileWithTwoHeaderLinesAndNoMoreGivesNoRows) {
    EXPECT_EQ(parse_page_keys("Basic\r\nobjects\r\n"), Keys{});
    EXPECT_EQ(parse_page_keys("Basic\nobjects"), Keys{});
    EXPECT_EQ(parse_page_keys("606000"), Keys{});
    EXPECT_EQ(parse_page_keys(""), Keys{});
}

TEST(PageLoader, TheFirstTwoLinesAreSkippedWhateverTheyHold) {
    EXPECT_EQ(parse_page_keys("606000\n\n606100\n"), Keys{0x606100});
    EXPECT_EQ(parse_page_keys("\n\n606100\n"), Keys{0x606100});
}

TEST(PageLoader, OnlyTheLastSixCharactersOfALineCount) {
    const std::string long_line(5000, 'x');
    EXPECT_EQ(parse_page_keys("a\nb\nOperation mode, 0x606000\n" + long_line + "60FF00\n60A\n"),
              (Keys{0x606000, 0x60FF00, 0x60A}));
}

TEST(PageLoader, CharactersAreCountedAndNotBytes) {
    // A character of the code page whose second byte is "A", then five digits.
    const std::string line = std::string("\x81\x41", 2) + "06000";
    EXPECT_EQ(parse_page_keys("a\nb\n" + line + "\n"), Keys{0})
        << "the sixth character from the end is no digit";
    EXPECT_EQ(parse_page_keys("a\nb\n\xB9\xA4\xD7\xF7 606000\n"), Keys{0x606000});
}

TEST(PageLoader, TheFirstEmptyLineEndsTheList) {
    EXPECT_EQ(parse_page_keys("a\r\nb\r\n606000\r\n\r\n606100\r\n"), Keys{0x606000});
}

TEST(PageLoader, ALastLineWithoutLineEndCounts) {
    EXPECT_EQ(parse_page_keys("a\nb\n606000\n606100"), (Keys{0x606000, 0x606100}));
}

TEST(PageLoader, ABlankBehindTheKeyTakesTheFirstDigitsPlace) {
    EXPECT_EQ(parse_page_keys("a\nb\n606012 \n"), Keys{0x6012});
}

TEST(PageLoader, SmallLettersAreDigitsToo) {
    EXPECT_EQ(parse_page_keys("a\nb\n60ff00\n"), Keys{0x60FF00});
}

TEST(PageLoader, ALineThatIsNoNumberGivesTheKeyZero) {
    EXPECT_EQ(parse_page_keys("a\nb\nnothing\n606000\n"), (Keys{0, 0x606000}));
}

TEST(PageLoader, AtMost255RowsAreRead) {
    std::string content = "a\nb\n";
    for (int i = 0; i < 300; ++i)
        content += "606000\n";
    EXPECT_EQ(parse_page_keys(content).size(), 255U);
}

TEST(PageLoader, AMissingFileIsToldToTheCallerOnly) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "no_such_page";
    EXPECT_FALSE(load_page_keys(folder, R"(\sys\Basic.ini)").has_value());
    EXPECT_EQ(missing_file_text(R"(\sys\Basic.ini)"), R"(Missing file \sys\Basic.ini)");
}

TEST(PageLoader, AFileIsFoundBelowTheProgramsFolder) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "page_loader";
    std::filesystem::create_directories(folder / "sys");
    ASSERT_TRUE(base::write_file(folder / "sys" / "basicoperate.INI", "a\r\nb\r\n606000\r\n"));
    EXPECT_EQ(load_page_keys(folder, R"(\sys\BasicOperate.ini)"), Keys{0x606000});
    std::filesystem::remove_all(folder);
}

TEST(PageTable, HasTwentyTwoPagesOfDifferentNamesAndFiles) {
    std::set<std::string_view> names;
    std::set<std::string_view> files;
    for (const PageDefinition& page : kPageTable) {
        names.insert(page.name);
        files.insert(page.file);
        EXPECT_FALSE(page.caption.chinese.empty()) << page.name;
        EXPECT_FALSE(page.caption.english.empty()) << page.name;
    }
    EXPECT_EQ(names.size(), 22U);
    EXPECT_EQ(files.size(), 22U);
}

TEST(PageTable, FilesAreLoadedInTheOrderOfStartUp) {
    std::vector<std::string_view> files;
    for (const std::size_t position : pages_in_load_order()) {
        files.push_back(kPageTable.at(position).file);
    }
    const std::vector<std::string_view> expected{R"(\sys\BasicOperate.ini)",
                                                 R"(\sys\PositionLoop.ini)",
                                                 R"(\sys\VelocityLoop.ini)",
                                                 R"(\sys\AnalogTorqueMode.ini)",
                                                 R"(\sys\AnalogVelocityMode.ini)",
                                                 R"(\sys\AutoReverse.ini)",
                                                 R"(\sys\AutoTuning.ini)",
                                                 R"(\sys\CurrentLoop.ini)",
                                                 R"(\sys\DriverConfig.ini)",
                                                 R"(\sys\DriverProperty.ini)",
                                                 R"(\sys\F000.ini)",
                                                 R"(\sys\F002.ini)",
                                                 R"(\sys\F003.ini)",
                                                 R"(\sys\F004.ini)",
                                                 R"(\sys\F005.ini)",
                                                 R"(\sys\HomingMode.ini)",
                                                 R"(\sys\MotorConfig.ini)",
                                                 R"(\sys\MultiPositionMode.ini)",
                                                 R"(\sys\MultiVelocityMode.ini)",
                                                 R"(\sys\PulseMode.ini)",
                                                 R"(\sys\ErrorHistory.ini)",
                                                 R"(\sys\PdoOther.ini)"};
    EXPECT_EQ(files, expected);
}

TEST(PageTable, TheReducedVariantSaysControllerInTwoCaptions) {
    const PageDefinition* config = find_page_definition("Driver_CFG");
    const PageDefinition* property = find_page_definition("Driver_Property");
    ASSERT_NE(config, nullptr);
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(config->caption_of(dictionary::Variant::kAllItems).english, "Driver Configuration");
    EXPECT_EQ(config->caption_of(dictionary::Variant::kReduced).english, "Controller Configration");
    EXPECT_EQ(property->caption_of(dictionary::Variant::kReduced).english, "Controller Property");
    for (const PageDefinition& page : kPageTable) {
        EXPECT_EQ(page.reduced_caption.chinese, page.caption.chinese);
    }
}

TEST(PageTable, PagesAreFoundWithoutRegardToCase) {
    const PageDefinition* page = find_page_definition("ECANSet");
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->name, "ECANset");
    EXPECT_EQ(page->caption.in(base::Language::kChinese), "ECAN Settings");
    EXPECT_EQ(find_page_definition("Scope"), nullptr);
    EXPECT_EQ(find_page_definition(""), nullptr);
}

}  // namespace
}  // namespace servo::params
