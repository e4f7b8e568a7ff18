#include "params/expression_text.h"

#include <algorithm>
#include <array>

namespace servo::params {

namespace {

constexpr std::string_view kSigns = "+-";
constexpr std::string_view kOperators = "*/^";

constexpr std::array<std::string_view, 9> kFunctionNames = {"sin", "cos", "tan", "abs", "atn",
                                                            "int", "fix", "sgn", "sqr"};
constexpr std::array<std::string_view, 2> kLogarithmNames = {"lg", "ln"};

// Index of the name that the operand begins with, directly followed by a marker.
template <std::size_t kCount>
std::optional<std::size_t> name_before_marker(std::string_view operand,
                                              const std::array<std::string_view, kCount>& names) {
    const std::size_t length = names[0].size();
    if (operand.size() <= length || operand[length] != kMarker) return std::nullopt;
    const auto found = std::find(names.begin(), names.end(), operand.substr(0, length));
    if (found == names.end()) return std::nullopt;
    return static_cast<std::size_t>(found - names.begin());
}

}  // namespace

std::optional<LevelTexts> LevelTexts::strip(std::string_view text) {
    if (text.size() > kCounterLimit) return std::nullopt;
    const auto pairs = static_cast<std::size_t>(std::count(text.begin(), text.end(), '('));
    LevelTexts levels;
    if (pairs == 0) {
        levels.plain_ = text;
        return levels;
    }
    levels.outer_ = text;
    levels.inner_.reserve(pairs);
    for (std::size_t i = 1; i <= pairs; ++i) {
        std::string& current = levels.outer_;
        const std::size_t close = current.find(')');
        if (close == std::string::npos) return std::nullopt;
        const std::size_t open = current.rfind('(', close);
        if (open == std::string::npos) return std::nullopt;
        levels.inner_.push_back(current.substr(open + 1, close - open - 1));
        current.replace(open, close - open + 1, kMarker + std::to_string(i));
        // A marker may be longer than the `()` that it stands for.
        if (current.size() > kCounterLimit) return std::nullopt;
    }
    return levels;
}

std::string_view LevelTexts::level(std::size_t index) const {
    if (index > 0) return inner_[index - 1];
    return inner_.empty() ? plain_ : std::string_view(outer_);
}

bool Terms::next(std::string_view& term) {
    if (done_) return false;
    const std::size_t cut = rest_.find_first_of(kSigns, keeps_sign_ ? 1 : 0);
    term = rest_.substr(0, cut);
    if (cut == std::string_view::npos || cut + 1 == rest_.size()) {
        done_ = true;
    } else {
        keeps_sign_ = rest_[cut] == '-';
        rest_.remove_prefix(keeps_sign_ ? cut : cut + 1);
    }
    return true;
}

bool Operands::next(OperandPart& part) {
    if (rest_.empty()) return false;
    const std::size_t cut = rest_.find_first_of(kOperators);
    if (cut == std::string_view::npos || cut + 1 == rest_.size()) {
        part = {rest_, 0};
        rest_ = {};
    } else {
        part = {rest_.substr(0, cut), rest_[cut]};
        rest_.remove_prefix(cut + 1);
    }
    return true;
}

OperandForm operand_form(std::string_view operand) {
    OperandForm form;
    if (operand.starts_with('-')) {
        form.negative = true;
        operand.remove_prefix(1);
    }
    if (const auto function = name_before_marker(operand, kFunctionNames)) {
        form.kind = OperandKind::kFunction;
        form.function = static_cast<Function>(*function);
        form.text = operand.substr(4);
    } else if (const auto logarithm = name_before_marker(operand, kLogarithmNames)) {
        form.kind = OperandKind::kLogarithm;
        form.logarithm = static_cast<Logarithm>(*logarithm);
        form.text = operand.substr(3);
    } else if (operand.starts_with(kMarker)) {
        form.kind = OperandKind::kLevel;
        form.text = operand.substr(1);
    } else {
        form.kind = operand.ends_with('!') ? OperandKind::kFactorial : OperandKind::kNumber;
        form.text = operand;
    }
    return form;
}

std::size_t level_named(std::string_view behind_marker) {
    std::size_t level = 0;
    std::size_t end = 0;
    for (; end < behind_marker.size(); ++end) {
        const char c = behind_marker[end];
        if (c < '0' || c > '9') break;
        level = std::min(level * 10 + static_cast<std::size_t>(c - '0'), kCounterLimit + 1);
    }
    if (end == 0 || level > kCounterLimit) return kNoLevel;
    std::string_view glued = behind_marker.substr(end);
    glued.remove_prefix(std::min(glued.find_first_not_of(' '), glued.size()));
    const bool ends_term = glued.size() == 1 && kOperators.find(glued[0]) != std::string_view::npos;
    return glued.empty() || ends_term ? level : kNoLevel;
}

}  // namespace servo::params
