// The words of a walkthrough's line.
#pragma once

#include <optional>
#include <string_view>

#include "app/walk_script.h"

namespace servo::app {

// Blanks, tabs and line breaks at both ends do not count.
std::string_view trimmed(std::string_view text);

// Takes words off the front of a line. Views into the line.
class WalkWords {
  public:
    explicit WalkWords(std::string_view line) : rest_(trimmed(line)) {}

    bool at_end() const { return rest_.empty(); }

    // Up to the next blank; empty at the end.
    std::string_view next();

    // The same, but blanks inside of "[" and "]" belong to the word.
    std::string_view next_target();

    // All that is left.
    std::string_view rest() const { return rest_; }

  private:
    std::string_view take(std::size_t length);

    std::string_view rest_;
};

// Decimal, with an optional sign, all of the text.
std::optional<int> whole_number(std::string_view text);

std::optional<WalkTarget> parse_target(std::string_view text);

// The arguments of a line without a comment behind them. A "#" after a blank begins one; where a
// text runs to the end of the line it must stand alone ("# why"), so that a text may hold "#5".
std::string_view without_comment(std::string_view arguments, bool takes_text);

}  // namespace servo::app
