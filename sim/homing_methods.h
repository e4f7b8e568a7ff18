// What the numbers of the homing methods mean: those of CiA 402, and the drive's own below zero.
#pragma once

#include <cstdint>
#include <optional>

namespace servo::sim {

// What ends the search.
enum class HomingSignal : std::uint8_t {
    kNone,
    kNegativeLimit,
    kPositiveLimit,
    kHome,
    kNegativeStop,
    kPositiveStop,
};

enum class Direction : std::int8_t { kNegative = -1, kPositive = 1 };

struct HomingMethod {
    HomingSignal signal = HomingSignal::kNone;
    bool here = false;   // the present place is the home, nothing moves
    bool index = false;  // home is the first index pulse behind the signal, else the signal itself
    // The first search goes this way, unless the signal is there from the start.
    Direction search = Direction::kPositive;
    // The edge that counts, and the index behind it, are passed this way.
    Direction approach = Direction::kPositive;
    bool enters = false;  // that edge is the signal's coming, else its going
    bool turns = false;   // the search turns round at a limit switch
};

// Nothing for a number that no method has.
std::optional<HomingMethod> homing_method(std::int64_t number);

}  // namespace servo::sim
