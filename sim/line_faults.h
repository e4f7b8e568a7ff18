// What a bad line does to the frames that the drive sends.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "sim/chance.h"
#include "sim/frame.h"
#include "sim/options.h"
#include "sim/statistics.h"

namespace servo::sim {

class LineFaultMaker {
  public:
    explicit LineFaultMaker(std::uint64_t seed) : chance_(seed) {}

    // The bytes that really go out, empty when none do. Always draws the same count of numbers, so
    // that a fault's share does not change which frames the others hit.
    std::vector<std::uint8_t> pass(const Frame& frame, const LineFaults& faults,
                                   Statistics& statistics);

    // The same for a reply of the bootloader. It names no station, so none can be foreign.
    std::vector<std::uint8_t> pass_text(std::string_view text, const LineFaults& faults,
                                        Statistics& statistics);

  private:
    struct Fate {
        bool drop = false;
        bool foreign = false;
        bool corrupted = false;
        bool doubled = false;
        bool lose = false;
        bool stutter = false;
        std::uint64_t draw = 0;
    };
    Fate next_fate(const LineFaults& faults);
    static void change_length(std::vector<std::uint8_t>& bytes, const Fate& fate,
                              Statistics& statistics);
    static void corrupt(std::vector<std::uint8_t>& bytes, std::uint64_t draw);

    Chance chance_;
};

}  // namespace servo::sim
