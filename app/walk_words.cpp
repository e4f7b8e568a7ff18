#include "app/walk_words.h"

#include <algorithm>
#include <charconv>

namespace servo::app {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool blank(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

// "[ROW,COL]" behind a grid's name.
bool parse_place(std::string_view text, WalkTarget& target) {
    if (!text.starts_with('[') || !text.ends_with(']')) return false;
    text = text.substr(1, text.size() - 2);
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) return false;
    const std::optional<int> row = whole_number(trimmed(text.substr(0, comma)));
    const std::optional<int> column = whole_number(trimmed(text.substr(comma + 1)));
    if (!row || !column || *row < 0 || *column < 0) return false;
    target.row = *row;
    target.column = *column;
    return true;
}

TargetKind kind_of_member(std::string_view word) {
    if (word == "row") return TargetKind::kRow;
    if (word == "enabled") return TargetKind::kEnabled;
    if (word == "visible") return TargetKind::kControlVisible;
    return TargetKind::kText;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view WalkWords::take(std::size_t length) {
    const std::string_view word = rest_.substr(0, length);
    rest_ = trimmed(rest_.substr(length));
    return word;
}

std::string_view WalkWords::next() {
    return take(std::min(rest_.find_first_of(kBlanks), rest_.size()));
}

std::string_view WalkWords::next_target() {
    bool inside = false;
    std::size_t length = 0;
    for (; length < rest_.size(); ++length) {
        if (rest_[length] == '[') inside = true;
        if (rest_[length] == ']') inside = false;
        if (!inside && blank(rest_[length])) break;
    }
    return take(length);
}

std::optional<int> whole_number(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

std::optional<WalkTarget> parse_target(std::string_view text) {
    WalkTarget target;
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == text.size()) return std::nullopt;
    const std::string_view first = text.substr(0, dot);
    const std::string_view second = text.substr(dot + 1);
    if (first == "toolbar" || first == "engine") {
        target.kind = first == "engine" ? TargetKind::kEngine : TargetKind::kToolbar;
        target.control = second;
        return target;
    }
    target.window = first;
    if (second == "caption" || second == "visible") {
        target.kind = second == "caption" ? TargetKind::kCaption : TargetKind::kWindowVisible;
        return target;
    }
    const std::size_t bracket = second.find('[');
    if (bracket != std::string_view::npos) {
        target.kind = TargetKind::kCell;
        target.control = second.substr(0, bracket);
        if (bracket == 0 || !parse_place(second.substr(bracket), target)) return std::nullopt;
        return target;
    }
    const std::size_t member = second.rfind('.');
    if (member == std::string_view::npos) {
        target.control = second;
        return target;
    }
    target.kind = kind_of_member(second.substr(member + 1));
    target.control = second.substr(0, member);
    if (target.kind == TargetKind::kText || target.control.empty()) return std::nullopt;
    return target;
}

std::string_view without_comment(std::string_view arguments, bool takes_text) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] != '#' || (i > 0 && !blank(arguments[i - 1]))) continue;
        if (takes_text && i + 1 < arguments.size() && !blank(arguments[i + 1])) continue;
        return trimmed(arguments.substr(0, i));
    }
    return arguments;
}

}  // namespace servo::app
