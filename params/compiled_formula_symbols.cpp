#include "params/compiled_formula_symbols.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/number.h"
#include "params/expression_arithmetic.h"
#include "params/formula.h"

namespace servo::params {

namespace {

// Stands for the digits of the sample; no formula text holds it.
constexpr char kDigits = '\x01';

// Longer lines, and lines of more operations, are left to the text evaluator. Pasted, such a text
// stays far below what its counters can count.
constexpr std::size_t kLongestText = 4096;
constexpr std::size_t kMostNodes = 64;
constexpr std::size_t kMostDigits = 16;

// Below this no rounding error of the bound itself can hide an overflow.
constexpr double kSafeBound = 1e300;
constexpr double kSafeLeast = 1e-290;

bool has_digits(std::string_view text) {
    return text.find(kDigits) != std::string_view::npos;
}

// True when the scanner would read just the pasted digits: blanks before them, and behind them
// nothing but blanks and an operator that ends the term.
bool is_just_digits(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos || text[first] != kDigits) return false;
    std::string_view behind = text.substr(first + 1);
    behind.remove_prefix(std::min(behind.find_first_not_of(' '), behind.size()));
    return behind.empty() || behind == "*" || behind == "/" || behind == "^";
}

// The text with the placeholder for every N; no value when it is one for the text evaluator.
std::optional<std::string> with_placeholder(std::string_view expression, SampleSign sign,
                                            const link::FormulaOperands& operands) {
    constexpr std::string_view kOwn = "\x01\x80";
    if (expression.find_first_of(kOwn) != std::string_view::npos) return std::nullopt;
    std::string text;
    std::size_t samples = 0;
    for (const char c : expression) {
        if (c != 'N') {
            text += c;
            continue;
        }
        if (sign == SampleSign::kNegative) text += '-';
        text += kDigits;
        ++samples;
    }
    // Digits that complete a reference share their operand with its bracket, and are refused there.
    paste_operands(text, operands);
    if (text.size() + samples * kMostDigits > kLongestText) return std::nullopt;
    return text;
}

class SymbolMachine {
  public:
    using Value = Symbol;

    explicit SymbolMachine(SampleSign sign) : sign_(sign), nodes_(1) {}

    std::vector<Node> take_nodes() { return std::move(nodes_); }

    static Symbol zero() { return {}; }

    Did number(std::string_view text, Symbol& value) const {
        if (has_digits(text)) {
            if (!is_just_digits(text)) return Did::kRefused;
            value.node = sign_ == SampleSign::kNegative ? Symbol::kMagnitude : 0;
            return Did::kDone;
        }
        value = {Symbol::kKnown, base::leading_number(text)};
        return is_number(value.constant) ? Did::kDone : Did::kFailed;
    }

    static Did factorial(std::string_view text, Symbol& value) {
        if (has_digits(text)) return Did::kRefused;
        value = {};
        return factorial_of(base::leading_number(text), value.constant) ? Did::kDone : Did::kFailed;
    }

    static Did level_name(std::string_view behind_marker, std::size_t& level) {
        if (has_digits(behind_marker)) return Did::kRefused;
        level = level_named(behind_marker);
        return Did::kDone;
    }

    Did function(Function wanted, Symbol& value) {
        if (value.is_known()) {
            return function_of(wanted, value.constant, value.constant) ? Did::kDone : Did::kFailed;
        }
        Node node;
        node.kind = NodeKind::kFunction;
        node.function = wanted;
        node.left = value;
        node.least = 0;
        node.signed_zero = true;
        const double most = wanted == Function::kTan ? std::numeric_limits<double>::max() : 2;
        node.bound = std::max(bound_of(value), most);
        node.checked = true;
        return append(node, value);
    }

    Did logarithm(Logarithm wanted, Symbol& value) {
        if (value.is_known()) {
            return logarithm_of(wanted, value.constant, value.constant) ? Did::kDone : Did::kFailed;
        }
        Node node;
        node.kind = NodeKind::kLogarithm;
        node.logarithm = wanted;
        node.left = value;
        node.least = 0;
        node.signed_zero = true;
        node.bound = 1000;  // the logarithms of the largest and smallest numbers lie within 750
        node.checked = true;
        return append(node, value);
    }

    // The digits of a negative sample always follow their "-", which is at the start of a term.
    Did negate(Symbol& value) {
        if (value.is_known()) {
            value.constant *= -1;
            return Did::kDone;
        }
        if (value.node == Symbol::kMagnitude) {
            value.node = 0;
            return Did::kDone;
        }
        return operate('*', value, {Symbol::kKnown, -1.0}, value);
    }

