// Header and blocks of an image file.
#include <gtest/gtest.h>

#include "firmware/image.h"

using namespace servo::firmware;

namespace {

constexpr std::string_view kHeader = "This is ZARN firmware 12AB34CD.";

ImageHeader header_of(std::string_view line) {
    ImageHeader header;
    EXPECT_EQ(parse_header(line, header), ImageFault::kNone);
    return header;
}

ImageFault fault_of(std::string_view line) {
    ImageHeader header;
    return parse_header(line, header);
}

Image image_of(std::size_t characters, char fill = 'a') {
    return read_image(std::string(kHeader) + "\n" + std::string(characters, fill) + "\n");
}

}  // namespace

TEST(ImageHeader, TypeIsTheThirdWordAndChecksumTheTailWithoutItsFirstCharacter) {
    const ImageHeader header = header_of("This is ZARN firmware:12AB34CD");
    EXPECT_EQ(header.FW_Type, "ZARN");
    EXPECT_EQ(header.CRC_From_File, "12AB34CD");
}

TEST(ImageHeader, BothTextsMayStandAnywhere) {
    const ImageHeader header = header_of("## x ZARN This is a firmware,0F");
    EXPECT_EQ(header.FW_Type, "ZARN") << "the third word of the line, whatever stands there";
    EXPECT_EQ(header.CRC_From_File, "0F");
}

TEST(ImageHeader, EveryBlankSplits) {
    EXPECT_EQ(header_of("This is  ZARN firmware:1").FW_Type, "") << "two blanks hold an empty word";
    EXPECT_EQ(header_of("This is firmware:1").FW_Type, "");
}

TEST(ImageHeader, SecondPieceEndsAtTheNextOccurrence) {
    const ImageHeader header = header_of("This is ZARN firmware 12 firmware 34");
    EXPECT_EQ(header.CRC_From_File, "12 ");
}

TEST(ImageHeader, NothingBehindTheWordIsAnEmptyChecksum) {
    EXPECT_EQ(header_of("This is ZARN firmware").CRC_From_File, "");
    EXPECT_EQ(header_of("This is ZARN firmware.").CRC_From_File, "");
}

TEST(ImageHeader, TestIsCaseSensitive) {
    EXPECT_EQ(fault_of("This is ZARN Firmware 12AB34CD."), ImageFault::kBadHeader);
    EXPECT_EQ(fault_of("this is ZARN firmware 12AB34CD."), ImageFault::kBadHeader);
    EXPECT_EQ(fault_of("This is ZARN FIRMWARE"), ImageFault::kBadHeader);
}

TEST(ImageHeader, EitherTextMissingIsRefused) {
    EXPECT_EQ(fault_of(""), ImageFault::kBadHeader);
    EXPECT_EQ(fault_of("This is ZARN"), ImageFault::kBadHeader);
    EXPECT_EQ(fault_of("ZARN firmware"), ImageFault::kBadHeader);
    EXPECT_EQ(fault_of("This isZARN firmware"), ImageFault::kBadHeader);
}

TEST(ImageHeader, FewerThanThreeWordsHaveNoType) {
    EXPECT_EQ(fault_of("firmware This is ZARN"), ImageFault::kNoType);
    EXPECT_EQ(fault_of("a firmware This is ZARN"), ImageFault::kNoType)
        << "\"a\" and an empty word";
    EXPECT_EQ(fault_of("a b firmware This is ZARN"), ImageFault::kNone);
}

TEST(ImageHeader, ChineseCharactersCountAsOne) {
    // "型号" in the code page, with the checksum behind a full-width colon.
    const ImageHeader header = header_of(
        "This is \xD0\xCD\xBA\xC5 firmware\xA3\xBA"
        "12AB");
    EXPECT_EQ(header.FW_Type, "型号");
    EXPECT_EQ(header.CRC_From_File, "12AB");
}

TEST(ShownHeader, LeavesChecksumAndItsFullStopOutAndPutsItBelow) {
    const ImageHeader header = header_of("12AB. This is ZARN firmware 12AB");
    EXPECT_EQ(shown_header(header, false), " This is ZARN firmware 12AB\r\nCRC:12AB")
        << "only where a full stop follows";
}

TEST(ShownHeader, RemovesItEverywhere) {
    ImageHeader header;
    header.line = "x7.y7.z";
    header.CRC_From_File = "7";
    EXPECT_EQ(shown_header(header, false), "xyz\r\nCRC:7");
}

TEST(ShownHeader, EmptyChecksumTakesEveryFullStop) {
    EXPECT_EQ(shown_header(header_of("V1.0 This is ZARN firmware"), false),
              "V10 This is ZARN firmware\r\nCRC:");
}

