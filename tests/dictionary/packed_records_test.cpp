#include "dictionary/packed_records.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dictionary/raw_record.h"

namespace servo::dictionary {
namespace {

std::string unpacked(const PackedRecords& records, std::size_t row) {
    std::string bytes;
    for (std::size_t i = 0; i < kFieldWidths.size(); ++i) {
        bytes += records.field(row, static_cast<Field>(i)).whole();
    }
    return bytes;
}

TEST(PackedRecords, KeepTextsWithoutTheirPadding) {
    RawRecord record;
    record.name_en = "Speed";
    record.padding = '\0';
    PackedRecords records;
    records.add(record.bytes());
    const StoredField name = records.field(0, Field::kNameEnglish);
    EXPECT_EQ(name.text, "Speed");
    EXPECT_EQ(name.padding, '\0');
    EXPECT_EQ(name.width, 64U);
}

TEST(PackedRecords, AFieldOfEqualBytesHasNoTextAtAll) {
    RawRecord record;
    record.index = "0000";
    PackedRecords records;
    records.add(record.bytes());
    EXPECT_EQ(records.field(0, Field::kIndex).text, "");
    EXPECT_EQ(records.field(0, Field::kIndex).whole(), "0000");
}

TEST(PackedRecords, WhatIsMissingOfARecordIsNul) {
    PackedRecords records;
    records.add("2000");
    EXPECT_EQ(unpacked(records, 0), "2000" + std::string(kRecordSize - 4, '\0'));
}

// Fields of a few kinds of bytes, since runs are what the packing is about.
std::string noise() {
    std::string record;
    for (const std::size_t width : kFieldWidths) {
        const auto length = *rc::gen::inRange<std::size_t>(0, width + 1);
        for (std::size_t i = 0; i < std::min<std::size_t>(length, 60); ++i) {
            record += *rc::gen::element(' ', '\0', '\n', 'A', '\xCB');
        }
        const std::size_t filled = std::min<std::size_t>(length, 60);
        record.append(width - filled, *rc::gen::element(' ', '\0', '\n', 'A', '\xCB'));
    }
    return record;
}

RC_GTEST_PROP(PackedRecords, LoseNothing, ()) {
    const std::string first = noise();
    const std::string second = noise();
    PackedRecords records;
    records.reserve(*rc::gen::element<std::size_t>(0, 2 * kRecordSize));
    records.add(first);
    records.add(second);
    RC_ASSERT(records.rows() == 2U);
    RC_ASSERT(unpacked(records, 0) == first);
    RC_ASSERT(unpacked(records, 1) == second);
    for (std::size_t i = 0; i < kFieldWidths.size(); ++i) {
        const StoredField field = records.field(0, static_cast<Field>(i));
        RC_ASSERT(field.trimmed() == trim_tail_bytes(field.whole()));
    }
}

}  // namespace
}  // namespace servo::dictionary