    Did combine(Symbol& accumulator, char op, const Symbol& value) {
        if (value.is_known() && accumulator.is_known()) {
            const bool good = params::combine(accumulator.constant, op, value.constant);
            return good ? Did::kDone : Did::kFailed;
        }
        if (op == '/' && value.is_known() && value.constant == 0) return Did::kFailed;
        return operate(op, accumulator, value, accumulator);
    }

    // An empty term changes nothing, since a sum is never a zero with a sign.
    Did add(Symbol& sum, const Symbol& term) {
        if (term.is_known() && sum.is_known()) {
            sum.constant += term.constant;
            return is_number(sum.constant) ? Did::kDone : Did::kFailed;
        }
        if (term.is_known() && term.constant == 0) return Did::kDone;
        if (sum.is_known() && sum.constant == 0 && !may_be_signed_zero(term)) {
            sum = term;
            return Did::kDone;
        }
        return operate('+', sum, term, sum);
    }

  private:
    double bound_of(const Symbol& symbol) const {
        return symbol.is_known() ? std::fabs(symbol.constant)
                                 : nodes_[static_cast<std::size_t>(symbol.node)].bound;
    }

    bool may_be_signed_zero(const Symbol& symbol) const {
        return symbol.node < 0 || nodes_[static_cast<std::size_t>(symbol.node)].signed_zero;
    }

    // What a product with a constant above 0, or a quotient by one, tells of its smallest results.
    // Sums begin at 0 without a sign, so they never become a zero with one.
    void note_zeros(Node& node) const {
        const bool by_constant = (node.op == '*' || node.op == '/') && node.right.is_known() &&
                                 node.right.constant > 0 && !node.left.is_known();
        if (!by_constant) {
            node.least = 0;
            node.signed_zero = node.op != '+';
            return;
        }
        const Node& left = nodes_[static_cast<std::size_t>(node.left.node)];
        node.least =
            node.op == '*' ? left.least * node.right.constant : left.least / node.right.constant;
        node.signed_zero = left.signed_zero || !(node.least > kSafeLeast);
    }

    double bound_of(char op, const Symbol& left, const Symbol& right) const {
        switch (op) {
            case '+':
                return bound_of(left) + bound_of(right);
            case '*':
                return bound_of(left) * bound_of(right);
            case '/':
                if (right.is_known()) return bound_of(left) / bound_of(right);
                return std::numeric_limits<double>::infinity();
            default:
                return std::numeric_limits<double>::infinity();
        }
    }

    Did operate(char op, const Symbol& left, const Symbol& right, Symbol& result) {
        if (left.node == Symbol::kMagnitude || right.node == Symbol::kMagnitude) {
            return Did::kRefused;
        }
        Node node;
        node.kind = NodeKind::kCombine;
        node.op = op;
        node.left = left;
        node.right = right;
        node.bound = bound_of(op, left, right);
        node.checked = !(node.bound < kSafeBound);
        if (node.checked) node.bound = std::numeric_limits<double>::max();
        note_zeros(node);
        return append(node, result);
    }

    Did append(const Node& node, Symbol& result) {
        if (nodes_.size() >= kMostNodes) return Did::kRefused;
        nodes_.push_back(node);
        result = {static_cast<int>(nodes_.size()) - 1, 0};
        return Did::kDone;
    }

    SampleSign sign_;
    std::vector<Node> nodes_;
};

// An operation that nobody uses may still fail, and then the whole expression is 0.
bool has_unused(const SymbolicExpression& symbolic) {
    std::vector<bool> used(symbolic.nodes.size(), false);
    used[0] = true;
    const auto use = [&used](const Symbol& symbol) {
        if (!symbol.is_known()) used[static_cast<std::size_t>(symbol.node)] = true;
    };
    for (const Node& node : symbolic.nodes) {
        use(node.left);
        use(node.right);
    }
    use(symbolic.result);
    return std::find(used.begin(), used.end(), false) != used.end();
}

}  // namespace

SymbolicExpression symbolic_expression(std::string_view expression,
                                       const link::FormulaOperands& operands, SampleSign sign) {
    SymbolicExpression symbolic;
    const auto text = with_placeholder(expression, sign, operands);
    if (!text) return symbolic;
    const auto levels = LevelTexts::strip(*text);
    if (!levels) {
        symbolic.end = WalkEnd::kToCaller;
        return symbolic;
    }
    SymbolMachine machine(sign);
    symbolic.end = ExpressionWalk<SymbolMachine>(*levels, machine).run(symbolic.result);
    symbolic.nodes = machine.take_nodes();
    if (symbolic.end == WalkEnd::kValue && has_unused(symbolic)) symbolic.end = WalkEnd::kRefused;
    return symbolic;
}

}  // namespace servo::params
