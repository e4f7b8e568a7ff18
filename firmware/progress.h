// How far a transfer is, how fast it goes and how long it will take. Time is handed in.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace servo::firmware {

class Progress {
  public:
    using Time = std::chrono::microseconds;

    // The first block is asked for.
    void begin(std::size_t total_bytes, std::size_t total_blocks, Time now);
    // A block of so many bytes was programmed.
    void block_done(std::size_t bytes, Time now);
    void clear() { *this = {}; }

    bool begun() const { return !marks_.empty(); }
    std::size_t total_bytes() const { return total_bytes_; }
    std::size_t total_blocks() const { return total_blocks_; }
    std::size_t bytes() const { return bytes_; }
    std::size_t blocks() const { return blocks_; }

    // Bytes a second over the last few blocks; nothing before the first one.
    std::optional<double> speed() const;
    // Until the last block is programmed, as of `now`; nothing before the first block.
    std::optional<std::chrono::seconds> remaining(Time now) const;

  private:
    struct Mark {
        Time at{0};
        std::size_t bytes = 0;
    };
    std::size_t total_bytes_ = 0;
    std::size_t total_blocks_ = 0;
    std::size_t bytes_ = 0;
    std::size_t blocks_ = 0;
    std::deque<Mark> marks_;
};

// "1:05"
std::string duration_text(std::chrono::seconds duration);

}  // namespace servo::firmware
