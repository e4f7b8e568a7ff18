#include <gtest/gtest.h>

#include <limits>

#include "base/temp_folder.h"
#include "dictionary/raw_record.h"
#include "dictionary/store.h"

namespace servo::dictionary {
namespace {

std::string record_bytes(const std::string& index, const std::string& name) {
    RawRecord record;
    record.index = index;
    record.name_en = name;
    record.type = "Unsigned16";
    return record.bytes();
}

TEST(OpenDat, TakesQorlanDatWhenItIsAlone) {
    const TempFolder folder;
    folder.put("qorlan.dat", record_bytes("2001", "from qorlan"));
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), 1);
    EXPECT_EQ(store.dictionary_cell(0, 3), "from qorlan");
    EXPECT_EQ(Store::variant_of(folder.path()), Variant::kAllItems);
}

TEST(OpenDat, ServoDatWinsWhenBothAreThere) {
    const TempFolder folder;
    folder.put("qorlan.dat", record_bytes("2001", "from qorlan"));
    folder.put("Servo.dat", record_bytes("2002", "from servo"));
    // A file that is not touched need not be readable.
    std::filesystem::permissions(folder / "qorlan.dat", std::filesystem::perms::none);
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.dictionary_cell(0, 3), "from servo");
    EXPECT_EQ(store.get_record(0x200100).key, 0);
    EXPECT_EQ(Store::variant_of(folder.path()), Variant::kReduced);
}

TEST(OpenDat, ServoDatWinsEvenWhenItIsEmpty) {
    const TempFolder folder;
    folder.put("qorlan.dat", record_bytes("2001", "from qorlan"));
    folder.put("Servo.dat", "");
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), 0);
    EXPECT_EQ(store.dictionary_rows(), 0U);
}

TEST(OpenDat, FailsAndEmptiesTheStoreWhenNeitherIsThere) {
    const TempFolder folder;
    Store store;
    store.load(record_bytes("2001", "old"));
    EXPECT_FALSE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), 0);
    EXPECT_EQ(store.dictionary_rows(), 0U);
    EXPECT_EQ(store.modbus_rows(), 0U);
    EXPECT_FALSE(store.open_dat(folder / "none"));
    EXPECT_EQ(Store::variant_of(folder.path()), Variant::kAllItems);
}

TEST(OpenDat, AFolderOfThatNameIsNoFile) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "Servo.dat");
    folder.put("qorlan.dat", record_bytes("2001", "from qorlan"));
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.dictionary_cell(0, 3), "from qorlan");
}

TEST(OpenDat, FileNamesAreFoundWithoutRegardToCase) {
    const TempFolder folder;
    folder.put("SERVO.DAT", record_bytes("2001", "upper"));
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(Store::variant_of(folder.path()), Variant::kReduced);
}

TEST(OpenDat, AFileThatCannotBeReadLeavesTheStoreEmpty) {
    const TempFolder folder;
    std::filesystem::create_symlink("/proc/self/mem",
                                    folder / "Servo.dat");  // opens, reads nothing
    Store store;
    store.load(record_bytes("2001", "old"));
    EXPECT_FALSE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), 0);
    EXPECT_EQ(store.dictionary_rows(), 0U);
}

TEST(OpenDat, ASecondLoadStartsFromNothing) {
    const TempFolder folder;
    folder.put("Servo.dat", record_bytes("2001", "first") + record_bytes("2002", "second"));
    Store store;
    EXPECT_TRUE(store.open_dat(folder.path()));
    folder.put("Servo.dat", record_bytes("2003", "third"));
    EXPECT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), 1);
    EXPECT_EQ(store.dictionary_rows(), 1U);
    EXPECT_EQ(store.get_record(0x200100).key, 0);
    EXPECT_EQ(store.get_record(0x200300).key, 0x200300);
}

std::int16_t count_of(std::size_t length) {
    Store store;
    store.load(std::string(length, ' '));
    return store.count();
}

TEST(Count, IsTheLengthOverTheRecordRoundedWithHalvesToEven) {
    constexpr std::size_t kHalf = kRecordSize / 2;
    EXPECT_EQ(count_of(0), 0);
    EXPECT_EQ(count_of(kHalf), 0);  // 0.5
    EXPECT_EQ(count_of(kHalf + 1), 1);
    EXPECT_EQ(count_of(3 * kHalf - 1), 1);
    EXPECT_EQ(count_of(3 * kHalf), 2);  // 1.5
    EXPECT_EQ(count_of(5 * kHalf), 2);  // 2.5
    EXPECT_EQ(count_of(5 * kHalf + 1), 3);
    EXPECT_EQ(count_of(4 * kRecordSize), 4);
}

