// `.scope` files: a recording as text, with the constants that its unit formulas need.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "scope/scope_data.h"

namespace servo::scope {

// The bytes of an export of what `data` holds. Trims the names in the entries as a side effect that
// is told of the command.
std::string scope_text(ScopeData& data, const link::FormulaOperands& operands);

// The told command behind the dialog: cleans the name, says nothing and writes nothing for a name
// that ends in "xls". False when the file could not be written.
enum class Exported : std::uint8_t { kWritten, kNothing, kFailed };
Exported export_scope(const std::filesystem::path& file, ScopeData& data,
                      const link::FormulaOperands& operands);
std::string clean_file_name(std::string_view name);

enum class Imported : std::uint8_t {
    kDone,        // the mode switch comes next
    kRefused,     // the first line is none: nothing was changed
    kBroken,      // a failure on the way: what was read up to there stays
    kUnreadable,  // no such file
};

// Fills texts, operands, channels and arrays from the text of a file.
Imported read_scope(std::string_view text, ScopeData& data, link::FormulaOperands& operands,
                    const dictionary::Store& dictionary, base::Language language);
Imported import_scope(const std::filesystem::path& file, ScopeData& data,
                      link::FormulaOperands& operands, const dictionary::Store& dictionary,
                      base::Language language);

}  // namespace servo::scope
