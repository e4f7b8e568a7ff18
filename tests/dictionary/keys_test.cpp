#include "dictionary/keys.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace servo::dictionary {
namespace {

using namespace std::literals;

TEST(Keys, IdentityIsTheWireKeyWithoutItsSize) {
    EXPECT_EQ(identity_of(0x60F61102U), 0x60F611);
    EXPECT_EQ(identity_of(0xFFFFFF04U), 0xFFFFFF);
    EXPECT_EQ(identity_of(0), 0);
}

TEST(Keys, WireSizeOfEachType) {
    EXPECT_EQ(wire_size("uint8"), 0x01);
    EXPECT_EQ(wire_size("int8"), 0x01);
    EXPECT_EQ(wire_size("uint16"), 0x02);
    EXPECT_EQ(wire_size("int16"), 0x02);
    EXPECT_EQ(wire_size("uint32"), 0x04);
    EXPECT_EQ(wire_size("int32"), 0x04);
    EXPECT_EQ(wire_size("String"), 0x06);
}

TEST(Keys, WireSizeOfAnyOtherTextIsZero) {
    for (const auto* text : {"", "uint", "UINT8", "uint8 ", "string", "Unsigned8"}) {
        EXPECT_EQ(wire_size(text), 0) << text;
    }
}

TEST(Keys, DecoderSizeOfEachType) {
    EXPECT_EQ(decoder_size("uint8"), 1);
    EXPECT_EQ(decoder_size("int8"), 11);
    EXPECT_EQ(decoder_size("uint16"), 2);
    EXPECT_EQ(decoder_size("int16"), 12);
    EXPECT_EQ(decoder_size("uint32"), 4);
    EXPECT_EQ(decoder_size("int32"), 14);
    EXPECT_EQ(decoder_size("String"), 0);
    EXPECT_EQ(decoder_size(""), 0);
    EXPECT_EQ(decoder_size("float"), 0);
}

TEST(Keys, DecoderSizeModuloTenIsTheWidthInBytes) {
    for (const auto* type : {"uint8", "int8", "uint16", "int16", "uint32", "int32"}) {
        EXPECT_EQ(decoder_size(type) % 10, wire_size(type)) << type;
    }
}

TEST(Keys, ShortTypeOfEachDictionaryWord) {
    EXPECT_EQ(short_type("Unsigned8"), "uint8");
    EXPECT_EQ(short_type("Integer8"), "int8");
    EXPECT_EQ(short_type("Unsigned16"), "uint16");
    EXPECT_EQ(short_type("Integer16"), "int16");
    EXPECT_EQ(short_type("Unsigned32"), "uint32");
    EXPECT_EQ(short_type("Integer32"), "int32");
    EXPECT_EQ(short_type("Visible String"), "String");
}

TEST(Keys, ShortTypeTrimsTheRightEndOnly) {
    EXPECT_EQ(short_type("Unsigned8       "), "uint8");
    EXPECT_EQ(short_type("Unsigned8\0\0 \0"sv), "uint8");
    EXPECT_EQ(short_type("Visible String  "), "String");
    EXPECT_EQ(short_type(" Unsigned8"), "");
    EXPECT_EQ(short_type("VisibleString"), "");
}

TEST(Keys, ShortTypeOfAnyOtherWordIsBlank) {
    for (const auto* word : {"", "    ", "unsigned8", "Unsigned64", "Real32", "uint8"}) {
        EXPECT_EQ(short_type(word), "") << word;
    }
}

TEST(Keys, BitLengthsOfFormulaReferencesGiveTheWireSize) {
    EXPECT_EQ(wire_size_of_bits(0x08), 0x01);
    EXPECT_EQ(wire_size_of_bits(0x10), 0x02);
    EXPECT_EQ(wire_size_of_bits(0x20), 0x04);
    EXPECT_EQ(wire_size_of_bits(0x00), 0);
    EXPECT_EQ(wire_size_of_bits(0x18), 0);
    EXPECT_EQ(wire_size_of_bits(0x40), 0);
}

TEST(Keys, WireKeyIsIndexSubAndSizeReadAsOneNumber) {
    EXPECT_EQ(read_key("60F611", "int16"), 0x60F61102U);
    EXPECT_EQ(read_key("606300", "int32"), 0x60630004U);
    EXPECT_EQ(read_key("100800", "String"), 0x10080006U);
    EXPECT_EQ(read_key("ffffff", "uint8"), 0xFFFFFF01U);
}

TEST(Keys, BothEightBitTypesWriteWithTheSuffix01) {
    EXPECT_EQ(write_key("606000", "uint8"), 0x60600001U);
    EXPECT_EQ(write_key("606000", "int8"), 0x60600001U);
}

TEST(Keys, AStringIsReadWith06AndWrittenThroughKeyZero) {
    EXPECT_EQ(read_key("100800", "String"), 0x10080006U);
    EXPECT_EQ(write_key("100800", "String"), 0U);
}

TEST(Keys, ATypeWithoutSuffixGivesKeyZero) {
    EXPECT_EQ(write_key("606000", ""), 0U);
    EXPECT_EQ(read_key("606000", ""), 0U);
    EXPECT_EQ(read_key("606000", "float"), 0U);
}

TEST(Keys, AnIndexTextThatIsNoNumberReadsAsFarAsItIsOne) {
    EXPECT_EQ(read_key("", "uint8"), 1U);
    EXPECT_EQ(read_key("xyz", "uint8"), 0U);
    EXPECT_EQ(read_key("6063 0", "uint8"), 0x6063U);
}

TEST(Keys, AnIndexTextWithTooManyDigitsIsNoObject) {
    EXPECT_EQ(read_key("1234567", "uint8"), 0U);
    EXPECT_EQ(read_key("FFFFFFFFFFFFFFFFFFFFFFFF", "uint8"), 0U);
}

TEST(Keys, StripBlanksRemovesBlanksLineEndsAndNulsEverywhere) {
    EXPECT_EQ(strip_blanks(" ui\r\nnt\0 8 "sv), "uint8");
    EXPECT_EQ(strip_blanks(" \0\r\n"sv), "");
    EXPECT_EQ(strip_blanks("a\tb"), "a\tb");
}

TEST(Keys, StripBlanksOfATypeWordWithBlanksAndANulGivesTheBareShortName) {
    EXPECT_EQ(strip_blanks("int16 \0"sv), "int16");
}

RC_GTEST_PROP(Keys, EveryObjectKeepsItsIdentityThroughTheWireKey, ()) {
    // Keys of up to four significant digits read as 16-bit numbers; objects begin at 0x1000.
    const auto identity = *rc::gen::inRange<std::int32_t>(0x100000, 0xFFFFFF);
    for (const auto* type : {"uint8", "int16", "uint32", "String"}) {
        const WireKey key = read_key(fmt::format("{:06X}", identity), type);
        RC_ASSERT(identity_of(key) == identity);
        RC_ASSERT((key & 0xFFU) == wire_size(type));
    }
}

}  // namespace
}  // namespace servo::dictionary
