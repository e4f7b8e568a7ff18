#include "dictionary/store.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::dictionary {

namespace {

constexpr std::string_view kReducedFile = "Servo.dat";
constexpr std::string_view kAllItemsFile = "qorlan.dat";

// One fixed-width field of a record, in bytes of the code page.
struct Field {
    std::size_t offset = 0;
    std::size_t width = 0;

    std::string_view in(std::string_view record) const { return record.substr(offset, width); }
};

constexpr Field kIndex{0, 4};
constexpr Field kSub{4, 2};
constexpr Field kNameChinese{6, 64};
constexpr Field kNameEnglish{70, 64};
constexpr Field kType{134, 16};
constexpr Field kAttribute{150, 8};
constexpr Field kCommentChinese{158, 4096};
constexpr Field kCommentEnglish{4254, 4096};
constexpr Field kFormula{8350, 200};
constexpr Field kModbus{8550, 4};
static_assert(kModbus.offset + kModbus.width == kRecordSize);

// How a field becomes a cell of a table.
enum class Cut : std::uint8_t { kWhole, kTail };

struct Column {
    Field field;
    Cut cut = Cut::kTail;
};

constexpr std::array<Column, 9> kDictionaryColumns{{
    {kIndex, Cut::kWhole},
    {kSub, Cut::kWhole},
    {kNameChinese},
    {kNameEnglish},
    {kAttribute},
    {kType},
    {kCommentChinese},
    {kCommentEnglish},
    {kFormula},
}};

constexpr std::array<Column, 7> kModbusColumns{{
    {kModbus, Cut::kWhole},
    {kIndex, Cut::kWhole},
    {kSub, Cut::kWhole},
    {kNameChinese},
    {kNameEnglish},
    {kAttribute},
    {kType},
}};

bool is_tail(char c) {
    return c == ' ' || c == '\0' || c == '\n';
}

std::string cell(std::string_view record, const Column& column) {
    const std::string_view bytes = column.field.in(record);
    return base::gbk_to_utf8(column.cut == Cut::kTail ? trim_tail_bytes(bytes) : bytes);
}

// Left-aligned and filled with blanks, or cut, to `width` characters. A character takes at most two
// bytes, so what lies further back is not even converted.
std::string fitted(std::string_view bytes, std::size_t width) {
    std::string text = base::gbk_to_utf8(bytes.substr(0, 2 * width));
    const std::size_t length = base::utf8_length(text);
    if (length > width) {
        text.resize(base::utf8_prefix(text, width).size());
    } else {
        text.append(width - length, ' ');
    }
    return text;
}

std::string_view up_to_nul(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

std::string_view item_list(std::string_view comment) {
    const std::size_t bar = base::gbk_find(comment, '|');
    return bar == std::string_view::npos ? std::string_view{} : comment.substr(bar);
}

std::optional<std::filesystem::path> existing(const std::filesystem::path& folder,
                                              std::string_view name) {
    std::filesystem::path file = base::find_in(folder, name);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    return file;
}

ObjectRecord blank_record() {
    ObjectRecord record;
    record.type.assign(6, ' ');
    record.name_ch.assign(64, ' ');
    record.name_en.assign(64, ' ');
    record.formula.assign(256, ' ');
    record.attr.assign(8, ' ');
    record.list_en.assign(768, ' ');
    record.list_ch.assign(768, ' ');
    return record;
}

}  // namespace

std::string_view trim_tail_bytes(std::string_view bytes) {
    for (std::size_t last = bytes.size(); last-- > 1;) {
        if (!is_tail(bytes[last])) return bytes.substr(0, last + 1);
    }
    return bytes;
}

std::string trim_tail(std::string_view text) {
    const std::string_view cut = trim_tail_bytes(text);
    // A first character that the code page does not hold stands there as one byte, which is not
    // examined, whatever its length here.
    if (cut.size() < text.size() && base::utf8_length(cut) == 1 &&
        base::utf8_to_gbk(cut).size() == 1) {
        return std::string(text);
    }
    return std::string(cut);
}

// The file as it stands; texts are made when somebody asks, since few of them are ever shown.
//
// Readers of the master clean it as they go: a field that ends with a NUL is written back filled
// with blanks. Nothing can observe that. The next reader cuts at the first NUL just the same, and
// the tables show the fields as they were when the file was loaded. So the bytes stay untouched
// here, and looking something up changes nothing.
struct Store::Data {
    std::string bytes;  // whole records, the last one filled with NUL
    std::size_t rows = 0;
    std::int16_t count = 0;
    std::unordered_map<Identity, std::uint32_t> first;  // row of the first record of an identity
    std::vector<std::uint32_t> modbus;                  // rows of the Modbus table

