#include "app/tag_text.h"

#include <gtest/gtest.h>

namespace servo::app {
namespace {

using base::Language;

TEST(TagText, TwoPartsGiveThePartOfTheLanguage) {
    EXPECT_EQ(tag_part("波特率/Baud rate", Language::kChinese), "波特率");
    EXPECT_EQ(tag_part("波特率/Baud rate", Language::kEnglish), "Baud rate");
}

TEST(TagText, OnePartStandsInBothLanguages) {
    EXPECT_EQ(tag_part("COM", Language::kChinese), "COM");
    EXPECT_EQ(tag_part("COM", Language::kEnglish), "COM");
}

TEST(TagText, AThirdSlotIsTakenWhenItIsThere) {
    EXPECT_EQ(tag_part("一/one/eins", 2), "eins");
    EXPECT_EQ(tag_part("一/one", 2), "一");
}

TEST(TagText, AnEmptyPartIsThePart) {
    EXPECT_EQ(tag_part("名称/", Language::kEnglish), "");
    EXPECT_EQ(tag_part("", Language::kEnglish), "");
}

TEST(TagText, ABlockIsCutAtItsLineEndAndKeepsItsSlashes) {
    EXPECT_EQ(block_part("速度 rps/s\r\nSpeed rps/s", 0), "速度 rps/s");
    EXPECT_EQ(block_part("速度 rps/s\r\nSpeed rps/s", 1), "Speed rps/s");
    EXPECT_EQ(block_part("速度 rps/s\r\nSpeed rps/s", 2), "速度 rps/s");
    EXPECT_EQ(block_part("one\ntext", 1), "one\ntext");
}

TEST(TagText, TheThirdSlotOfWindowsAndTabs) {
    EXPECT_EQ(window_caption("一/one/eins\\x", 2), "eins");
    EXPECT_EQ(window_caption("一/one", 2), "一");
    EXPECT_EQ(window_caption("", 2), "");
    EXPECT_EQ(tab_captions("一/one/eins|二/two", 2), (std::vector<std::string_view>{"eins", "二"}));
}

TEST(TagText, TheCaptionOfAWindowEndsAtTheBackslash) {
    EXPECT_EQ(window_caption("原点定义/Homing Definition\\606000\\", Language::kEnglish),
              "Homing Definition");
    EXPECT_EQ(window_caption("原点定义/Homing Definition\\606000\\", Language::kChinese),
              "原点定义");
    EXPECT_EQ(window_caption("Control Command Setting(F000)", Language::kChinese),
              "Control Command Setting(F000)");
}

TEST(TagText, ABackslashMakesACustomWindow) {
    EXPECT_TRUE(tag_is_custom("原点定义/Homing Definition\\"));
    EXPECT_FALSE(tag_is_custom("基本操作/Basic Operation"));
}

TEST(TagText, TabsAreSeparatedByABar) {
    const auto english = tab_captions("串口/RS232|CAN", Language::kEnglish);
    ASSERT_EQ(english.size(), 2U);
    EXPECT_EQ(english[0], "RS232");
    EXPECT_EQ(english[1], "CAN");
    EXPECT_EQ(tab_captions("串口/RS232|CAN", Language::kChinese)[0], "串口");
}

}  // namespace
}  // namespace servo::app
