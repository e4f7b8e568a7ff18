// What a bad line does to the frames that the drive sends.
#pragma once

#include <cstdint>
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

  private:
    void corrupt(std::vector<std::uint8_t>& bytes, std::uint64_t draw);

    Chance chance_;
};

}  // namespace servo::sim
