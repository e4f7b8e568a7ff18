// The request language of `servoctl formula`: one request a line, one answer a line. Needs no drive
// and no data.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "link/drive_values.h"

namespace servo::cli {

// Fields are separated by a tab. In a field `\n` stands for a line feed, `\\` for a backslash and
// `\xHH` for a byte; answers write line feeds, backslashes and bytes outside 0x20 to 0x7E the same
// way. Bytes beyond ASCII are those of UTF-8, in the unit `ASCII` those of the code page.
class FormulaBatch {
  public:
    // The answer to a line without its line feed, likewise without one. "bad request" for a line
    // that cannot be read; "error" where a failure goes to the caller.
    std::string answer(std::string_view line);

  private:
    using Fields = std::vector<std::string>;

    struct Request;
    static const std::vector<Request>& requests();

    std::string operand(const Fields& fields);
    std::string eval(const Fields& fields);
    std::string split(const Fields& fields);
    std::string text(const Fields& fields);
    std::string unit(const Fields& fields);
    std::string value(const Fields& fields);
    std::string hex(const Fields& fields);
    std::string payload(const Fields& fields);
    std::string frame(const Fields& fields);
    std::string reply(const Fields& fields);

    link::FormulaOperands operands_;  // hold for the lines that follow
};

}  // namespace servo::cli
