// `.scope` files: a recording as text, with the constants that its unit formulas need.
//
//   1,500                                   Text1, Text3: period multiple, number of samples
//   10000,150,0,0,0                         the five operands of the formulas
//   Effective target velocity,6354702       channels 1 to 4: object name, key; or
//   NULL,0                                  for a channel that is not recorded
//   NULL,0
//   NULL,0
//   103,0,0,0                               one line for each sample: raw values of the channels
//
// Lines end in CR LF, numbers are decimal, texts are in the code page of the data files. There is
// no header and no version, so that files of all ages are read by the same rules.
#pragma once

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

// The bytes of an export of what `data` holds; names are those of the language. Trims the names in
// the entries as a side effect that is told of the command: they are filled with blanks behind
// their last character. Nothing when Text3 asks for more samples than there are.
//
// There are as many sample lines as the whole part of the number in Text3, none for a negative one.
// A recorded channel without an object (the dictionary does not know it) writes "NULL,0" like one
// that is not recorded, since nobody could tell what its column means. Line breaks in texts, and
// commas in Text1 and Text3, become blanks: an item is one line, the first line has two fields.
std::optional<std::string> scope_text(ScopeData& data, const link::FormulaOperands& operands,
                                      base::Language language);

// The told command behind the dialog: cleans the name, says nothing and writes nothing for a name
// that ends in "xls", or for none.
enum class Exported : std::uint8_t {
    kWritten,
    kNothing,
    kFailed,  // could not be written, or too many samples; a file of before stands as it was
};
Exported export_scope(const std::filesystem::path& file, ScopeData& data,
                      const link::FormulaOperands& operands, base::Language language);

// Characters 0, CR and LF become blanks.
std::string clean_file_name(std::string_view name);
// One of the names that nothing is written under.
bool ends_in_xls(std::string_view name);

enum class Imported : std::uint8_t {
    kDone,        // the mode switch comes next
    kRefused,     // the first line is none: nothing was changed
    kBroken,      // a failure on the way: what was read up to there stays
    kUnreadable,  // no such file
};

// Fills texts, operands, channels and arrays from the text of a file.
//
// After kDone the caller switches to import mode, sets rowBytes, sampleCount (the number in Text3,
// which is any text and need not be the number of sample lines) and rawLength, and has Movingdata
// walk the arrays. After anything else it stays in the mode that it was in.
//
// - The operands of a file that was read to its end count as seen, so that every formula can be
//   computed with them, and until the caller clears the flags. Those of a broken file do not: a
//   drive that is connected has to tell its own again.
// - An object that the dictionary does not know leaves its channel unticked with the empty choice;
//   its column stays in the arrays.
// - The key of a channel line is its last field, so a name may hold commas.
// - The first two lines may be empty and then change nothing. An empty line further on has too few
//   fields; only at the end of the file, where editors leave them, such lines are passed over.
Imported read_scope(std::string_view text, ScopeData& data, link::FormulaOperands& operands,
                    const dictionary::Store& dictionary, base::Language language);
Imported import_scope(const std::filesystem::path& file, ScopeData& data,
                      link::FormulaOperands& operands, const dictionary::Store& dictionary,
                      base::Language language);

}  // namespace servo::scope
