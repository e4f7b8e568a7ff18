// The formula language: how a raw number of the drive is shown in a unit, and how what the user
// types becomes a raw number again.
//
// A formula list holds lines separated by LF, each a bracket head and an expression:
//   [DEC rpm]N*1875/512/[64100320]      raw value to rpm
//   [rpm DEC]N/1875*512*[64100320]      rpm to raw value
// Values are pasted into the expression as text before it is read, so the surroundings of a pasted
// number count. Texts are UTF-8. Nothing is kept between calls.
//
// Results without a value are failures that go to the caller (see eval_expression): whoever called
// ends its action there and leaves its state as it stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "link/drive_values.h"
#include "params/expression.h"

namespace servo::params {

// Shown where a value cannot be told.
inline constexpr std::string_view kUnknownText = "?????";

// `text_to_value` of an entry that is too long: above the range of every write.
inline constexpr double kTooLong = 4294967296.0;

// One line taken apart, cut at 20 and 64 characters. Blanks at the right end are padding in the
// fields that this fills, so they are left out here.
struct FormulaHead {
    std::string unit;     // target of the line: the word that follows the first blank of its head
    std::string formula;  // all that follows the head
};

// A line without a head, or with nothing before its "]", is raw decimal: `DEC`, "N*1".
FormulaHead split_formula(std::string_view line);

// The first line of a formula list, which names the unit that a row starts with.
std::string_view first_line(std::string_view list);

// `DEC`, `INC`, `inc`: three names for the raw decimal number.
bool is_decimal_unit(std::string_view unit);

// Text of a raw value. `size_code` is the decoder's (1, 2, 4, 11, 12, 14); only its last digit
// counts, and only in `HEX` and `ASCII`, which give the empty text for any other. A unit that no
// line gives is the empty text too; an unseen [30400710] gives "?????".
std::optional<std::string> value_to_text(double value, std::string_view unit, std::string_view list,
                                         int size_code, const link::FormulaOperands& operands);

// The number of a raw value in a unit, unrounded; whole numbers in `DEC`, `INC`, `inc`, `HEX`; 0
// for a unit that no line gives. `size_code` is taken for the sake of one shape of call; nothing
// here depends on it.
std::optional<double> value_to_unit(double value, std::string_view unit, std::string_view list,
                                    int size_code, const link::FormulaOperands& operands);

// The raw value of a typed text. Empty counts as "0"; more than 10 characters give kTooLong; a unit
// without a line back gives 0.
std::optional<double> text_to_value(std::string_view typed, std::string_view unit,
                                    std::string_view list, const link::FormulaOperands& operands);

// The `ASCII` unit in bytes of the code page, lowest byte of the value first: what value_to_text
// and text_to_value do between this and UTF-8.
std::string ascii_bytes(double value, int size_code);
double ascii_value(std::string_view bytes);

// Expression of the line that turns a raw value into `unit`, as value_to_unit chooses it; no value
// when no line gives the unit.
std::optional<std::string_view> unit_expression(std::string_view unit, std::string_view list);

// The number of an expression with `value` for every capital N and the operands for their
// references.
std::optional<double> eval_with_value(std::string_view expression, double value,
                                      const link::FormulaOperands& operands);

// Replaces the five references by their cached numbers, in the order in which they are told.
void paste_operands(std::string& expression, const link::FormulaOperands& operands);

}  // namespace servo::params
