// One direction of the virtual line with faults on it: gathers each frame of ten bytes that a
// station sends, and hands on what a fault makes of it.
#pragma once

#include <cstdint>
#include <functional>
#include <random>

#include "faults/line_faults.h"
#include "support/virtual_line.h"

namespace servo::test {

class FaultyWire {
  public:
    FaultyWire(VirtualTime& time, Wire& wire, std::uint64_t seed);
    FaultyWire(const FaultyWire&) = delete;
    FaultyWire& operator=(const FaultyWire&) = delete;

    // The next frame (or frames) meets this fault.
    void arm(const LineFault& fault);
    bool armed() const { return left_ > 0; }

    // The last bytes that were sent are those of a frame that left the station like that.
    bool genuine(const Bytes& frame) const;

    std::uint64_t strikes = 0;  // faults that found their first frame

  private:
    void collect(std::uint8_t byte);
    void hand_on(const Bytes& bytes);

    VirtualTime& time_;
    std::function<void(std::uint8_t)> out_;
    std::mt19937_64 random_;
    Bytes frame_;
    std::vector<Bytes> recent_;  // the genuine frames of the last exchanges, newest last
    const LineFault* fault_ = nullptr;
    int left_ = 0;
    VirtualTime::Duration dead_until_{0};
};

}  // namespace servo::test
