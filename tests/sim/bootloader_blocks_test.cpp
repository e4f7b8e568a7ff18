// Blocks and images: what is stored, and what is found out.
#include <gtest/gtest.h>

#include <algorithm>

#include "sim/block_store.h"
#include "sim/bootloader_bench.h"
#include "sim/checksum.h"

namespace servo::sim::test {
namespace {

using Result = BlockStore::Result;

BlockSpec good_block() {
    BlockSpec spec;
    spec.data = Bytes(100, 0xA5);
    spec.count = 100;
    spec.length = 300;
    return spec;
}

TEST(Crc32, OfItsTestText) {
    EXPECT_EQ(crc32(std::string_view("123456789")), 0xCBF43926U);
    EXPECT_EQ(crc32(std::string_view("")), 0U);
    EXPECT_EQ(plain_crc32("123456789"), 0xCBF43926U);
    const Bytes bytes{0, 0xFF, 0x80, 13};
    EXPECT_EQ(crc32(bytes), plain_crc32(std::string(bytes.begin(), bytes.end())));
}

TEST(Block, IsStoredWithItsBytesAndCharacters) {
    BlockStore store;
    const std::string block = make_block(good_block());
    ASSERT_EQ(block.size(), 300U);
    EXPECT_EQ(store.put(block), Result::kStored);
    EXPECT_EQ(store.bytes(), Bytes(100, 0xA5));
    EXPECT_EQ(store.characters(), block);
    EXPECT_EQ(store.pages(), 1U);
}

TEST(Block, EverySingleChangedCharacterIsFound) {
    const std::string block = image_blocks(ImageSpec{})[0];
    ASSERT_EQ(block.size(), 4120U);
    BlockStore store;
    for (std::size_t i = 0; i < block.size(); ++i) {
        for (const char other : {'0', 'f', '.', 'A', ' '}) {
            if (block[i] == other) continue;
            std::string wrong = block;
            wrong[i] = other;
            ASSERT_NE(store.put(wrong), Result::kStored) << i << other;
        }
    }
    EXPECT_EQ(store.pages(), 0U);
}

TEST(Block, EveryLostDoubledOrExchangedCharacterIsFound) {
    BlockSpec spec = good_block();
    for (std::size_t i = 0; i < spec.data.size(); ++i)
        spec.data[i] = static_cast<std::uint8_t>(i * 7);
    const std::string block = make_block(spec);
    BlockStore store;
    for (std::size_t i = 0; i < block.size(); ++i) {
        std::string lost = block;
        lost.erase(i, 1);
        ASSERT_NE(store.put(lost), Result::kStored) << i;
        std::string twice = block;
        twice.insert(i, 1, block[i]);
        ASSERT_NE(store.put(twice), Result::kStored) << i;
        ASSERT_NE(store.put(block.substr(0, i)), Result::kStored) << i;
        if (i == 0 || block[i] == block[i - 1]) continue;
        std::string exchanged = block;
        std::swap(exchanged[i], exchanged[i - 1]);
        ASSERT_NE(store.put(exchanged), Result::kStored) << i;
    }
}

TEST(Block, AnyLengthBetweenItsBytesAnd4120Holds) {
    BlockSpec spec = good_block();
    for (std::size_t length = 16 + 200 + 8; length <= 4120; length += 37) {
        BlockStore store;
        spec.length = length;
        EXPECT_EQ(store.put(make_block(spec)), Result::kStored) << length;
    }
    BlockStore store;
    spec.length = 4121;
    EXPECT_EQ(store.put(make_block(spec)), Result::kLength);
    EXPECT_EQ(store.put(""), Result::kLength);
    EXPECT_EQ(store.put(with_sum("00000001000112340")), Result::kLength);
    EXPECT_EQ(store.put(with_sum("000000010001123400")), Result::kStored);
}

TEST(Block, NumbersThatCannotBeAreRefused) {
    struct Case {
        const char* what;
        std::uint32_t number;
        std::uint32_t total;
        std::uint32_t count;
        std::size_t bytes;
        Result result;
    };
    const std::vector<Case> cases{
        {"last page", 255, 256, 100, 100, Result::kStored},
        {"no blocks", 0, 0, 100, 100, Result::kNumbers},
        {"more than the memory", 0, 257, 2048, 2048, Result::kNumbers},
        {"behind the last", 1, 1, 100, 100, Result::kNumbers},
        {"no bytes", 0, 1, 0, 100, Result::kNumbers},
        {"more bytes than a page", 0, 1, 2049, 100, Result::kNumbers},
        {"short block before the last", 0, 2, 100, 100, Result::kNumbers},
        {"full block before the last", 0, 2, 2048, 2048, Result::kStored},
        {"more bytes than there are", 0, 1, 2048, 100, Result::kNumbers},
        {"fewer bytes than there are", 0, 1, 99, 100, Result::kCharacters},
        {"more bytes than digits", 0, 1, 101, 100, Result::kCharacters},
    };
    for (const Case& one : cases) {
        BlockStore store;
        BlockSpec spec;
        spec.number = one.number;
        spec.total = one.total;
        spec.count = one.count;
        spec.data = Bytes(one.bytes, 0x5A);
        spec.length = one.bytes == 2048 ? 4120 : 300;
        EXPECT_EQ(store.put(make_block(spec)), one.result) << one.what;
    }
}

TEST(Block, CapitalsAreRefused) {
    BlockStore store;
    std::string block = make_block(good_block());
    std::transform(block.begin(), block.end(), block.begin(), ::toupper);
    EXPECT_EQ(store.put(block), Result::kChecksum);
    std::string summed = make_block(good_block());
    summed.resize(summed.size() - 8);
    std::transform(summed.begin(), summed.end(), summed.begin(), ::toupper);
    EXPECT_EQ(store.put(with_sum(summed)), Result::kCharacters);
}

TEST(Block, OthersThanFullStopsBehindTheBytesAreRefused) {
    BlockStore store;
    std::string block = make_block(good_block());
    block.resize(block.size() - 8);
    block.back() = '0';
    EXPECT_EQ(store.put(with_sum(block)), Result::kCharacters);
}

TEST(Block, TheSameAgainIsStoredAnotherIsNot) {
    BlockStore store;
    BlockSpec spec = good_block();
    EXPECT_EQ(store.put(make_block(spec)), Result::kStored);
    EXPECT_EQ(store.put(make_block(spec)), Result::kStored);
    EXPECT_EQ(store.pages(), 1U);
    spec.data[0] ^= 1U;
    EXPECT_EQ(store.put(make_block(spec)), Result::kInUse);
    store.erase();
    EXPECT_EQ(store.put(make_block(spec)), Result::kStored);
}

TEST(Block, OfAnotherImageIsRefused) {
    BlockStore store;
    const auto blocks = image_blocks(ImageSpec{});
    ImageSpec other;
    other.seed = 2;
    EXPECT_EQ(store.put(blocks[0]), Result::kStored);
    EXPECT_EQ(store.put(image_blocks(other)[1]), Result::kForeign);
    other.seed = 1;
    other.bytes = 10000;
    EXPECT_EQ(store.put(image_blocks(other)[1]), Result::kForeign);
    EXPECT_EQ(store.put(blocks[1]), Result::kStored);
}

bool whole(const std::vector<std::string>& blocks, std::string_view type = "QRL400") {
    BlockStore store;
    for (const std::string& block : blocks)
        EXPECT_EQ(store.put(block), Result::kStored);
    return store.verify(type).has_value();
}

TEST(Image, IsWholeAndTellsWhatItIs) {
    BlockStore store;
    EXPECT_FALSE(store.verify("QRL400"));
    const ImageSpec spec;
    for (const std::string& block : image_blocks(spec)) {
        EXPECT_FALSE(store.verify("QRL400"));
        store.put(block);
    }
    const auto image = store.verify("QRL400");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->type, "QRL400");
    EXPECT_EQ(image->version, "SW 2.00.0001");
    EXPECT_EQ(image->check_value, image_check(spec));
    EXPECT_EQ(image->bytes, spec.bytes + 64);
    EXPECT_EQ(store.bytes(), image_bytes(spec));
}

TEST(Image, TheOrderOfItsBlocksDoesNotMatter) {
    auto blocks = image_blocks(ImageSpec{});
    std::reverse(blocks.begin(), blocks.end());
    EXPECT_TRUE(whole(blocks));
}

TEST(Image, WithoutAnyOneOfItsBlocksIsNotWhole) {
    const auto blocks = image_blocks(ImageSpec{});
    for (std::size_t left_out = 0; left_out < blocks.size(); ++left_out) {
        auto rest = blocks;
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(left_out));
        EXPECT_FALSE(whole(rest)) << left_out;
    }
}

