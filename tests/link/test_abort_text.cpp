// A refusal in words.
#include <gtest/gtest.h>

#include "link/abort_text.h"

namespace servo::link {
namespace {

using base::Language;

TEST(AbortText, ACodeOfTheStandardHasItsWordsInBothLanguages) {
    EXPECT_EQ(abort_text(0x06010002, Language::kEnglish), "0x06010002, a read-only object");
    EXPECT_EQ(abort_text(0x06090031, Language::kChinese), "0x06090031，数值过大");
}

TEST(AbortText, AnyOtherCodeIsShownBare) {
    EXPECT_EQ(abort_text(0x12345678, Language::kEnglish), "0x12345678");
    EXPECT_EQ(abort_text(0, Language::kChinese), "0x00000000");
}

}  // namespace
}  // namespace servo::link
