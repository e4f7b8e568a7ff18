// What a formula line computes, written down as operations on a sample that is not known yet.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "link/drive_values.h"
#include "params/expression_text.h"
#include "params/expression_walk.h"

namespace servo::params {

// Samples whose text is exact are whole numbers below this.
inline constexpr double kExactSamples = 1e15;

// A number that is known, or the result of an operation.
struct Symbol {
    static constexpr int kKnown = -1;
    static constexpr int kMagnitude = -2;  // digits of a negative sample, whose "-" was cut off

    int node = kKnown;
    double constant = 0;

    bool is_known() const { return node == kKnown; }
};

enum class NodeKind : std::uint8_t { kSample, kCombine, kFunction, kLogarithm };

// One operation; its operands were computed before it.
struct Node {
    NodeKind kind = NodeKind::kSample;
    char op = 0;  // * / ^ + of kCombine
    Function function = Function::kSin;
    Logarithm logarithm = Logarithm::kLg;
    Symbol left;
    Symbol right;
    double bound = kExactSamples;  // no result is further from 0
    double least = 1;              // no result but 0 is nearer to 0; 0 when that is not known
    bool checked = false;          // the bound does not rule out an overflow
    bool signed_zero = false;      // the result may be a zero with a sign
};

struct SymbolicExpression {
    WalkEnd end = WalkEnd::kRefused;
    std::vector<Node> nodes;  // the first is the sample
    Symbol result;
};

enum class SampleSign : std::uint8_t { kFromZero, kNegative };

// `expression` still holds its N. Ends in kRefused where the digits of a sample could mean anything
// else than their number.
SymbolicExpression symbolic_expression(std::string_view expression,
                                       const link::FormulaOperands& operands, SampleSign sign);

}  // namespace servo::params