TEST(Image, OfFewerBlocksThanTheySayIsNotWhole) {
    ImageSpec spec;
    spec.bytes = 2048 - 64;
    BlockSpec block;
    block.data = image_bytes(spec);
    block.count = 2048;
    EXPECT_TRUE(whole({make_block(block)}));
    block.total = 2;
    EXPECT_FALSE(whole({make_block(block)}));
}

TEST(Image, EveryProgramSizeAroundAPageHolds) {
    for (const std::size_t bytes : {1, 1983, 1984, 1985, 2048, 4032, 4033}) {
        ImageSpec spec;
        spec.bytes = bytes;
        EXPECT_TRUE(whole(image_blocks(spec))) << bytes;
        EXPECT_TRUE(whole(image_blocks(spec, 0))) << bytes;
    }
}

// Every byte from the head on is under the check value, its own bytes under the comparison.
TEST(Image, EverySingleChangedByteIsFound) {
    ImageSpec spec;
    spec.bytes = 200;
    const Bytes image = image_bytes(spec);
    const std::uint32_t mark = image_check(spec);
    ASSERT_TRUE(whole(image_blocks(image, mark)));
    for (std::size_t i = 0; i < image.size(); ++i) {
        if (i >= 12 && i < 16) continue;  // nothing stands there
        for (const unsigned change : {0x01U, 0x20U, 0x80U}) {
            Bytes wrong = image;
            wrong[i] = static_cast<std::uint8_t>(wrong[i] ^ change);
            EXPECT_FALSE(whole(image_blocks(wrong, mark))) << i;
        }
    }
}

