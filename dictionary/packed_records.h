// The records of a dictionary file in memory. A record is 8554 bytes of which most are padding: of
// each field only the bytes before its padding are kept, with the padding's byte and so without any
// loss. That is a tenth of the file's size, and one record lies within a few cache lines.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/store.h"

namespace servo::dictionary {

enum class Field : std::uint8_t {
    kIndex,
    kSub,
    kNameChinese,
    kNameEnglish,
    kType,
    kAttribute,
    kCommentChinese,
    kCommentEnglish,
    kFormula,
    kModbus,
};

// In bytes, in the order of the record.
inline constexpr std::array<std::size_t, 10> kFieldWidths{4, 2, 64, 64, 16, 8, 4096, 4096, 200, 4};

// One field of one record, in bytes of the code page. A view into the records.
struct StoredField {
    std::string_view text;  // all but the run of equal bytes at its end
    char padding = '\0';    // that byte
    std::size_t width = 0;

    // The field as it stands in the file.
    std::string whole() const;

    // What trim_tail makes of it.
    std::string trimmed() const;
};

class PackedRecords {
  public:
    // Makes room for a file of that length, so that the texts need not move as they grow.
    void reserve(std::size_t file_length);

    // One record, or what there is of it: the rest counts as NUL.
    void add(std::string_view record);

    std::size_t rows() const { return records_.size(); }
    StoredField field(std::size_t row, Field field) const;

  private:
    struct Record {
        std::array<std::uint32_t, kFieldWidths.size() + 1> at{};  // begin of each text, and the end
        std::array<char, kFieldWidths.size()> padding{};
    };

    std::string texts_;
    std::vector<Record> records_;
};

}  // namespace servo::dictionary