    std::string_view record(std::size_t row) const {
        return std::string_view(bytes).substr(row * kRecordSize, kRecordSize);
    }

    Identity identity(std::size_t row) const {
        // Index and sub-index stand side by side. Six digits fit the result.
        return static_cast<Identity>(
            base::scan_hex(record(row).substr(kIndex.offset, kIndex.width + kSub.width)));
    }

    // Row that a lookup finds, or nothing.
    std::optional<std::size_t> find(Identity wanted) const {
        const auto found = first.find(wanted);
        if (found == first.end()) return std::nullopt;
        return found->second;
    }

    void index() {
        // A rounded count never exceeds the records that were begun.
        const auto known = static_cast<std::size_t>(count);
        first.reserve(known);
        for (std::size_t row = 0; row < rows; ++row) {
            // The spare slot may hold a piece of a record: the tables show it, no lookup finds it.
            if (row < known) first.emplace(identity(row), static_cast<std::uint32_t>(row));
            if (kModbus.in(record(row)).front() != 'N') {
                modbus.push_back(static_cast<std::uint32_t>(row));
            }
        }
    }
};

Store::Store() : data_(std::make_unique<Data>()) {}
Store::~Store() = default;
Store::Store(Store&&) noexcept = default;
Store& Store::operator=(Store&&) noexcept = default;

void Store::load(std::string bytes) {
    data_ = std::make_unique<Data>();
    const std::size_t length = bytes.size();
    const std::int64_t rounded =
        base::round_half_even(static_cast<double>(length) / static_cast<double>(kRecordSize));
    constexpr std::int64_t kMost = std::numeric_limits<std::int16_t>::max();
    data_->count = static_cast<std::int16_t>(std::min(rounded, kMost));
    // There is one slot more than the count, and reading goes on until the file ends.
    const std::size_t slots = static_cast<std::size_t>(data_->count) + 1;
    data_->rows = std::min(slots, (length + kRecordSize - 1) / kRecordSize);
    data_->bytes = std::move(bytes);
    data_->bytes.resize(data_->rows * kRecordSize, '\0');
    data_->index();
}

bool Store::open_dat(const std::filesystem::path& folder) {
    data_ = std::make_unique<Data>();
    std::optional<std::filesystem::path> file = existing(folder, kReducedFile);
    if (!file) file = existing(folder, kAllItemsFile);
    if (!file) return false;
    std::optional<std::string> bytes = base::read_file(*file);
    if (!bytes) return false;
    load(std::move(*bytes));
    return true;
}

Variant Store::variant_of(const std::filesystem::path& folder) {
    return existing(folder, kReducedFile) ? Variant::kReduced : Variant::kAllItems;
}

std::int16_t Store::count() const {
    return data_->count;
}

ObjectRecord Store::get_record(Identity identity) const {
    const std::optional<std::size_t> row = data_->find(identity);
    if (!row) return blank_record();
    const std::string_view bytes = data_->record(*row);
    ObjectRecord record;
    record.key = identity;
    record.type = fitted(short_type(up_to_nul(kType.in(bytes))), 6);
    record.name_ch = fitted(up_to_nul(kNameChinese.in(bytes)), 64);
    record.name_en = fitted(up_to_nul(kNameEnglish.in(bytes)), 64);
    record.formula = fitted(up_to_nul(kFormula.in(bytes)), 256);
    record.attr = fitted(up_to_nul(kAttribute.in(bytes)), 8);
    record.list_en = fitted(item_list(kCommentEnglish.in(bytes)), 768);
    record.list_ch = fitted(item_list(kCommentChinese.in(bytes)), 768);
    return record;
}

std::string Store::comment(Identity identity, bool english) const {
    const std::optional<std::size_t> row = data_->find(identity);
    if (!row) return {};
    const Field& field = english ? kCommentEnglish : kCommentChinese;
    return cell(data_->record(*row), {field});
}

std::size_t Store::dictionary_rows() const {
    return data_->rows;
}

std::string Store::dictionary_cell(std::size_t row, std::size_t column) const {
    if (row >= data_->rows || column >= kDictionaryColumns.size()) return {};
    return cell(data_->record(row), kDictionaryColumns[column]);
}

std::size_t Store::modbus_rows() const {
    return data_->modbus.size();
}

std::string Store::modbus_cell(std::size_t row, std::size_t column) const {
    if (row >= data_->modbus.size() || column >= kModbusColumns.size()) return {};
    return cell(data_->record(data_->modbus[row]), kModbusColumns[column]);
}

Identity Store::row_identity(std::size_t row) const {
    return row < data_->rows ? data_->identity(row) : 0;
}

}  // namespace servo::dictionary
