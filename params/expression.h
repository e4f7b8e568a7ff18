// The evaluator of plain text under all formulas. There is no tokenizer: everything is found by
// searching characters, and stored formula texts were written against what follows from that.
#pragma once

#include <optional>
#include <string_view>

namespace servo::params {

// The number of an expression of numbers, + - * / ^, a postfix !, parentheses and functions.
//
// `*`, `/` and `^` have one precedence, strictly from left to right; "+" and "-" cut the text
// wherever they stand. An arithmetic failure (division by zero, overflow, invalid power, logarithm
// of zero or less, root of a negative number) gives 0. No value: the text is malformed in a way
// that shows before the first operand has been read (more "(" than ")", `lg()` or `ln()` of
// nothing, more than 32767 characters), and the failure goes to the caller.
std::optional<double> eval_expression(std::string_view text);

}  // namespace servo::params
