// What may be typed into the boxes that lie over the cells: keys, limits.
#pragma once

#include <optional>
#include <string_view>

namespace servo::tools {

struct EntryLimits {
    double lowest = 0;
    double highest = 0;
};

// One more than 32 bits hold at the upper end, as the form has it; see the writing of a cell.
inline constexpr EntryLimits kWideLimits{-2147483648.0, 2147483648.0};

enum class StepEditor {
    kNone,   // the cell cannot be edited in place
    kCombo,  // `Combo1` or `Combo2`
    kText,   // `Text2`
};
StepEditor step_editor(int column);

// Of `Text2`, columns 3 to 7 and 9; nothing where there is no limit.
std::optional<EntryLimits> step_limits(int column);
// Of `Text3`: the field of that column.
EntryLimits register_limits(int column);

// The keys that pass: digits, letters, backspace, "-", and "." while the text holds none. Enter and
// Escape are not asked here.
bool position_key_passes(char32_t key, std::string_view text);

// Whether an entry may go into the cell. The number at its start counts. An empty box is a wrong
// entry: a wrong one empties the box, and Enter on that must not turn a target into 0.
bool entry_allowed(std::string_view text, const std::optional<EntryLimits>& limits);

}  // namespace servo::tools
