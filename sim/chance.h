// Seeded chance. The standard distributions may differ between libraries; these do not, so a seed
// means the same run everywhere.
#pragma once

#include <cstdint>

namespace servo::sim {

// The finaliser of SplitMix64: a well mixed 64-bit number out of any other.
constexpr std::uint64_t mix(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15U;
    x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9U;
    x = (x ^ (x >> 27U)) * 0x94D049BB133111EBU;
    return x ^ (x >> 31U);
}

// 0 to just under 1.
constexpr double unit(std::uint64_t bits) {
    return static_cast<double>(bits >> 11U) * 0x1.0p-53;
}

class Chance {
  public:
    explicit constexpr Chance(std::uint64_t seed) : state_(seed) {}

    constexpr std::uint64_t next() { return mix(state_ += 0x9E3779B97F4A7C15U); }
    constexpr bool happens(double probability) { return unit(next()) < probability; }
    // 0 to count - 1.
    constexpr std::uint32_t below(std::uint32_t count) {
        return static_cast<std::uint32_t>(unit(next()) * count);
    }

  private:
    std::uint64_t state_;
};

}  // namespace servo::sim
