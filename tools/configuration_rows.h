// The two grids of the configuration window and their files: `.cdi` holds keys with values, `.cdo`
// lists the keys to read. One record a line, fields separated by commas, no header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/store.h"

namespace servo::tools {

// Words of the result columns.
inline constexpr std::string_view kTrueWord = "True";
inline constexpr std::string_view kFalseWord = "False";
inline constexpr std::string_view kInvalidWord = "Invalid";
inline constexpr std::string_view kIllegalWord = "Illegal";

// Texts are those of the cells. `red` is the background of the whole row.
struct SourceRow {
    std::string Index;         // eight hexadecimal digits: index, sub-index, length in bits
    std::string Source_Value;  // as it stands in the file
    std::string Check_Value;   // what the drive answered to the write
    std::string Result;        // "", "True", "False", "Invalid"
    std::string name_ch;
    std::string name_en;
    bool red = false;
    std::uint32_t refusal = 0;  // the drive's code with a "False"; 0 when none came
    bool operator==(const SourceRow&) const = default;
};

struct DriverRow {
    std::string Index;
    std::string Driver_Value;  // decimal
    std::string Result;        // "", "True", "False"
    std::string name_ch;
    std::string name_en;
    std::uint32_t refusal = 0;
    bool operator==(const DriverRow&) const = default;
};

// The wire key of a row: its first six digits and the size of its last two. Nothing when these name
// no size, or the text is not eight hexadecimal digits: a digit too many would name another object.
std::optional<dictionary::WireKey> row_key(std::string_view Index);

// Size code of the decoder for a row, unsigned; 0 when its last two digits name no size.
int row_size(std::string_view Index);

// A source value as it goes out: "0x" as the prefix of a hexadecimal number, 2147483648 and more
// taken down by 4294967296, rounded to an integer. Nothing for a number beyond 32 bits.
std::optional<std::int32_t> source_number(std::string_view Source_Value);

// Rows beyond this are not loaded: no drive has as many objects, and a file of them is none.
inline constexpr std::size_t kMostRows = 100'000;

// Loading ends at the first line that cannot be split into its fields. Such a line of a `.cdi` is
// kept as an invalid row, so that the user sees where the file breaks off.
std::vector<SourceRow> read_cdi(std::string_view bytes, const dictionary::Store& dictionary);
std::vector<DriverRow> read_cdo(std::string_view bytes, const dictionary::Store& dictionary);

// The line, from 1, at which a file breaks off: it has fewer fields than a record, or more rows
// than are loaded stand before it. Nothing of it and behind it is loaded but, of a `.cdi`, the row
// that shows it. Blank lines at the end of a file are no loss.
inline constexpr std::size_t kCdiFields = 3;
inline constexpr std::size_t kCdoFields = 1;
std::optional<std::size_t> broken_line(std::string_view bytes, std::size_t loaded,
                                       std::size_t fields);

// The template that asks for what a file names: its valid rows with a key, each object once.
std::vector<DriverRow> template_of(const std::vector<SourceRow>& rows);

// Every row, in the order of the grid.
std::string write_cdi(const std::vector<DriverRow>& rows);

}  // namespace servo::tools
