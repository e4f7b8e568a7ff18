#include "base/gbk.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace servo::base {
namespace {

using namespace std::literals;

constexpr std::string_view kUnknown = "\uFFFD";

TEST(Gbk, ConvertsBothWays) {
    EXPECT_EQ(gbk_to_utf8("\xC4\xBF\xB1\xEA\xCB\xD9\xB6\xC8"), "目标速度");
    EXPECT_EQ(utf8_to_gbk("目标速度"), "\xC4\xBF\xB1\xEA\xCB\xD9\xB6\xC8");
    EXPECT_EQ(gbk_to_utf8("\xCB\xCE\xCC\xE5"), "宋体");
    EXPECT_EQ(utf8_to_gbk(" 提示"), " \xCC\xE1\xCA\xBE");
    EXPECT_EQ(gbk_to_utf8("\x81\x40"), "丂");  // beyond the older code page
}

TEST(Gbk, AsciiStaysAsItIs) {
    std::string all;
    for (int c = 0; c < 0x80; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(gbk_to_utf8(all), all);
    EXPECT_EQ(utf8_to_gbk(all), all);
    EXPECT_EQ(gbk_to_utf8(""), "");
    EXPECT_EQ(utf8_to_gbk(""), "");
}

TEST(Gbk, MixedTextKeepsItsOrder) {
    EXPECT_EQ(gbk_to_utf8("speed \xCB\xD9\xB6\xC8 [rpm] 12345678 \xD7\xAA"),
              "speed 速度 [rpm] 12345678 转");
    EXPECT_EQ(utf8_to_gbk("speed 速度 [rpm] 12345678 转"),
              "speed \xCB\xD9\xB6\xC8 [rpm] 12345678 \xD7\xAA");
}

TEST(Gbk, NulsPassThrough) {
    EXPECT_EQ(gbk_to_utf8("a\0\xCB\xD9\0"sv), "a\0速\0"sv);
    EXPECT_EQ(utf8_to_gbk("a\0速\0"sv), "a\0\xCB\xD9\0"sv);
}

TEST(Gbk, BytesThatAreNoGbkBecomeOneReplacementEach) {
    EXPECT_EQ(gbk_to_utf8("a\xFF z"), "a" + std::string(kUnknown) + " z");
    EXPECT_EQ(gbk_to_utf8("\x80"), kUnknown);
    EXPECT_EQ(gbk_to_utf8("\x81 "), std::string(kUnknown) + " ");  // no second byte
    EXPECT_EQ(gbk_to_utf8("\xCB"), kUnknown);                      // cut in half at the end
    EXPECT_EQ(gbk_to_utf8("\xFF\xFF\xFF"),
              std::string(kUnknown) + std::string(kUnknown) + std::string(kUnknown));
}

TEST(Gbk, TextAfterABadByteIsStillRead) {
    EXPECT_EQ(gbk_to_utf8("\xFF\xCB\xD9"), std::string(kUnknown) + "速");
}

TEST(GbkField, IsFilledWithBlanksToItsWidthInCharacters) {
    EXPECT_EQ(gbk_to_utf8_field("\xCB\xD9\xB6\xC8", 5), "速度   ");
    EXPECT_EQ(gbk_to_utf8_field("ab", 4), "ab  ");
    EXPECT_EQ(gbk_to_utf8_field("", 3), "   ");
    EXPECT_EQ(gbk_to_utf8_field("ab", 0), "");
}

TEST(GbkField, IsCutToItsWidthInCharacters) {
    EXPECT_EQ(gbk_to_utf8_field("abcdef", 4), "abcd");
    EXPECT_EQ(gbk_to_utf8_field("\xCB\xD9\xB6\xC8", 1), "速");
    EXPECT_EQ(gbk_to_utf8_field("a\xCB\xD9\xB6\xC8", 2), "a速");
    EXPECT_EQ(gbk_to_utf8_field("\xFF\xFF", 1), kUnknown);
}

TEST(Gbk, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    EXPECT_EQ(utf8_to_gbk("a😀b"), "a?b");
    EXPECT_EQ(utf8_to_gbk("\uFFFD"), "?");
    EXPECT_EQ(utf8_to_gbk("ñ"), "?");
}

TEST(Gbk, MalformedUtf8BecomesQuestionMarks) {
    EXPECT_EQ(utf8_to_gbk("\xE9\x80"), "??");            // cut off
    EXPECT_EQ(utf8_to_gbk("\x80"), "?");                 // no first byte
    EXPECT_EQ(utf8_to_gbk("\xC0\x80"), "??");            // longer than needed
    EXPECT_EQ(utf8_to_gbk("\xED\xA0\x80"), "???");       // half of a surrogate pair
    EXPECT_EQ(utf8_to_gbk("\xF5\x80\x80\x80"), "????");  // beyond the last plane
    EXPECT_EQ(utf8_to_gbk("\xF4\x90\x80\x80"), "????");
    EXPECT_EQ(utf8_to_gbk("\xE9z"), "?z");
}

TEST(Gbk, FindSeesNoSecondBytes) {
    // 0x81 0x7C and 0x95 0x5D are each one Chinese character.
    EXPECT_EQ(gbk_find("\x81\x7C", '|'), std::string_view::npos);
    EXPECT_EQ(gbk_find("\x81\x7C|", '|'), 2U);
    EXPECT_EQ(gbk_find("ab\x95\x5D]", ']'), 4U);
    EXPECT_EQ(gbk_find("|", '|'), 0U);
    EXPECT_EQ(gbk_find("", '|'), std::string_view::npos);
    EXPECT_EQ(gbk_find("\xFF|", '|'), 1U);
    EXPECT_EQ(gbk_find("long ascii text before the bar|rest|", '|'), 30U);
}

TEST(Utf8, LengthCountsCharacters) {
    EXPECT_EQ(utf8_length(""), 0U);
    EXPECT_EQ(utf8_length("abc"), 3U);
    EXPECT_EQ(utf8_length("速度"), 2U);
    EXPECT_EQ(utf8_length("a😀速"), 3U);
}

TEST(Utf8, PrefixNeverSplitsACharacter) {
    EXPECT_EQ(utf8_prefix("速度abc", 0), "");
    EXPECT_EQ(utf8_prefix("速度abc", 1), "速");
    EXPECT_EQ(utf8_prefix("速度abc", 3), "速度a");
    EXPECT_EQ(utf8_prefix("速度abc", 99), "速度abc");
}

TEST(Gbk, EveryCharacterOfTheCodePageComesBackAsItsBytes) {
    int characters = 0;
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
            const std::string text = gbk_to_utf8(bytes);
            if (text.find(kUnknown) != std::string::npos) continue;
            ++characters;
            ASSERT_EQ(utf8_length(text), 1U);
            ASSERT_EQ(utf8_to_gbk(text), bytes);
        }
    }
    EXPECT_GT(characters, 21000);
}

