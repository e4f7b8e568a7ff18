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
#include "dictionary/packed_records.h"

namespace servo::dictionary {

namespace {

constexpr std::string_view kReducedFile = "Servo.dat";
constexpr std::string_view kAllItemsFile = "qorlan.dat";

// The count is a signed 16-bit number.
constexpr std::size_t kMostRecords = std::numeric_limits<std::int16_t>::max();

// Read at a time, so that the bytes of a piece are still in the cache when they are looked at.
constexpr std::size_t kPiece = 16 * kRecordSize;

// Places in a record of what the load itself looks at.
constexpr std::size_t kIdentityDigits = 6;  // index and sub-index, side by side at the start
constexpr std::size_t kModbusOffset = 8550;

// How a field becomes a cell of a table.
enum class Cut : std::uint8_t { kWhole, kTail };

struct Column {
    Field field;
    Cut cut = Cut::kTail;
};

constexpr std::array<Column, 9> kDictionaryColumns{{
    {Field::kIndex, Cut::kWhole},
    {Field::kSub, Cut::kWhole},
    {Field::kNameChinese},
    {Field::kNameEnglish},
    {Field::kAttribute},
    {Field::kType},
    {Field::kCommentChinese},
    {Field::kCommentEnglish},
    {Field::kFormula},
}};

constexpr std::array<Column, 7> kModbusColumns{{
    {Field::kModbus, Cut::kWhole},
    {Field::kIndex, Cut::kWhole},
    {Field::kSub, Cut::kWhole},
    {Field::kNameChinese},
    {Field::kNameEnglish},
    {Field::kAttribute},
    {Field::kType},
}};

std::string cell(const PackedRecords& records, std::size_t row, const Column& column) {
    const StoredField field = records.field(row, column.field);
    return base::gbk_to_utf8(column.cut == Cut::kTail ? field.trimmed() : field.whole());
}

// Of a field that a reader cuts at its first NUL: left-aligned in blanks, `width` characters.
std::string cut_at_nul(const StoredField& field, std::size_t width) {
    const std::size_t nul = field.text.find('\0');
    if (nul != std::string_view::npos) {
        return base::gbk_to_utf8_field(field.text.substr(0, nul), width);
    }
    if (field.padding == '\0' || field.padding == ' ') {
        return base::gbk_to_utf8_field(field.text, width);
    }
    return base::gbk_to_utf8_field(field.whole(), width);
}

// The comment from its first "|" on, to its end, in `width` characters; blank without one.
std::string item_list(const StoredField& comment, std::size_t width) {
    std::string whole;
    std::string_view text = comment.text;
    if (comment.padding != ' ') {  // blanks behind the list are what it is filled with anyway
        whole = comment.whole();
        text = whole;
    }
    const std::size_t bar = base::gbk_find(text, '|');
    return base::gbk_to_utf8_field(
        bar == std::string_view::npos ? std::string_view{} : text.substr(bar), width);
}

std::string short_type_of(const StoredField& field) {
    const std::string word = field.whole();
    return std::string(short_type(std::string_view(word).substr(0, word.find('\0'))));
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
    const auto is_tail = [](char c) { return c == ' ' || c == '\0' || c == '\n'; };
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
    PackedRecords records;
    std::size_t length = 0;  // of the file
    std::int16_t count = 0;
    std::vector<Identity> identities;                   // of each record
    std::unordered_map<Identity, std::uint32_t> first;  // row of the first record of an identity
    std::vector<std::uint32_t> modbus;                  // rows of the Modbus table

    void reserve(std::size_t file_length) {
        const std::size_t most = std::min(file_length / kRecordSize, kMostRecords) + 1;
        records.reserve(most * kRecordSize);
        identities.reserve(most);
        modbus.reserve(most);
    }

    // Whole records, but for the last piece of a file.
    void add(std::string_view piece) {
        length += piece.size();
        for (; !piece.empty(); piece.remove_prefix(std::min(piece.size(), kRecordSize))) {
            // There is one slot more than the count, and reading goes on until the file ends.
            if (records.rows() > kMostRecords) return;
            const std::string_view record = piece.substr(0, kRecordSize);
            // What a file's end cut off is NUL, and only a capital N means "no address".
            if (record.size() <= kModbusOffset || record[kModbusOffset] != 'N') {
                modbus.push_back(static_cast<std::uint32_t>(records.rows()));
            }
            // Six digits fit the result.
            identities.push_back(
                static_cast<Identity>(base::scan_hex(record.substr(0, kIdentityDigits))));
            records.add(record);
        }
    }

    void finish() {
        const std::int64_t rounded =
            base::round_half_even(static_cast<double>(length) / static_cast<double>(kRecordSize));
        const auto most = static_cast<std::int64_t>(kMostRecords);
        count = static_cast<std::int16_t>(std::min(rounded, most));
        // A rounded count never exceeds the records that were begun. It may leave out the last of
        // them, a piece of a record: the tables show it, no lookup finds it.
        const auto known = static_cast<std::size_t>(count);
        first.reserve(known);
        for (std::size_t row = 0; row < known; ++row) {
            first.emplace(identities[row], static_cast<std::uint32_t>(row));
        }
    }
};

Store::Store() : data_(std::make_unique<Data>()) {}
Store::~Store() = default;
Store::Store(Store&&) noexcept = default;
Store& Store::operator=(Store&&) noexcept = default;

void Store::load(std::string_view bytes) {
    data_ = std::make_unique<Data>();
    data_->reserve(bytes.size());
    data_->add(bytes);
    data_->finish();
}

bool Store::open_dat(const std::filesystem::path& folder) {
    data_ = std::make_unique<Data>();
    std::optional<std::filesystem::path> file = existing(folder, kReducedFile);
    if (!file) file = existing(folder, kAllItemsFile);
    if (!file) return false;
    auto fresh = std::make_unique<Data>();
    std::error_code unknown;  // of a length: then it grows as it is read
    const std::uintmax_t length = std::filesystem::file_size(*file, unknown);
    if (!unknown) fresh->reserve(length);
    if (!base::read_pieces(*file, kPiece, [&](std::string_view piece) { fresh->add(piece); })) {
        return false;
    }
    fresh->finish();
    data_ = std::move(fresh);
    return true;
}

Variant Store::variant_of(const std::filesystem::path& folder) {
    return existing(folder, kReducedFile) ? Variant::kReduced : Variant::kAllItems;
}

std::int16_t Store::count() const {
    return data_->count;
}

std::optional<std::size_t> Store::find(Identity identity) const {
    const auto found = data_->first.find(identity);
    if (found == data_->first.end()) return std::nullopt;
    return found->second;
}

ObjectRecord Store::get_record(Identity identity) const {
    const std::optional<std::size_t> row = find(identity);
    if (!row) return blank_record();
    const auto field = [&](Field which) { return data_->records.field(*row, which); };
    ObjectRecord record;
    record.key = identity;
    record.type = base::gbk_to_utf8_field(short_type_of(field(Field::kType)), 6);
    record.name_ch = cut_at_nul(field(Field::kNameChinese), 64);
    record.name_en = cut_at_nul(field(Field::kNameEnglish), 64);
    record.formula = cut_at_nul(field(Field::kFormula), 256);
    record.attr = cut_at_nul(field(Field::kAttribute), 8);
    record.list_en = item_list(field(Field::kCommentEnglish), 768);
    record.list_ch = item_list(field(Field::kCommentChinese), 768);
    return record;
}

std::string Store::comment(Identity identity, bool english) const {
    const std::optional<std::size_t> row = find(identity);
    if (!row) return {};
    return cell(data_->records, *row, {english ? Field::kCommentEnglish : Field::kCommentChinese});
}

std::size_t Store::dictionary_rows() const {
    return data_->records.rows();
}

std::string Store::dictionary_cell(std::size_t row, std::size_t column) const {
    if (row >= dictionary_rows() || column >= kDictionaryColumns.size()) return {};
    return cell(data_->records, row, kDictionaryColumns[column]);
}

std::size_t Store::modbus_rows() const {
    return data_->modbus.size();
}

std::string Store::modbus_cell(std::size_t row, std::size_t column) const {
    if (row >= modbus_rows() || column >= kModbusColumns.size()) return {};
    return cell(data_->records, data_->modbus[row], kModbusColumns[column]);
}

Identity Store::row_identity(std::size_t row) const {
    return row < data_->identities.size() ? data_->identities[row] : 0;
}

}  // namespace servo::dictionary
