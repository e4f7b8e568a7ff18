// `Command4` "仿真": filters and gains on the measured plant.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "tuner/filter.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

// The three gains from their boxes, with their guards. Nothing where Text10 is 0: Text11 is divided
// by it before the guard, and that failure ends the command.
std::optional<LoopGains> read_gains(std::string_view Text10, std::string_view Text11,
                                    std::string_view Text9);

// Model points and filter curves, from slots that were encoded.
Simulation simulate(const TunerData& data, const std::array<FilterRecord, kSlots>& records,
                    const LoopGains& gains);

}  // namespace servo::tuner
