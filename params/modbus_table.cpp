#include "params/modbus_table.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/ascii.h"

namespace servo::params {

namespace {

// Tenths of the unit of width.
constexpr std::array<int, kModbusColumns> kWidths{25, 10, 13, 70, 70, 12, 40};
constexpr int kWholeWidth = 240;

int left_edge(int column, int grid_width) {
    int sum = 0;
    for (int i = 0; i < column; ++i)
        sum += kWidths.at(static_cast<std::size_t>(i));
    return static_cast<int>(static_cast<long long>(grid_width) * sum / kWholeWidth);
}

// Bytes of Chinese characters are none of A to Z, so the text may be taken byte by byte.
std::string small_letters(std::string_view text) {
    return base::ascii_lower(text);
}

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

}  // namespace

int modbus_column_width(int column, int grid_width) {
    if (column < 0 || column >= kModbusColumns) return 0;
    return left_edge(column + 1, grid_width) - left_edge(column, grid_width);
}

void ModbusTable::reload() {
    search_texts_.clear();
    search_texts_.reserve(dictionary_.modbus_rows());
    for (std::size_t row = 0; row < dictionary_.modbus_rows(); ++row) {
        // The key first; a line feed stands between cells, so that no word reaches across two.
        std::string text =
            dictionary_.modbus_cell(row, kModbusIndex) + dictionary_.modbus_cell(row, kModbusSub);
        for (std::size_t column = 0; column < kModbusColumns; ++column)
            text += '\n' + dictionary_.modbus_cell(row, column);
        search_texts_.push_back(small_letters(text));
    }
    apply_filter();
}

void ModbusTable::set_filter(std::string_view text) {
    filter_ = text;
    apply_filter();
}

void ModbusTable::apply_filter() {
    const std::string small = small_letters(filter_);
    const auto words = words_of(small);
    shown_.clear();
    for (std::size_t row = 0; row < search_texts_.size(); ++row) {
        const std::string& text = search_texts_[row];
        const auto found = [&text](std::string_view word) {
            return text.find(word) != std::string::npos;
        };
        if (std::all_of(words.begin(), words.end(), found)) shown_.push_back(row);
    }
}

std::string ModbusTable::cell(int row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= kModbusColumns) return {};
    return dictionary_.modbus_cell(shown_[static_cast<std::size_t>(row)],
                                   static_cast<std::size_t>(column));
}

std::string ModbusTable::copied_rows(std::span<const int> rows_to_copy) const {
    std::string text;
    for (const int row : rows_to_copy) {
        if (row < 0 || row >= rows()) continue;
        for (int column = 0; column < kModbusColumns; ++column)
            text += cell(row, column) + (column + 1 < kModbusColumns ? '\t' : '\n');
    }
    return text;
}

std::optional<std::size_t> ModbusTable::dictionary_row(int row) const {
    if (row < 0 || row >= rows()) return std::nullopt;
    return shown_[static_cast<std::size_t>(row)];
}

std::optional<int> ModbusTable::shown_row(std::size_t dictionary_row) const {
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), dictionary_row);
    if (found == shown_.end() || *found != dictionary_row) return std::nullopt;
    return static_cast<int>(found - shown_.begin());
}

std::string ModbusTable::count_text(int shown, int all, base::Language language) {
    switch (language) {
        case base::Language::kChinese:
            return shown == all ? fmt::format("共 {} 行", all)
                                : fmt::format("{} 行，共 {} 行", shown, all);
        case base::Language::kEnglish:
            return shown == all ? fmt::format("{} rows", all)
                                : fmt::format("{} of {} rows", shown, all);
    }
    return {};
}

}  // namespace servo::params
