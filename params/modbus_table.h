// The rows of the window `modbus`: every object of the dictionary that has a Modbus address, in the
// dictionary's order, and those of them that a filter leaves. The list file modbus.txt has no part
// in it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::params {

enum ModbusColumn : std::uint8_t {
    kModbusAddress,
    kModbusIndex,
    kModbusSub,
    kModbusNameCh,
    kModbusNameEn,
    kModbusAttr,
    kModbusType,
};
inline constexpr int kModbusColumns = 7;
// The same in both languages.
inline constexpr std::array<std::string_view, kModbusColumns> kModbusHeader{
    "ModBus", "Index", "Sub", "NameCH", "NameEN", "ATTR", "Type"};

// Width of a column in a grid of that width, 2.5 : 1 : 1.3 : 7 : 7 : 1.2 : 4. The columns fill the
// grid to the pixel.
int modbus_column_width(int column, int grid_width);

class ModbusTable {
  public:
    // The dictionary outlives the table.
    explicit ModbusTable(const dictionary::Store& dictionary) : dictionary_(dictionary) {
        reload();
    }

    // Takes the dictionary as it is now. The filter stays.
    void reload();

    // Rows hold every word of the text, in any cell or in the key (index and sub-index joined).
    // Capitals of ASCII count as small ones. An empty text leaves all rows.
    void set_filter(std::string_view text);
    const std::string& filter() const { return filter_; }

    // Of what the filter leaves, from 0; without the header.
    int rows() const { return static_cast<int>(shown_.size()); }
    std::string cell(int row, int column) const;
    int all_rows() const { return static_cast<int>(search_texts_.size()); }

    // A row of the dictionary's table, of a shown row and back; nothing when it is not there.
    std::optional<std::size_t> dictionary_row(int row) const;
    std::optional<int> shown_row(std::size_t dictionary_row) const;

    // The rows as lines of cells separated by tabs; rows that are not there are left out.
    std::string copied_rows(std::span<const int> rows) const;

    // How many rows there are, in both languages; with the number shown when a filter hides some.
    std::string count_text(base::Language language) const {
        return count_text(rows(), all_rows(), language);
    }
    static std::string count_text(int shown, int all, base::Language language);

  private:
    void apply_filter();

    const dictionary::Store& dictionary_;
    std::string filter_;
    std::vector<std::string> search_texts_;  // of each row, in small letters
    std::vector<std::size_t> shown_;         // rows of the dictionary's table
};

}  // namespace servo::params
