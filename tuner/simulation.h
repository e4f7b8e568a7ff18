// `Command4` "仿真": filters and gains on the measured plant.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "tuner/filter.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

// The three gains from their boxes, with their guards. Text10 is Kvp (60F9:01), Text11 the integral
// gain in Kvp added every 1/4000 s, Text9 the position gain in Hz. Nothing where Text10 is 0:
// Text11 is divided by it before the guard, and that failure ends the command; nor for what no
// single holds.
std::optional<LoopGains> read_gains(std::string_view Text10, std::string_view Text11,
                                    std::string_view Text9);

// Addition: what makes the simulated velocity loop the one that the drive had at the scan. Nothing
// when the scan knows no gains.
struct GainTexts {
    std::string Text10;
    std::string Text11;
};
std::optional<GainTexts> gains_at_scan(const ScanSettings& settings);

// Model points and filter curves, from slots that were encoded. The position loop has loopScale as
// its gain, in Hz.
Simulation simulate(const TunerData& data, const std::array<FilterRecord, kSlots>& records,
                    const LoopGains& gains);

}  // namespace servo::tuner
