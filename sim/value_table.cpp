#include "sim/value_table.h"

#include <fmt/format.h>

#include "base/file.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

enum Column : std::size_t { kKey, kDefault, kMin, kMax, kFlags, kColumns };

bool read_limit(std::string_view text, std::optional<std::int64_t>& limit) {
    if (text.empty()) return true;
    limit = parse_integer(text);
    return limit.has_value();
}

bool read_flags(std::string_view text, ValueFlags& flags) {
    for (const char letter : text) {
        if (letter == 'r') {
            flags.read_only = true;
        } else if (letter == 'w') {
            flags.write_only = true;
        } else if (letter == 's') {
            flags.stored = true;
        } else if (letter == 'c') {
            flags.computed = true;
        } else {
            return false;
        }
    }
    return !(flags.read_only && flags.write_only);
}

// What is wrong with the line, nothing when it is good.
std::string_view read_line(std::string_view text, ValueLine& line) {
    const auto cells = split(text, '\t');
    if (cells.size() > kColumns) return "too many columns";
    const auto cell = [&](Column column) {
        return column < cells.size() ? trim(cells[column]) : std::string_view{};
    };
    const auto object = parse_identity(cell(kKey));
    if (!object) return "the key is not six hexadecimal digits";
    line.object = *object;
    line.factory = cell(kDefault);
    if (!read_limit(cell(kMin), line.min)) return "the minimum is no number";
    if (!read_limit(cell(kMax), line.max)) return "the maximum is no number";
    if (line.min && line.max && *line.min > *line.max) return "the minimum is above the maximum";
    if (!read_flags(cell(kFlags), line.flags)) return "wrong flags";
    return {};
}

}  // namespace

ValueTable parse_value_table(std::string_view text) {
    ValueTable table;
    base::LineReader reader(text);
    bool first = true;
    for (int number = 1; const auto row = reader.next(); ++number) {
        if (trim(*row).empty() || row->front() == '#') continue;
        const bool header = first && !parse_identity(trim(row->substr(0, row->find('\t'))));
        first = false;
        if (header) continue;
        ValueLine line;
        const std::string_view wrong = read_line(*row, line);
        if (wrong.empty()) {
            table.lines.push_back(std::move(line));
        } else {
            table.complaints.push_back(fmt::format("line {}: {}", number, wrong));
        }
    }
    return table;
}

}  // namespace servo::sim
