#include "params/row.h"

#include <fmt/format.h>

#include <algorithm>

#include <algorithm>

#include "base/number.h"
#include "params/formula.h"

namespace servo::params {

namespace {

constexpr std::array<std::string Row::*, kColumns> kCells{
    &Row::number,  &Row::index,   &Row::type,    &Row::name,    &Row::value,  &Row::unit,
    &Row::formula, &Row::name_ch, &Row::name_en, &Row::list_en, &Row::list_ch};

// Widths in hundredths of a twentieth of the grid.
constexpr std::array<int, kColumns> kWidths{80, 205, 205, 500, 700, 230};

std::string without_padding(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

// A dictionary text without an item list comes as blanks only, which the tail cutter leaves alone.
// It must not count as a list, or a row without items would open an empty drop-down.
std::string item_list(std::string_view padded) {
    const auto is_padding = [](char c) { return c == ' ' || c == '\0'; };
    if (std::all_of(padded.begin(), padded.end(), is_padding)) return {};
    return dictionary::trim_tail(padded);
}

}  // namespace

const std::string& Row::cell(int column) const {
    return this->*kCells.at(static_cast<std::size_t>(column));
}

std::string& Row::cell(int column) {
    return this->*kCells.at(static_cast<std::size_t>(column));
}

dictionary::Identity Row::identity() const {
    return static_cast<dictionary::Identity>(base::round_half_even(base::scan_hex(index)));
}

void Row::renumber(int row_number) {
    number = fmt::format("{}{}", row_number, is_static() ? "*" : "");
}

Row build_row(const dictionary::Store& dictionary, dictionary::Identity key, int row_number,
              base::Language language) {
    const dictionary::ObjectRecord record = dictionary.get_record(key);
    const bool live = record.attr.find_first_of("HL") != std::string::npos;
    Row row;
    row.number = fmt::format("{}{}", row_number, live ? "" : "*");
    row.index = base::hex_text(key);
    row.type = dictionary::strip_blanks(record.type);
    row.formula = without_padding(record.formula);
    row.unit = split_formula(first_line(row.formula)).unit;
    row.name_ch = without_padding(record.name_ch);
    row.name_en = without_padding(record.name_en);
    row.name = language == base::Language::kChinese ? row.name_ch : row.name_en;
    row.list_en = item_list(record.list_en);
    row.list_ch = item_list(record.list_ch);
    row.read_only = record.attr.find('W') == std::string::npos;
    return row;
}

Row restore_row(const dictionary::Store& dictionary, dictionary::Identity key, int row_number,
                base::Language language, std::string_view value, std::string_view unit) {
    Row row = build_row(dictionary, key, row_number, language);
    row.value = value;
    row.unit = unit;
    return row;
}

int column_width(int column, int grid_width) {
    if (column < 0 || column >= kColumns) return 0;
    constexpr int kWhole = 2000;
    return grid_width * kWidths.at(static_cast<std::size_t>(column)) / kWhole;
}

}  // namespace servo::params
