// The dry run of a write: what the rows of a file would change in the drive, and what about them is
// doubtful. Nothing is written; the drive's values have been read before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dictionary/store.h"
#include "link/drive_values.h"
#include "tools/configuration_compare.h"
#include "tools/configuration_rows.h"

namespace servo::tools {

// What a row deserves a look for.
enum class RowWarning : std::uint8_t {
    kInvalid,        // passed over: the file does not say that the value is true
    kNoKey,          // not eight digits with a length: not sent, counts as a failure
    kNoNumber,       // the value does not begin with a number: 0 is sent
    kLeftOver,       // the value has more behind its number: that is dropped
    kRounded,        // a fraction: the nearest whole number is sent
    kTooLarge,       // more than 32 bits: not sent, counts as a failure
    kWrapped,        // 4294967296 and more: what is beyond 32 bits is dropped
    kSignExtended,   // "0x8000" to "0xFFFF" for 32 bits: goes out with its upper half all ones
    kTooWide,        // does not fit the object's length: the drive decides
    kUnknownObject,  // the dictionary does not know the object
    kOtherLength,    // the dictionary has the object with another length
    kReadOnly,       // the dictionary says that it cannot be written
    kCommand,        // a write does something at once: it stores, resets, restarts
    kAgain,          // the file names the object in an earlier row too
    kNotRead,        // the drive's value could not be read
};

struct CheckedRow {
    std::size_t row = 0;   // of the source grid, from 0
    ComparedRow values;    // A: the drive now, B: what the row would leave there
    std::string goes_out;  // decimal, as it is sent; empty when nothing is
    bool changes = false;
    std::vector<RowWarning> warnings;
};

struct DryRun {
    std::vector<CheckedRow> rows;  // those that change something or carry a warning
    std::size_t writes = 0;        // rows that would be sent
    std::size_t changes = 0;       // of these, those that change the drive
    std::size_t warned = 0;        // rows with a warning
};

// What is wrong with one row, the drive left aside.
std::vector<RowWarning> row_warnings(const SourceRow& row, const dictionary::Store& dictionary);

// `survey`: what the drive holds, as read by the template of the same rows.
DryRun dry_run(const std::vector<SourceRow>& source, const std::vector<DriverRow>& survey,
               const dictionary::Store& dictionary, const link::FormulaOperands& operands);

base::Text warning_text(RowWarning warning);

}  // namespace servo::tools
