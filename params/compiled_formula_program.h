// The program that a formula line becomes: operations on blocks of samples.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "link/drive_values.h"
#include "params/compiled_formula_kernels.h"
#include "params/expression_text.h"
#include "params/expression_walk.h"

namespace servo::params {

// All operations work in place on the buffer `target`. The buffer of the result is `out` itself.
enum class Operation : std::uint8_t {
    kLoad,      // the samples, through the steps
    kSteps,     // through the steps
    kCopy,      // from `source`
    kWith,      // target = target op source
    kFromLeft,  // target = constant op target, for / and ^
    kPower,     // target = target ^ constant
    kFunction,
    kLogarithm,
};

struct Instruction {
    Operation operation = Operation::kLoad;
    std::uint8_t target = 0;
    std::uint8_t source = 0;
    char op = 0;           // * / ^ or + of kWith, kFromLeft
    bool checked = false;  // the result may be no number
    Function function = Function::kSin;
    Logarithm logarithm = Logarithm::kLg;
    double constant = 0;
    Steps steps;

    bool operator==(const Instruction&) const = default;
};

// `end` says what every sample comes to; only kValue has a result, which is the buffer `result`, or
// `constant` when there are no instructions.
struct Program {
    WalkEnd end = WalkEnd::kRefused;
    std::vector<Instruction> instructions;
    std::uint8_t buffers = 0;
    std::uint8_t result = 0;
    double constant = 0;

    bool operator==(const Program&) const = default;
    bool has_checks() const;
};

// Programs for samples from 0 up, and for negative ones.
struct ProgramPair {
    Program from_zero;
    Program negative;
};

// `expression` still holds its N. A program that ends in kRefused stands for "not exact".
ProgramPair compile_expression(std::string_view expression, const link::FormulaOperands& operands);

// What a block of samples comes to. `buffers` are `program.buffers` blocks one behind the other;
// failed samples become 0.
void run_program(const Program& program, std::span<const std::int32_t> samples, double* buffers,
                 std::span<double> out);
void run_program(const Program& program, std::span<const double> samples, double* buffers,
                 std::span<double> out);

}  // namespace servo::params
