// When bytes are on the line. A pseudo-terminal moves bytes at once; these classes give them the
// times that they would have on a serial line of some rate. No clock in here: time is handed in.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace servo::sim {

// One direction of a line. Bytes that follow each other without a pause end exactly at multiples of
// the byte time, however long that goes on: nothing is rounded twice.
class LineClock {
  public:
    explicit LineClock(std::uint32_t baud) : baud_(baud) {}

    void set_baud(std::uint32_t baud);

    // The line takes one more byte, which may start at `from`: when its last bit is through.
    std::chrono::nanoseconds take(std::chrono::nanoseconds from);

  private:
    std::chrono::nanoseconds end() const;

    std::uint32_t baud_;
    std::chrono::nanoseconds origin_{0};  // start of the run of bytes
    std::uint64_t count_ = 0;             // bytes of the run
};

// Bytes on their way along the line, to be taken out at the other end when their time has come.
class PacedBytes {
  public:
    // Bytes are waited for in groups of up to `group` that end within `span` of the first: one
    // waking for each group, no byte before its time.
    PacedBytes(std::uint32_t baud, std::size_t group, std::chrono::nanoseconds span);

    void set_baud(std::uint32_t baud) { clock_.set_baud(baud); }

    void put(std::span<const std::uint8_t> bytes, std::chrono::nanoseconds from);

    // When the group in front is through.
    std::optional<std::chrono::nanoseconds> next() const;

    struct Byte {
        std::uint8_t value = 0;
        std::chrono::nanoseconds at{0};
    };
    // All that is through at `now`.
    std::vector<Byte> take(std::chrono::nanoseconds now);

    void clear() { bytes_.clear(); }

  private:
    LineClock clock_;
    std::size_t group_;
    std::chrono::nanoseconds span_;
    std::deque<Byte> bytes_;
};

}  // namespace servo::sim
