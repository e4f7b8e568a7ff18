#include "tools/position_table_entry.h"

#include <cmath>
#include <cstddef>

#include "base/number.h"
#include "params/page_editor.h"
#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr EntryLimits kDelayLimits{0, 65535};
constexpr EntryLimits kIndexLimits{0, 7};

constexpr bool is_letter_or_digit(char32_t key) {
    return (key >= U'0' && key <= U'9') || (key >= U'A' && key <= U'Z') ||
           (key >= U'a' && key <= U'z');
}

}  // namespace

StepEditor step_editor(int column) {
    if (column == step_column::kMode || column == step_column::kStartCond)
        return StepEditor::kCombo;
    const bool text = (column >= step_column::kPos && column <= step_column::kDecIdx) ||
                      column == step_column::kLoops;
    return text ? StepEditor::kText : StepEditor::kNone;
}

std::optional<EntryLimits> step_limits(int column) {
    if (column == step_column::kPos || column == step_column::kSpeed) return kWideLimits;
    if (column == step_column::kDelay) return kDelayLimits;
    if (column == step_column::kAccIdx || column == step_column::kDecIdx) return kIndexLimits;
    return std::nullopt;
}

EntryLimits register_limits(int column) {
    const RegisterField& field = kRegisterFields.at(static_cast<std::size_t>(column));
    return {0, static_cast<double>(field.highest)};
}

bool position_key_passes(char32_t key, std::string_view text) {
    if (key == U'.') return text.find('.') == std::string_view::npos;
    return is_letter_or_digit(key) || key == params::kKeyBackspace || key == U'-';
}

bool entry_allowed(std::string_view text, const std::optional<EntryLimits>& limits) {
    if (text.empty()) return false;
    if (!limits) return true;
    const double value = base::leading_number(text);
    return value >= limits->lowest && value <= limits->highest;
}

}  // namespace servo::tools
