#include "base/language.h"

#include <gtest/gtest.h>

#include "base/notice.h"

namespace servo::base {
namespace {

TEST(Language, TextGivesTheLiteralOfTheLanguage) {
    constexpr Text kText{"打开", "OPEN"};
    EXPECT_EQ(kText.in(Language::kChinese), "打开");
    EXPECT_EQ(kText.in(Language::kEnglish), "OPEN");
}

TEST(Language, StoredNumbersAreZeroChineseOneEnglish) {
    EXPECT_EQ(static_cast<int>(Language::kChinese), 0);
    EXPECT_EQ(static_cast<int>(Language::kEnglish), 1);
}

TEST(Language, FontGoesWithTheLanguage) {
    EXPECT_EQ(font_name(Language::kChinese), "宋体");
    EXPECT_EQ(font_name(Language::kEnglish), "Tahoma");
}

TEST(Notice, TitleBeginsWithABlankInBothLanguages) {
    EXPECT_EQ(kNoticeTitle.chinese, " 提示");
    EXPECT_EQ(kNoticeTitle.english, " Notice");
}

}  // namespace
}  // namespace servo::base
