// Loading of a dictionary file and everything that can be asked of it.
//
// Records are large and mostly padding, so an input describes a file: the padding byte, the length
// of the file (two bytes, low first), then patches of offset (two bytes), length (one byte) and
// that many bytes. The input is loaded as a file of its own too, which covers the short ones.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/gbk.h"
#include "dictionary/store.h"

namespace {

using servo::base::utf8_length;
using servo::dictionary::Identity;
using servo::dictionary::kRecordSize;
using servo::dictionary::ObjectRecord;
using servo::dictionary::Store;

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

std::string described_file(std::string_view input) {
    std::size_t at = 0;
    const auto byte = [&]() -> std::size_t {
        return at < input.size() ? static_cast<unsigned char>(input[at++]) : 0U;
    };
    const auto word = [&] {
        const std::size_t low = byte();
        return low | byte() << 8;
    };
    const char padding = static_cast<char>(byte());
    std::string file(word() % (4 * kRecordSize), padding);  // up to four records
    while (at < input.size()) {
        const std::size_t offset = word();
        const std::size_t wanted = byte();
        const std::string_view bytes = input.substr(std::min(at, input.size()), wanted);
        at += bytes.size();
        if (offset < file.size()) {
            const std::size_t room = std::min(bytes.size(), file.size() - offset);
            file.replace(offset, room, bytes.substr(0, room));
        }
    }
    return file;
}

void check_widths(const ObjectRecord& record) {
    require(utf8_length(record.type) == 6, "type");
    require(utf8_length(record.name_ch) == 64, "Chinese name");
    require(utf8_length(record.name_en) == 64, "English name");
    require(utf8_length(record.formula) == 256, "formula");
    require(utf8_length(record.attr) == 8, "attribute");
    require(utf8_length(record.list_en) == 768, "English list");
    require(utf8_length(record.list_ch) == 768, "Chinese list");
}

void check_lookup(const Store& store, std::size_t row) {
    const Identity identity = store.row_identity(row);
    const auto count = static_cast<std::size_t>(store.count());
    std::size_t first = 0;
    while (first < count && store.row_identity(first) != identity)
        ++first;
    const ObjectRecord record = store.get_record(identity);
    check_widths(record);
    require(record.key == (first < count ? identity : 0), "key");
    for (const bool english : {false, true}) {
        const std::string expected =
            first < count ? store.dictionary_cell(first, english ? 7 : 6) : std::string();
        require(store.comment(identity, english) == expected, "comment of the first record");
    }
}

void check(const std::string& file) {
    Store store;
    store.load(file);
    const auto count = static_cast<std::size_t>(store.count());
    require(store.dictionary_rows() == (file.size() + kRecordSize - 1) / kRecordSize, "rows");
    require(store.dictionary_rows() >= count && store.dictionary_rows() <= count + 1, "count");
    std::size_t modbus = 0;
    for (std::size_t row = 0; row < store.dictionary_rows(); ++row) {
        check_lookup(store, row);
        for (std::size_t column = 0; column < 9; ++column) {
            const std::string cell = store.dictionary_cell(row, column);
            require(!cell.empty(), "a field is never empty");
            // A cell is clean text: what the code page holds of it comes back.
            require(servo::base::utf8_to_gbk(cell).size() >= utf8_length(cell), "cell");
        }
        const std::size_t address = row * kRecordSize + 8550;
        if (address >= file.size() || file[address] != 'N') ++modbus;
    }
    require(store.modbus_rows() == modbus, "rows of the Modbus table");
    for (std::size_t row = 0; row < modbus; ++row) {
        for (std::size_t column = 0; column < 7; ++column) {
            require(!store.modbus_cell(row, column).empty(), "cell of the Modbus table");
        }
    }
    require(store.dictionary_cell(store.dictionary_rows(), 0).empty(), "row behind the end");
    require(store.get_record(0x7FFFFFFF).key == 0, "an identity that no record has");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    check(std::string(input));
    check(described_file(input));
    return 0;
}
