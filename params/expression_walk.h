// The order in which an expression is worked through: level by level, term by term, operand by
// operand. What a value is, and what happens to it, is the machine's business: the evaluator's
// machine computes numbers, the compiler's one writes down a program.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "params/expression_text.h"

namespace servo::params {

enum class Did : std::uint8_t {
    kDone,
    kFailed,   // an arithmetic failure
    kRefused,  // the machine cannot say what happens here
};

enum class WalkEnd : std::uint8_t {
    kValue,
    kFailed,    // an arithmetic failure: the expression is 0
    kToCaller,  // a failure before the first operand was read
    kRefused,
};

// A machine has a type `Value` and the operations
//   Value zero();
//   Did number(std::string_view text, Value&);      leading number of an operand
//   Did factorial(std::string_view text, Value&);
//   Did function(Function, Value&);
//   Did logarithm(Logarithm, Value&);
//   Did level_name(std::string_view behind_marker, std::size_t& level);
//   Did negate(Value&);
//   Did combine(Value& accumulator, char op, const Value&);
//   Did add(Value& sum, const Value& term);
template <class Machine>
class ExpressionWalk {
  public:
    using Value = typename Machine::Value;

    ExpressionWalk(const LevelTexts& levels, Machine& machine)
        : levels_(levels), machine_(machine), values_(levels.pairs() + 1, machine.zero()) {}

    WalkEnd run(Value& result) {
        for (std::size_t i = 1; i <= levels_.pairs(); ++i) {
            if (level(i) != Did::kDone) return end_;
        }
        if (level(0) != Did::kDone) return end_;
        result = std::move(values_[0]);
        return WalkEnd::kValue;
    }

  private:
    // A level counts as 0 until it is done; only a text that names levels itself can tell.
    Did level(std::size_t index) {
        Value sum = machine_.zero();
        Terms terms(levels_.level(index));
        for (std::string_view text; terms.next(text);) {
            Value value = machine_.zero();
            if (term(text, value) != Did::kDone) return Did::kFailed;
            if (!done(machine_.add(sum, value))) return Did::kFailed;
        }
        values_[index] = std::move(sum);
        return Did::kDone;
    }

    Did term(std::string_view text, Value& accumulator) {
        char pending = 0;
        Operands operands(text);
        for (OperandPart part; operands.next(part); pending = part.operator_behind) {
            Value value = machine_.zero();
            if (operand(part.text, value) != Did::kDone) return Did::kFailed;
            if (pending == 0) {
                accumulator = std::move(value);
            } else if (!done(machine_.combine(accumulator, pending, value))) {
                return Did::kFailed;
            }
        }
        return Did::kDone;
    }

    Did operand(std::string_view text, Value& value) {
        const OperandForm form = operand_form(text);
        if (!done(read(form, value), form.kind)) return Did::kFailed;
        operand_read_ = true;
        if (form.negative && !done(machine_.negate(value))) return Did::kFailed;
        return Did::kDone;
    }

    Did read(const OperandForm& form, Value& value) {
        switch (form.kind) {
            case OperandKind::kNumber:
                return machine_.number(form.text, value);
            case OperandKind::kFactorial:
                return machine_.factorial(form.text, value);
            case OperandKind::kLevel:
                return level_value(form.text, value);
            case OperandKind::kFunction: {
                const Did got = level_value(form.text, value);
                return got == Did::kDone ? machine_.function(form.function, value) : got;
            }
            case OperandKind::kLogarithm: {
                const Did got = level_value(form.text, value);
                return got == Did::kDone ? machine_.logarithm(form.logarithm, value) : got;
            }
        }
        return Did::kRefused;
    }

    Did level_value(std::string_view behind_marker, Value& value) {
        std::size_t index = kNoLevel;
        const Did named = machine_.level_name(behind_marker, index);
        value = index < values_.size() ? values_[index] : machine_.zero();
        return named;
    }

    // True to go on; otherwise `end_` says how the walk ends. Before the first operand only a
    // logarithm of nothing can fail for want of text, and that failure is not caught here; a first
    // operand that overflows is an arithmetic failure like any other.
    bool done(Did did, OperandKind kind = OperandKind::kNumber) {
        switch (did) {
            case Did::kDone:
                return true;
            case Did::kFailed:
                end_ = !operand_read_ && kind == OperandKind::kLogarithm ? WalkEnd::kToCaller
                                                                         : WalkEnd::kFailed;
                return false;
            case Did::kRefused:
                end_ = WalkEnd::kRefused;
                return false;
        }
        return false;
    }

    const LevelTexts& levels_;
    Machine& machine_;
    std::vector<Value> values_;
    bool operand_read_ = false;
    WalkEnd end_ = WalkEnd::kFailed;
};

}  // namespace servo::params