TEST(Count, WhatIsMoreThanItsSixteenBitsHoldIsLeftOut) {
    constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
    const TempFolder folder;
    folder.put("Servo.dat", "");
    std::filesystem::resize_file(folder / "Servo.dat", (kMost + 3) * kRecordSize);  // no disk taken
    Store store;
    ASSERT_TRUE(store.open_dat(folder.path()));
    EXPECT_EQ(store.count(), std::numeric_limits<std::int16_t>::max());
    EXPECT_EQ(store.dictionary_rows(), kMost + 1);
}

// A file of three records, cut to `length` bytes.
//
// Every record that was begun is read, what is missing of it is NUL. A piece of more than half a
// record (of half a record behind an odd number) counts, so a lookup finds it; a smaller piece
// lands in the spare slot, which the tables show and no lookup reaches.
void check_truncated(const std::string& whole, std::size_t length) {
    SCOPED_TRACE(length);
    Store store;
    store.load(whole.substr(0, length));
    const std::size_t complete = length / kRecordSize;
    const std::size_t rest = length % kRecordSize;
    const bool counts = 2 * rest > kRecordSize || (2 * rest == kRecordSize && complete % 2 == 1);
    ASSERT_EQ(store.count(), static_cast<std::int16_t>(complete + (counts ? 1 : 0)));
    ASSERT_EQ(store.dictionary_rows(), complete + (rest > 0 ? 1 : 0));
    for (std::size_t i = 0; i < 3; ++i) {
        const Identity identity = 0x200100 + static_cast<Identity>(i << 8);
        const ObjectRecord record = store.get_record(identity);
        const bool found = i < complete || (i == complete && counts);
        ASSERT_EQ(record.key, found ? identity : 0);
        ASSERT_EQ(record.type, found ? "uint16" : "      ");
        ASSERT_EQ(record.name_en, filled(found ? "record " + std::to_string(i) : "", 64));
    }
    if (rest == 0) return;
    // Cells of the piece: what is there, then NUL.
    std::string piece = whole.substr(complete * kRecordSize, rest);
    piece.resize(kRecordSize, '\0');
    ASSERT_EQ(store.dictionary_cell(complete, 0), piece.substr(0, 4));
    ASSERT_EQ(store.dictionary_cell(complete, 1), piece.substr(4, 2));
    ASSERT_EQ(store.dictionary_cell(complete, 3), trim_tail_bytes(piece.substr(70, 64)));
    ASSERT_EQ(store.dictionary_cell(complete, 8), trim_tail_bytes(piece.substr(8350, 200)));
    // Its Modbus address is missing, and what does not begin with "N" shows.
    const bool address_missing = rest <= 8550;
    ASSERT_EQ(store.modbus_rows(), address_missing ? 1U : 0U);
}

TEST(OpenDat, EveryTruncationOfAThreeRecordFileLoads) {
    const std::string whole = record_bytes("2001", "record 0") + record_bytes("2002", "record 1") +
                              record_bytes("2003", "record 2");
    ASSERT_EQ(whole.size(), 3 * kRecordSize);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        check_truncated(whole, length);
        if (HasFatalFailure()) return;
    }
}

TEST(OpenDat, TruncatedFilesLoadFromTheDiskAlike) {
    const std::string whole = record_bytes("2001", "record 0") + record_bytes("2002", "record 1");
    const TempFolder folder;
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{1}, std::size_t{6}, kRecordSize / 2, kRecordSize / 2 + 1,
          kRecordSize - 1, kRecordSize, kRecordSize + 1, kRecordSize * 3 / 2, 2 * kRecordSize}) {
        folder.put("Servo.dat", whole.substr(0, length));
        Store from_disk;
        ASSERT_TRUE(from_disk.open_dat(folder.path())) << length;
        Store from_memory;
        from_memory.load(whole.substr(0, length));
        EXPECT_EQ(from_disk.count(), from_memory.count()) << length;
        EXPECT_EQ(from_disk.dictionary_rows(), from_memory.dictionary_rows()) << length;
        EXPECT_EQ(from_disk.modbus_rows(), from_memory.modbus_rows()) << length;
        for (std::size_t row = 0; row < from_disk.dictionary_rows(); ++row) {
            for (std::size_t column = 0; column < 9; ++column) {
                EXPECT_EQ(from_disk.dictionary_cell(row, column),
                          from_memory.dictionary_cell(row, column));
            }
        }
    }
}

}  // namespace
}  // namespace servo::dictionary
