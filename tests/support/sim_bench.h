// The simulated drive on the line of a virtual bench.
#pragma once

#include <cstdint>
#include <memory>

#include "sim/drive.h"
#include "support/virtual_line.h"

namespace servo::test {

class SimDriveOnLine {
  public:
    // `store` must outlive this.
    SimDriveOnLine(VirtualTime& time, VirtualLine& line, const dictionary::Store& store,
                   sim::Options options = {});
    SimDriveOnLine(const SimDriveOnLine&) = delete;
    SimDriveOnLine& operator=(const SimDriveOnLine&) = delete;

    // As of now. Read and change objects through it.
    sim::Drive& drive();

  private:
    void receive(std::uint8_t byte);
    void settle();
    std::chrono::microseconds now() const;

    VirtualTime& time_;
    VirtualLine& line_;
    sim::Drive drive_;
    std::uint64_t generation_ = 0;
};

}  // namespace servo::test