TEST(ShownHeader, OwnBrandShowsItsOwnNameWithACapital) {
    const ImageHeader header = header_of("This is QORL firmware 12AB34CD");
    EXPECT_EQ(shown_header(header, true), "This is ZARN Firmware 12AB34CD\r\nCRC:12AB34CD");
}

TEST(Blocks, CountIsRoundedToTheNearestHalvesToEven) {
    const std::pair<std::size_t, std::size_t> table[] = {
        {0, 0},    {1, 0},    {2059, 0}, {2060, 0},  {2061, 1},  {4120, 1},  {6179, 1},
        {6180, 2}, {6181, 2}, {8240, 2}, {10299, 2}, {10300, 2}, {10301, 3}, {412000, 100}};
    for (const auto& [characters, count] : table)
        EXPECT_EQ(block_count(characters), count) << characters;
}

TEST(Blocks, WholeBlocksHave4120CharactersAndACarriageReturnEach) {
    const Image image = image_of(4120 * 3);
    ASSERT_TRUE(image.blocks);
    ASSERT_EQ(image.blocks->size(), 4U) << "k + 1 entries";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ((*image.blocks)[static_cast<std::size_t>(i)], std::string(4120, 'a') + "\r");
    EXPECT_EQ(image.blocks->back(), "");
    EXPECT_EQ(image.lost_characters, 0U);
}

TEST(Blocks, RestBelowHalfABlockIsNeverSent) {
    const Image image = image_of(4120 * 2 + 2059);
    EXPECT_EQ(highest_index(*image.blocks), 2U);
    EXPECT_EQ(bytes_of(*image.blocks), 2U * 4121);
    EXPECT_EQ(image.lost_characters, 2059U);
}

TEST(Blocks, RestAboveHalfABlockIsAShortBlock) {
    const Image image = image_of(4120 * 2 + 2061);
    ASSERT_EQ(image.blocks->size(), 4U);
    EXPECT_EQ((*image.blocks)[2], std::string(2061, 'a') + "\r");
    EXPECT_EQ(image.lost_characters, 0U);
}

TEST(Blocks, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(highest_index(*image_of(2060).blocks), 0U);
    EXPECT_EQ(image_of(2060).lost_characters, 2060U);
    const Image image = image_of(6180);
    ASSERT_EQ(highest_index(*image.blocks), 2U);
    EXPECT_EQ((*image.blocks)[1].size(), 2061U);
}

TEST(Blocks, PayloadIsSentInSmallLetters) {
    EXPECT_EQ(image_of(4120, 'F').blocks->front(), std::string(4120, 'f') + "\r");
}

TEST(Blocks, CharactersAreNotInterpreted) {
    std::string payload(4120, ' ');
    for (std::size_t i = 0; i < payload.size(); ++i)
        if (i % 256 != '\n' && i % 256 != '\r') payload[i] = static_cast<char>(i % 256);
    payload.back() = 'x';
    std::string expected = payload + "\r";
    for (char& c : expected)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    EXPECT_EQ(cut_blocks(payload).front(), expected);
}

TEST(ImageFile, OnlyTheFirstTwoLinesAreRead) {
    const Image image = read_image(std::string(kHeader) + "\n" + std::string(4120, 'a') +
                                   "\nThis is nothing\n" + std::string(9000, 'b'));
    EXPECT_EQ(highest_index(*image.blocks), 1U);
}

TEST(ImageFile, LinesEndAsAnyTextLineDoes) {
    for (const char* end : {"\n", "\r\n"}) {
        const Image image = read_image(std::string(kHeader) + end + std::string(4120, 'a') + end);
        EXPECT_EQ(image.header.CRC_From_File, "12AB34CD.");
        EXPECT_EQ(image.payload_characters, 4120U);
    }
    EXPECT_EQ(read_image(std::string(kHeader) + "\n" + std::string(4120, 'a')).payload_characters,
              4120U)
        << "the last line may have no end";
}

TEST(ImageFile, MissingSecondLineLeavesNoBlocks) {
    EXPECT_FALSE(read_image(kHeader).blocks);
    EXPECT_FALSE(read_image(std::string(kHeader) + "\r\n").blocks);
}

TEST(ImageFile, EmptySecondLineIsALine) {
    const Image image = read_image(std::string(kHeader) + "\n\n");
    ASSERT_TRUE(image.blocks);
    EXPECT_EQ(*image.blocks, Blocks{""});
}

TEST(ImageFile, EmptyFileIsNoImage) {
    EXPECT_EQ(read_image("").fault, ImageFault::kBadHeader);
}

TEST(ImageFile, MoreBlocksThanTheirCounterCountsAreRefused) {
    EXPECT_EQ(image_of((kMaxBlocks + 1) * kBlockCharacters).fault, ImageFault::kTooLong);
}
