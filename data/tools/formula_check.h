// What a formula of the dictionary must be, so that the evaluator does with it what its author
// meant.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace servo::data {

// What is wrong with the formula, or nothing.
//
// The evaluator works from left to right and cuts its text at every sign, wherever it stands, and
// the searches for a unit's line look for pieces of text. So only a narrow form is allowed, in
// which nothing can be misread: "N", then factors and divisors that are positive numbers or one of
// the five operands; heads "[UNIT]" for a format word, "[DEC UNIT]" and "[UNIT DEC]"; no unit whose
// line could be found in place of another's. An object that can be written needs both directions.
std::optional<std::string> formula_problem(std::string_view formula, bool writable);

// The unit in which a page starts to show the object: that of the first line.
std::string first_unit(std::string_view formula);

}  // namespace servo::data
