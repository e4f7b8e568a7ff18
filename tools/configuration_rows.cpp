#include "tools/configuration_rows.h"

#include <algorithm>
#include <set>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"
#include "params/codec.h"

namespace servo::tools {

namespace {

constexpr std::size_t kIdentityDigits = 6;
constexpr std::size_t kKeyDigits = 8;
constexpr double kHalfRange = 2147483648.0;
constexpr double kFullRange = 4294967296.0;

struct Names {
    std::string chinese;
    std::string english;
};

// A key with more digits than an object has is none of the dictionary's.
Names names_of(std::string_view Index, const dictionary::Store& dictionary) {
    const double key = params::hex_value(Index);
    const double unsigned_key = key < 0 ? key + kFullRange : key;
    if (!(unsigned_key < kFullRange)) return {};
    const auto record =
        dictionary.get_record(static_cast<dictionary::Identity>(unsigned_key / 256.0));
    if (record.key == 0) return {};
    return {dictionary::trim_tail(record.name_ch), dictionary::trim_tail(record.name_en)};
}

// A plain split at the commas: nothing is quoted in these files. At most the first three fields;
// what may follow is not looked at.
std::vector<std::string> fields_of(std::string_view line) {
    std::vector<std::string> fields;
    if (line.empty()) return fields;
    std::size_t begin = 0;
    while (fields.size() < kCdiFields) {
        const std::size_t comma = line.find(',', begin);
        fields.push_back(base::gbk_to_utf8(line.substr(begin, comma - begin)));
        if (comma == std::string_view::npos) break;
        begin = comma + 1;
    }
    return fields;
}

bool is_hex(std::string_view digits) {
    return std::ranges::all_of(digits, [](char digit) {
        return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f') ||
               (digit >= 'A' && digit <= 'F');
    });
}

bool is_blank(std::string_view line) {
    return std::ranges::all_of(line, [](char c) { return c == ' ' || c == '\t' || c == '\0'; });
}

bool is_record(std::string_view line, std::size_t fields) {
    const auto commas = static_cast<std::size_t>(std::ranges::count(line, ','));
    return !line.empty() && commas + 1 >= fields;
}

SourceRow invalid_row(std::vector<std::string> fields, const dictionary::Store& dictionary) {
    fields.resize(kCdiFields);
    Names names = names_of(fields[0], dictionary);
    return {.Index = std::move(fields[0]),
            .Source_Value = std::move(fields[1]),
            .Check_Value = {},
            .Result = std::string(kInvalidWord),
            .name_ch = std::move(names.chinese),
            .name_en = std::move(names.english),
            .red = true};
}

}  // namespace

std::optional<dictionary::WireKey> row_key(std::string_view Index) {
    if (Index.size() != kKeyDigits || !is_hex(Index)) return std::nullopt;
    const int size = row_size(Index);
    if (size == 0) return std::nullopt;
    dictionary::WireKey identity = 0;
    for (const char digit : Index.substr(0, kIdentityDigits))
        identity = identity * 16 + static_cast<dictionary::WireKey>(
                                       digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
    return (identity << 8) | static_cast<dictionary::WireKey>(size);
}

int row_size(std::string_view Index) {
    if (Index.ends_with("08")) return 1;
    if (Index.ends_with("10")) return 2;
    if (Index.ends_with("20")) return 4;
    return 0;
}

std::optional<std::int32_t> source_number(std::string_view Source_Value) {
    std::string text(Source_Value);
    for (std::size_t at = text.find("0x"); at != std::string::npos; at = text.find("0x", at))
        text.replace(at, 2, "&H");
    double number = base::leading_number(text);
    if (number >= kHalfRange) number -= kFullRange;
    if (!(number >= -kHalfRange - 0.5 && number < kHalfRange)) return std::nullopt;
    const std::int64_t whole = base::round_half_even(number);
    if (whole < -static_cast<std::int64_t>(kHalfRange) ||
        whole >= static_cast<std::int64_t>(kHalfRange))
        return std::nullopt;
    return static_cast<std::int32_t>(whole);
}

std::vector<SourceRow> read_cdi(std::string_view bytes, const dictionary::Store& dictionary) {
    std::vector<SourceRow> rows;
    base::LineReader lines(bytes);
    while (const auto line = rows.size() < kMostRows ? lines.next() : std::nullopt) {
        auto fields = fields_of(*line);
        if (fields.size() < kCdiFields) {
            rows.push_back(invalid_row(std::move(fields), dictionary));
            break;
        }
        if (fields[2] != kTrueWord) {
            rows.push_back(invalid_row(std::move(fields), dictionary));
            continue;
        }
        Names names = names_of(fields[0], dictionary);
        rows.push_back({.Index = std::move(fields[0]),
                        .Source_Value = std::move(fields[1]),
                        .Check_Value = {},
                        .Result = {},
                        .name_ch = std::move(names.chinese),
                        .name_en = std::move(names.english)});
    }
    return rows;
}

std::vector<DriverRow> read_cdo(std::string_view bytes, const dictionary::Store& dictionary) {
    std::vector<DriverRow> rows;
    base::LineReader lines(bytes);
    while (const auto line = rows.size() < kMostRows ? lines.next() : std::nullopt) {
        auto fields = fields_of(*line);
        if (fields.empty()) break;
        Names names = names_of(fields[0], dictionary);
        rows.push_back({.Index = std::move(fields[0]),
                        .Driver_Value = {},
                        .Result = {},
                        .name_ch = std::move(names.chinese),
                        .name_en = std::move(names.english)});
    }
    return rows;
}

std::optional<std::size_t> broken_line(std::string_view bytes, std::size_t loaded,
                                       std::size_t fields) {
    base::LineReader lines(bytes);
    std::optional<std::size_t> broken;
    std::size_t number = 0;
    while (const auto line = lines.next()) {
        ++number;
        if (!broken && number <= loaded && is_record(*line, fields)) continue;
        if (!broken) broken = number;
        if (!is_blank(*line)) return broken;
    }
    return std::nullopt;
}

std::vector<DriverRow> template_of(const std::vector<SourceRow>& rows) {
    std::vector<DriverRow> wanted;
    std::set<dictionary::WireKey> seen;
    for (const SourceRow& row : rows) {
        const auto key = row_key(row.Index);
        if (!key || row.Result == kInvalidWord || !seen.insert(*key).second) continue;
        wanted.push_back({.Index = row.Index,
                          .Driver_Value = {},
                          .Result = {},
                          .name_ch = row.name_ch,
                          .name_en = row.name_en});
    }
    return wanted;
}

std::string write_cdi(const std::vector<DriverRow>& rows) {
    std::string bytes;
    for (const DriverRow& row : rows) {
        bytes += base::utf8_to_gbk(row.Index);
        bytes += ',';
        bytes += base::utf8_to_gbk(row.Driver_Value);
        bytes += ',';
        bytes += base::utf8_to_gbk(row.Result);
        bytes += "\r\n";
    }
    return bytes;
}

}  // namespace servo::tools
