#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/gbk.h"
#include "dictionary/store.h"

namespace servo::dictionary {
namespace {

using namespace std::literals;

TEST(TrimTail, CutsBlanksNulsAndLineFeedsOffTheEnd) {
    EXPECT_EQ(trim_tail_bytes("speed   "), "speed");
    EXPECT_EQ(trim_tail_bytes("speed\0\0\n \0"sv), "speed");
    EXPECT_EQ(trim_tail_bytes("two words \n"), "two words");
}

TEST(TrimTail, OtherCharactersStay) {
    EXPECT_EQ(trim_tail_bytes("speed\r"), "speed\r");
    EXPECT_EQ(trim_tail_bytes("speed\t"), "speed\t");
    EXPECT_EQ(trim_tail_bytes("  speed"), "  speed");
    EXPECT_EQ(trim_tail_bytes("a\0b"sv), "a\0b"sv);
}

TEST(TrimTail, AnEmptyTextStaysEmpty) {
    EXPECT_EQ(trim_tail_bytes(""), "");
    EXPECT_EQ(trim_tail(""), "");
}

TEST(TrimTail, AnAllBlankFieldKeepsItsWidth) {
    const std::string blank(64, ' ');
    EXPECT_EQ(trim_tail_bytes(blank), blank);
    EXPECT_EQ(trim_tail(blank), blank);
    const std::string nuls(8, '\0');
    EXPECT_EQ(trim_tail_bytes(nuls), nuls);
}

TEST(TrimTail, OneCharacterAtTheStartFollowedByBlanksKeepsItsWidth) {
    const std::string field = "A" + std::string(63, ' ');
    EXPECT_EQ(trim_tail_bytes(field), field);
    EXPECT_EQ(trim_tail(field), field);
}

TEST(TrimTail, TheSecondByteIsExamined) {
    EXPECT_EQ(trim_tail_bytes("AB   "), "AB");
    EXPECT_EQ(trim_tail_bytes(" B   "), " B");
}

TEST(TrimTail, ADoubleByteCharacterIsNeverSplitAndEndsTheText) {
    EXPECT_EQ(trim_tail_bytes("\xCB\xD9   "), "\xCB\xD9");
    EXPECT_EQ(trim_tail("速   "), "速");
    EXPECT_EQ(trim_tail("速度 \n"), "速度");
}

TEST(TrimTail, ACharacterOutsideTheCodePageCountsAsOneByte) {
    EXPECT_EQ(trim_tail("😀   "), "😀   ");
    EXPECT_EQ(trim_tail("a😀   "), "a😀");
    EXPECT_EQ(trim_tail("\uFFFD   "), "\uFFFD   ");
}

RC_GTEST_PROP(TrimTail, OfTextAndOfItsBytesAgree, (const std::string& noise, std::uint8_t blanks)) {
    const std::string bytes = noise + std::string(blanks, ' ');
    const std::string text = base::gbk_to_utf8(bytes);
    RC_ASSERT(trim_tail(text) == base::gbk_to_utf8(trim_tail_bytes(bytes)));
}

RC_GTEST_PROP(TrimTail, DoneTwiceIsDoneOnce, (const std::string& text)) {
    const std::string once(trim_tail_bytes(text));
    RC_ASSERT(trim_tail_bytes(once) == once);
}

}  // namespace
}  // namespace servo::dictionary
