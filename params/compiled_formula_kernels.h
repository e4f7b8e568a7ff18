// The loops of compiled formulas. Each handles one block, small enough to stay in the fastest
// cache.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "params/expression_text.h"

namespace servo::params {

inline constexpr std::size_t kBlock = 512;

// Up to three operations with constants, done in one pass. A division stays a division.
enum class StepKind : std::uint8_t { kNone, kMultiply, kDivide, kAdd };

struct Steps {
    static constexpr std::size_t kMost = 3;
    std::array<StepKind, kMost> kinds{};
    std::array<double, kMost> constants{};

    bool operator==(const Steps&) const = default;
};

// Which samples of a block have failed; all false at first.
using Failures = std::array<bool, kBlock>;

void load_samples(std::span<const std::int32_t> raw, double* block, const Steps& steps);
void load_samples(std::span<const double> values, double* block, const Steps& steps);
void run_steps(double* block, std::size_t count, const Steps& steps);

// block = block op other, with op one of * / ^ +. The two do not overlap.
void combine_blocks(double* block, char op, const double* other, std::size_t count);

// block = constant op block, with op / or ^.
void combine_from_left(double constant, char op, double* block, std::size_t count);

void raise_to(double* block, double exponent, std::size_t count);

// A function fails below 0, a logarithm at 0 and below, whatever its value would be.
void call_function(Function function, double* block, std::size_t count, Failures& failures);
void call_logarithm(Logarithm logarithm, double* block, std::size_t count, Failures& failures);

// Notes what is no number.
void check_block(const double* block, std::size_t count, Failures& failures);

}  // namespace servo::params
