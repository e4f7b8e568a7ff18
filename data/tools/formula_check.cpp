#include "data/tools/formula_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "base/gbk.h"

namespace servo::data {

namespace {

constexpr std::size_t kFormulaBytes = 200;
constexpr std::size_t kUnitCharacters = 20;
constexpr std::size_t kExpressionCharacters = 64;

constexpr std::array<std::string_view, 5> kFormats{"DEC", "INC", "inc", "HEX", "ASCII"};
constexpr std::array<std::string_view, 5> kOperands{"[64100320]", "[65100310]", "[30400710]",
                                                    "[60F61310]", "[60F61110]"};

bool is_format(std::string_view word) {
    return std::ranges::find(kFormats, word) != kFormats.end();
}

struct Line {
    std::string_view text;
    std::string_view source;  // empty for a head of one word
    std::string_view target;
    std::string_view expression;
};

std::vector<std::string_view> split_lines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

std::optional<Line> read_line(std::string_view text) {
    const std::size_t close = text.find(']');
    if (!text.starts_with('[') || close == std::string_view::npos) return std::nullopt;
    Line line{text, {}, {}, text.substr(close + 1)};
    const std::string_view head = text.substr(1, close - 1);
    const std::size_t blank = head.find(' ');
    if (blank == std::string_view::npos) {
        line.target = head;
    } else {
        line.source = head.substr(0, blank);
        line.target = head.substr(blank + 1);
        if (line.source.empty()) return std::nullopt;
    }
    const bool good = !line.target.empty() && line.target.find(' ') == std::string_view::npos;
    return good ? std::optional(line) : std::nullopt;
}

// A positive decimal number or an operand at the start of `text`; its length, 0 when neither.
std::size_t factor_length(std::string_view text) {
    for (const std::string_view operand : kOperands) {
        if (text.starts_with(operand)) return operand.size();
    }
    std::size_t at = 0;
    int points = 0;
    bool not_zero = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '.') {
            if (++points > 1) return 0;
        } else if (c >= '0' && c <= '9') {
            not_zero = not_zero || c != '0';
        } else {
            break;
        }
    }
    return not_zero ? at : 0;
}

// "N" and then any number of factors and divisors.
bool is_plain_product(std::string_view text) {
    if (!text.starts_with('N')) return false;
    text.remove_prefix(1);
    while (!text.empty()) {
        if (text.front() != '*' && text.front() != '/') return false;
        text.remove_prefix(1);
        const std::size_t length = factor_length(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::optional<std::string> line_problem(const Line& line) {
    const bool free_source = !line.source.empty() && line.source != "DEC";
    const std::string_view free_word = free_source ? line.source : line.target;
    if (base::utf8_length(free_word) > kUnitCharacters) return "unit of more than 20 characters";
    if (line.expression.size() > kExpressionCharacters)
        return "more than 64 characters behind head";
    if (!is_plain_product(line.expression)) {
        return fmt::format("\"{}\" is not N with factors and divisors", line.expression);
    }
    if (line.source.empty()) {
        if (!is_format(line.target)) return fmt::format("[{}] names no format", line.target);
        if (line.expression != "N*1") return fmt::format("[{}] must be N*1", line.target);
        return std::nullopt;
    }
    if ((line.source == "DEC") == (line.target == "DEC") || is_format(free_word)) {
        return fmt::format("[{} {}] does not join DEC and a unit", line.source, line.target);
    }
    return std::nullopt;
}

// The line that a search for `piece` comes to first.
const Line* found_line(const std::vector<Line>& lines, const std::string& piece) {
    const auto found = std::ranges::find_if(
        lines, [&](const Line& line) { return line.text.find(piece) != std::string_view::npos; });
    return found == lines.end() ? nullptr : &*found;
}

std::optional<std::string> unit_problem(const std::vector<Line>& lines, const Line& line,
                                        bool writable) {
    if (line.source.empty()) return std::nullopt;
    const bool forward = line.source == "DEC";
    const std::string unit(forward ? line.target : line.source);
    const Line* const shows = found_line(lines, unit + "]");
    const Line* const reads = found_line(lines, "[" + unit);
    if (forward && shows != &line) {
        return fmt::format("another line is found for showing {}", unit);
    }
    if (!forward && reads != &line) {
        return fmt::format("another line is found for entering {}", unit);
    }
    const std::string other =
        forward ? fmt::format("[{} DEC]", unit) : fmt::format("[DEC {}]", unit);
    if ((writable || !forward) && found_line(lines, other) == nullptr) {
        return fmt::format("no line {}", other);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> formula_problem(std::string_view formula, bool writable) {
    if (base::utf8_to_gbk(formula).size() > kFormulaBytes) return "more than 200 bytes";
    std::vector<Line> lines;
    for (const std::string_view text : split_lines(formula)) {
        const auto line = read_line(text);
        if (!line) return fmt::format("\"{}\" has no head", text);
        if (auto problem = line_problem(*line)) return problem;
        lines.push_back(*line);
    }
    bool raw_offered = false;
    for (const Line& line : lines) {
        if (auto problem = unit_problem(lines, line, writable)) return problem;
        raw_offered = raw_offered || line.target == "DEC";
    }
    if (!raw_offered) return "no line offers DEC";
    return std::nullopt;
}

std::string first_unit(std::string_view formula) {
    const auto line = read_line(formula.substr(0, formula.find('\n')));
    return line ? std::string(line->target) : "DEC";
}

}  // namespace servo::data
