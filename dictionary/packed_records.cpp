#include "dictionary/packed_records.h"

#include <cstring>
#include <numeric>

namespace servo::dictionary {

namespace {

static_assert(std::accumulate(kFieldWidths.begin(), kFieldWidths.end(), std::size_t{0}) ==
              kRecordSize);

bool is_tail(char c) {
    return c == ' ' || c == '\0' || c == '\n';
}

// Where the run of equal bytes begins that ends a text. Nearly all bytes of a file pass through
// here, so long stretches are compared with themselves moved by one, which the library does at full
// speed, and what is left in words.
std::size_t run_begin(std::string_view text) {
    constexpr std::size_t kBlock = 256;
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    std::size_t at = text.size() - 1;
    while (at >= kBlock) {
        const char* block = text.data() + at - kBlock;
        if (std::memcmp(block, block + 1, kBlock) != 0) break;
        at -= kBlock;
    }
    const char last = text.back();
    const std::uint64_t run = 0x0101010101010101U * static_cast<unsigned char>(last);
    while (at >= kWord) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at - kWord, kWord);
        if (word != run) break;
        at -= kWord;
    }
    while (at > 0 && text[at - 1] == last)
        --at;
    return at;
}

}  // namespace

std::string StoredField::whole() const {
    std::string bytes(text);
    bytes.resize(width, padding);
    return bytes;
}

std::string StoredField::trimmed() const {
    if (is_tail(padding)) {
        const std::string_view cut = trim_tail_bytes(text);
        // With nothing behind its first byte, the field keeps its padding.
        if (cut.size() > 1 && !is_tail(cut.back())) return std::string(cut);
    }
    return std::string(trim_tail_bytes(whole()));
}

void PackedRecords::reserve(std::size_t file_length) {
    // Texts seldom fill an eighth of their records; memory that is not written costs nothing.
    texts_.reserve(file_length / 8);
    records_.reserve(file_length / kRecordSize + 1);
}

void PackedRecords::add(std::string_view record) {
    std::string filled;
    if (record.size() < kRecordSize) {
        filled = record;
        filled.resize(kRecordSize, '\0');
        record = filled;
    }
    Record& packed = records_.emplace_back();
    for (std::size_t i = 0; i < kFieldWidths.size(); ++i) {
        const std::string_view bytes = record.substr(0, kFieldWidths[i]);
        record.remove_prefix(kFieldWidths[i]);
        packed.at[i] = static_cast<std::uint32_t>(texts_.size());
        packed.padding[i] = bytes.back();
        texts_.append(bytes.substr(0, run_begin(bytes)));
    }
    packed.at.back() = static_cast<std::uint32_t>(texts_.size());
}

StoredField PackedRecords::field(std::size_t row, Field field) const {
    const auto i = static_cast<std::size_t>(field);
    const Record& packed = records_[row];
    const std::string_view texts = texts_;
    return {texts.substr(packed.at[i], packed.at[i + 1] - packed.at[i]), packed.padding[i],
            kFieldWidths[i]};
}

}  // namespace servo::dictionary
