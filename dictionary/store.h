// The master list of every object that the program knows on the drive: a file of fixed records,
// loaded once, asked by identity.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "dictionary/keys.h"

namespace servo::dictionary {

inline constexpr std::size_t kRecordSize = 8554;

// Which product the data belongs to; chosen by the name of the file that is there.
enum class Variant : std::uint8_t { kAllItems = 0, kReduced = 1 };

// Widths in characters. Shorter values are filled with blanks, longer ones cut.
struct ObjectRecord {
    Identity key = 0;     // 0 when nothing was found
    std::string type;     // 6, short type name; blank when the word is none of the table
    std::string name_ch;  // 64
    std::string name_en;  // 64
    std::string formula;  // 256, lines separated by LF
    std::string attr;     // 8
    std::string list_en;  // 768, the comment from its first "|" on; blank without one
    std::string list_ch;  // 768
};

// Cuts blanks, NULs and LFs off the end of a text of code-page bytes. The byte at position 0 is not
// examined, and a text in which no other byte is found keeps its full width.
std::string_view trim_tail_bytes(std::string_view bytes);

// The same for a UTF-8 text: trimmed as its code-page bytes would be.
std::string trim_tail(std::string_view text);

class Store {
  public:
    Store();
    ~Store();
    Store(Store&&) noexcept;
    Store& operator=(Store&&) noexcept;

    // Loads Servo.dat, else qorlan.dat, of the folder. False when neither is there; the store is
    // then empty. The number of records is the length over 8554, rounded with halves to even (at
    // most 32,767). Every record that the file begins is read, what its end cuts off is NUL; a
    // piece too small to count shows in the tables and is found by no lookup.
    bool open_dat(const std::filesystem::path& folder);

    // The same from bytes in memory.
    void load(std::string_view bytes);

    // The variant by the files of a folder: reduced when Servo.dat is there.
    static Variant variant_of(const std::filesystem::path& folder);

    std::int16_t count() const;

    // Row of the first record of that identity in file order, nothing when there is none. Constant
    // time.
    std::optional<std::size_t> find(Identity identity) const;

    // That record's fields; key 0 and all blank when there is none.
    ObjectRecord get_record(Identity identity) const;

    // Whole comments (UTF-8, trimmed), for the help pane.
    std::string comment(Identity identity, bool english) const;

    // The table of the dictionary browser: nine cells a row (index, sub, name zh, name en,
    // attribute, type, comment zh, comment en, formula), without the header row. Cells are made
    // when asked for.
    std::size_t dictionary_rows() const;
    std::string dictionary_cell(std::size_t row, std::size_t column) const;

    // The Modbus table: seven cells a row (address, index, sub, name zh, name en, attribute, type).
    std::size_t modbus_rows() const;
    std::string modbus_cell(std::size_t row, std::size_t column) const;

    // Identity of a row of the dictionary table, as get_record would match it.
    Identity row_identity(std::size_t row) const;

  private:
    struct Data;
    std::unique_ptr<Data> data_;
};

}  // namespace servo::dictionary
