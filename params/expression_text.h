// The passes over an expression that only look at its text. The evaluator and the compiler of
// formulas both stand on them, so there is one reading of every odd text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace servo::params {

// Stands in a text for a parenthesis that was taken out; the number of its level follows in
// decimal.
inline constexpr char kMarker = '\x80';

// Counters of characters, parentheses and signs are 16 bits wide.
inline constexpr std::size_t kCounterLimit = 32767;

// The text of each parenthesis, innermost first as 1, 2, ..., and what remains as level 0.
class LevelTexts {
  public:
    // No value: a "(" without its ")", or a text that the counters cannot count. The levels refer
    // to `text` when it holds no parenthesis.
    static std::optional<LevelTexts> strip(std::string_view text);

    std::size_t pairs() const { return inner_.size(); }
    std::string_view level(std::size_t index) const;

  private:
    std::string_view plain_;          // level 0 of a text without parentheses
    std::string outer_;               // level 0 of any other
    std::vector<std::string> inner_;  // levels 1, 2, ...
};

// The terms of a level: cut at every "+" and "-", wherever they stand. "+" is dropped, "-" becomes
// the first character of the term behind it. A text that begins with a sign has an empty first
// term; a sign at the very end is lost.
class Terms {
  public:
    explicit Terms(std::string_view level) : rest_(level) {}
    bool next(std::string_view& term);

  private:
    std::string_view rest_;
    bool keeps_sign_ = false;  // rest_ begins with the "-" that its first term keeps
    bool done_ = false;
};

// One operand of a term and the operator behind it, 0 at the end of the term.
struct OperandPart {
    std::string_view text;
    char operator_behind = 0;
};

// The operands of a term. The last character always belongs to an operand, even if it is an
// operator: a trailing operator does nothing.
class Operands {
  public:
    explicit Operands(std::string_view term) : rest_(term) {}
    bool next(OperandPart& part);

  private:
    std::string_view rest_;
};

// In the order in which they are all computed.
enum class Function : std::uint8_t { kSin, kCos, kTan, kAbs, kAtn, kInt, kFix, kSgn, kSqr };
enum class Logarithm : std::uint8_t { kLg, kLn };

enum class OperandKind : std::uint8_t { kNumber, kFactorial, kLevel, kFunction, kLogarithm };

inline constexpr std::size_t kNoLevel = SIZE_MAX;

// What an operand is, found by its first characters and its last.
struct OperandForm {
    OperandKind kind = OperandKind::kNumber;
    bool negative = false;
    Function function = Function::kSin;
    Logarithm logarithm = Logarithm::kLg;
    std::string_view text;  // without the sign; behind the marker for a level or function
};

OperandForm operand_form(std::string_view operand);

// The level that the text behind a marker names. Whatever is glued to the closing parenthesis joins
// the name, so `(7)5` names level 15; a name that is no number names none. Blanks behind the number
// do not count, since dictionary fields are filled with them, nor does an operator that ends the
// term.
std::size_t level_named(std::string_view behind_marker);

}  // namespace servo::params