TEST(Image, WhatItsHeadSaysMustHold) {
    ImageSpec spec;
    EXPECT_FALSE(whole(image_blocks(spec), "ZARN"));
    EXPECT_FALSE(whole(image_blocks(spec), "QRL40"));
    spec.check_change = 1;
    EXPECT_FALSE(whole(image_blocks(spec)));
    spec = {};
    spec.magic = "QFW2";
    EXPECT_FALSE(whole(image_blocks(spec)));
    for (const std::uint32_t change : {1U, 0xFFFFFFFFU, 0x10000U}) {
        spec = {};
        spec.length_change = change;
        EXPECT_FALSE(whole(image_blocks(spec))) << change;
    }
    for (const char* version : {"", "SW\x01", "SW \xC3\xA4"}) {
        spec = {};
        spec.version = version;
        EXPECT_FALSE(whole(image_blocks(spec))) << version;
    }
    spec.version = std::string("SW\0x", 4);  // text behind its end
    EXPECT_FALSE(whole(image_blocks(spec)));
    spec.version = std::string(32, 'v');
    EXPECT_TRUE(whole(image_blocks(spec)));
}

TEST(Image, TooShortForAHeadIsNone) {
    for (const std::size_t bytes : {1U, 63U}) {
        BlockSpec spec;
        spec.data = Bytes(bytes, 'Q');
        spec.count = static_cast<std::uint32_t>(bytes);
        EXPECT_FALSE(whole({make_block(spec)}));
    }
}

TEST(Image, AWornOutBitIsFound) {
    BlockStore store;
    store.damage();
    for (const std::string& block : image_blocks(ImageSpec{}))
        store.put(block);
    ASSERT_TRUE(store.verify("QRL400"));
    store.damage();
    EXPECT_FALSE(store.verify("QRL400"));
}

}  // namespace
}  // namespace servo::sim::test
