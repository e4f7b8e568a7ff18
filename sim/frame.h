// The frames of the line: ten bytes of ID, eight payload bytes, and a last byte that makes the sum
// of all ten zero modulo 256.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace servo::sim {

inline constexpr std::size_t kFrameSize = 10;
using Payload = std::array<std::uint8_t, 8>;
using Frame = std::array<std::uint8_t, kFrameSize>;

Frame make_frame(std::uint8_t id, const Payload& payload);

// True when the ten bytes add up to zero.
bool sum_is_right(const Frame& frame);

// Time that a number of bytes takes on the line: 8N1, ten bit times each, to the next whole
// microsecond above.
std::chrono::microseconds line_time(std::size_t bytes, std::uint32_t baud);

// Finds frames in what comes in.
//
// Ten bytes with a right sum are a frame; it counts if the ID is this drive's, and is for another
// station otherwise. Ten bytes with a wrong sum are ignored as a whole: a flipped bit costs one
// frame of a burst and not the burst. A lost byte shifts all that follows, which shows as a wrong
// sum behind a wrong ID; then nothing is believed before the line has been silent. Silence also
// ends an incomplete frame, so a host that stops in mid-frame finds a clean start the next time.
class FrameReader {
  public:
    FrameReader(std::uint8_t id, std::uint32_t baud);

    enum class Event : std::uint8_t { kNone, kFrame, kForeign, kBadSum };
    struct Result {
        Event event = Event::kNone;
        bool ended_broken = false;  // silence before this byte ended an incomplete frame
    };

    // One byte that is complete on the line at `at`.
    Result take(std::uint8_t byte, std::chrono::microseconds at);

    // Of the last kFrame.
    const Payload& payload() const { return payload_; }

    // The silence that ends a frame: 2 ms, or four bytes' time on a slow line.
    std::chrono::microseconds gap() const { return gap_; }

    void clear();

  private:
    Event judge();

    std::uint8_t id_;
    std::chrono::microseconds gap_;
    std::chrono::microseconds byte_time_;
    std::optional<std::chrono::microseconds> last_;
    Frame bytes_{};
    std::size_t count_ = 0;
    bool out_of_step_ = false;
    Payload payload_{};
};

}  // namespace servo::sim
