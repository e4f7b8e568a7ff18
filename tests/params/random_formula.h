// Seeded texts for the proofs about formulas.
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace servo::params {

class Random {
  public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    // 0 to below - 1. The distributions of the library differ between its makers, the engine does
    // not.
    std::uint32_t below(std::uint32_t limit) { return engine_() % limit; }
    bool once_in(std::uint32_t times) { return below(times) == 0; }

    std::uint32_t bits() { return engine_(); }

  private:
    std::mt19937 engine_;
};

// A text without an odd shape and its value, computed without looking at the text; no value where
// the arithmetic fails.
struct Sample {
    std::string text;
    std::optional<double> value;
};
Sample well_formed(Random& random, int depth);

// Characters of the language in any order.
std::string any_text(Random& random, std::uint32_t most);

// An expression in N: usual shapes for the most part, any text now and then.
std::string random_expression(Random& random);

}  // namespace servo::params
