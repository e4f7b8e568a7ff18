// What a command prints: results on standard output as tables of one line a row, fields separated
// by one tab, or as one JSON value; messages on standard error.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace servo::cli {

struct Output {
    std::function<void(std::string_view)> out;
    std::function<void(std::string_view)> err;

    // A line on standard error.
    void message(std::string_view text) const { err(std::string(text) + "\n"); }
};

// A field: a text, a whole number, a time (printed in seconds with three places), or nothing (an
// empty field, null in JSON).
using Field = std::variant<std::monostate, std::string, std::int64_t, std::chrono::milliseconds>;

// A text as one field of a line: line feeds, tabs and other control characters are written as "\n",
// "\t", "\xHH", so that a row stays a row.
std::string field_text(std::string_view text);

// Prints rows as they come, so that a long watch shows each at once.
class RowPrinter {
  public:
    // `names` are the keys of each row's JSON object.
    RowPrinter(const Output& output, bool json, std::vector<std::string> names)
        : output_(output), json_(json), names_(std::move(names)) {}

    void row(const std::vector<Field>& fields);

    // Ends the JSON list; to be called once, after the last row.
    void finish();

  private:
    void json_row(const std::vector<Field>& fields);

    const Output& output_;
    bool json_;
    std::vector<std::string> names_;
    bool any_ = false;
};

// One record as "field: value" lines, or one JSON object.
void print_record(const Output& output, bool json,
                  const std::vector<std::pair<std::string, Field>>& fields);

}  // namespace servo::cli