RC_GTEST_PROP(Gbk, AnyBytesGiveWholeUtf8OfTheSameLengthOrLess, (const std::string& bytes)) {
    const std::string text = gbk_to_utf8(bytes);
    RC_ASSERT(utf8_length(text) <= bytes.size());
    // Converted again it is clean: only unknown bytes change, to '?'.
    const std::string back = utf8_to_gbk(text);
    RC_ASSERT(utf8_to_gbk(gbk_to_utf8(back)) == back);
    RC_ASSERT(back.size() == bytes.size());
}

RC_GTEST_PROP(GbkField, IsTheConvertedTextFilledOrCut, (const std::string& bytes, std::uint8_t n)) {
    const std::string text = gbk_to_utf8(bytes);
    std::string expected(utf8_prefix(text, n));
    expected.append(n - utf8_length(expected), ' ');
    RC_ASSERT(gbk_to_utf8_field(bytes, n) == expected);
}

RC_GTEST_PROP(Gbk, FindAgreesWithTheConvertedText, (std::string bytes, std::uint8_t at)) {
    if (!bytes.empty()) bytes[at % bytes.size()] = '|';
    const std::size_t found = gbk_find(bytes, '|');
    const std::string text = gbk_to_utf8(bytes);
    RC_ASSERT((found == std::string::npos) == (text.find('|') == std::string::npos));
    if (found != std::string::npos) {
        RC_ASSERT(gbk_to_utf8(std::string_view(bytes).substr(0, found)) ==
                  text.substr(0, text.find('|')));
    }
}

RC_GTEST_PROP(Utf8, PrefixAndRestAreTheWhole, (const std::string& bytes, std::uint8_t count)) {
    const std::string text = gbk_to_utf8(bytes);
    const std::string_view prefix = utf8_prefix(text, count);
    RC_ASSERT(utf8_length(prefix) == std::min<std::size_t>(count, utf8_length(text)));
    RC_ASSERT(text.compare(0, prefix.size(), prefix) == 0);
}

}  // namespace
}  // namespace servo::base
