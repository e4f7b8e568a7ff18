#include "tools/position_table_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "base/file.h"
#include "tools/position_table_entry.h"
#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

using Cells = std::vector<std::string>;

constexpr char kTab = '\t';
constexpr std::array kFileColumns{step_column::kIdx,    step_column::kPos,    step_column::kSpeed,
                                  step_column::kDelay,  step_column::kAccIdx, step_column::kDecIdx,
                                  step_column::kCtlReg, step_column::kLoops,  step_column::kRest};
constexpr std::size_t kLongestRegister = 4;

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

Cells split(std::string_view line) {
    Cells cells;
    for (std::size_t from = 0; from <= line.size();) {
        const std::size_t tab = std::min(line.find(kTab, from), line.size());
        cells.emplace_back(trimmed(line.substr(from, tab - from)));
        from = tab + 1;
    }
    return cells;
}

bool is_number(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text != "." && std::ranges::count(text, '.') <= 1 &&
           std::ranges::all_of(text, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
}

bool is_register(std::string_view text) {
    return !text.empty() && text.size() <= kLongestRegister &&
           text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

bool good_cell(int column, std::string_view text) {
    if (column == step_column::kCtlReg) return is_register(text);
    return is_number(text) && entry_allowed(text, step_limits(column));
}

// The cells in the grid's columns, those that are not taken over left empty; nothing for another
// number of cells.
Cells in_columns(Cells cells) {
    if (cells.size() == kFileColumns.size()) {
        Cells all(static_cast<std::size_t>(step_column::kCount));
        for (std::size_t i = 0; i < kFileColumns.size(); ++i)
            all[static_cast<std::size_t>(kFileColumns[i])] = std::move(cells[i]);
        return all;
    }
    return cells.size() == static_cast<std::size_t>(step_column::kCount) ? cells : Cells{};
}

bool is_heading(const Cells& cells) {
    return !cells.empty() && !cells.front().empty() && !is_number(cells.front());
}

}  // namespace

std::string copy_rows(const StepGrid& steps, int first_row, int last_row) {
    std::string text;
    for (int row = std::max(1, first_row); row <= std::min(last_row, kPositionSteps); ++row) {
        for (int column = 0; column < StepGrid::kColumns; ++column) {
            if (column != 0) text += kTab;
            text += steps.at(row, column);
        }
        text += '\n';
    }
    return text;
}

PasteResult paste_rows(StepGrid& steps, int row, std::string_view text, const ListItems& combo2) {
    PasteResult result;
    StepGrid changed = steps;
    base::LineReader lines(text);
    int at = row;
    for (int line = 1; const auto next = lines.next(); ++line) {
        if (trimmed(*next).empty()) continue;
        const Cells cells = in_columns(split(*next));
        if (line == 1 && is_heading(cells)) continue;
        result.bad_line = line;
        if (cells.empty()) return result;
        if (at > kPositionSteps) {
            result.too_many = true;
            return result;
        }
        for (int column = step_column::kPos; column < step_column::kCount; ++column) {
            const std::string& cell = cells[static_cast<std::size_t>(column)];
            result.bad_column = column;
            if (!good_cell(column, cell)) return result;
            changed.at(at, column) = cell;
        }
        result.bad_column = 0;
        set_register_texts(changed, at, register_of_text(changed.at(at, step_column::kCtlReg)),
                           combo2);
        ++at;
    }
    result.bad_line = 0;
    result.rows = at - row;
    steps = std::move(changed);
    return result;
}

std::string paste_text(const PasteResult& result, const StepGrid& steps, base::Language language) {
    const auto say = [&](base::Text text, const std::string& what) {
        return fmt::format(fmt::runtime(text.in(language)), result.bad_line, what);
    };
    if (result.too_many)
        return say({"第 {} 行超出位置表的末尾，未粘贴。",
                    "Line {} reaches beyond the end of the table; nothing was pasted."},
                   {});
    if (result.bad_column != 0)
        return say({"第 {} 行的“{}”不正确，未粘贴。",
                    "Line {}: \"{}\" can't be taken; nothing was pasted."},
                   steps.at(0, result.bad_column));
    if (result.bad_line != 0)
        return say({"第 {} 行不是位置表的一行（应有 11 或 9 个以制表符分隔的单元格），未粘贴。",
                    "Line {} is no row of the table (11 or 9 cells separated by tabs); nothing was "
                    "pasted."},
                   {});
    if (result.rows == 0)
        return std::string(
            base::Text{"剪贴板中没有可粘贴的行。", "There is no row to paste."}.in(language));
    return {};
}

bool fill_down(StepGrid& steps, int first_row, int last_row, int column, const ListItems& combo2) {
    if (!StepGrid::holds(first_row, column) || !StepGrid::holds(last_row, column)) return false;
    if (first_row < 1 || first_row >= last_row || column == step_column::kIdx) return false;
    const bool mode = column == step_column::kMode;
    const bool start = column == step_column::kStartCond;
    const RegisterValues from =
        decode_register(register_of_text(steps.at(first_row, step_column::kCtlReg)));
    for (int row = first_row + 1; row <= last_row; ++row) {
        if (!mode && !start) {
            steps.at(row, column) = steps.at(first_row, column);
        } else {
            RegisterValues fields =
                decode_register(register_of_text(steps.at(row, step_column::kCtlReg)));
            const auto field =
                static_cast<std::size_t>(mode ? register_field::kMode : register_field::kStartCond);
            fields[field] = from[field];
            steps.at(row, step_column::kCtlReg) = register_text(compose_register(fields));
        }
        set_register_texts(steps, row, register_of_text(steps.at(row, step_column::kCtlReg)),
                           combo2);
    }
    return true;
}

}  // namespace servo::tools
