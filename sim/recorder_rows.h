// The recorder's memory: the newest rows, as many as a recording has.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sim/recorder_setup.h"

namespace servo::sim {

class RecorderRows {
  public:
    // Empty, with room for `rows` rows of these sources.
    void begin(const std::vector<Object*>& sources, std::size_t row_bytes, std::size_t rows);

    // One more row: every source as of now, low byte first. The oldest row makes room.
    void take(ObjectTable& table);

    std::size_t taken() const { return taken_; }  // since begin()
    std::size_t held() const;

    // The newest `rows` rows, the oldest of them first.
    std::string newest(std::size_t rows) const;

  private:
    std::vector<Object*> sources_;
    std::vector<std::uint8_t> ring_;
    std::size_t row_bytes_ = 0;
    std::size_t room_ = 0;  // rows
    std::size_t next_ = 0;  // row of the ring that the next one goes to
    std::size_t taken_ = 0;
};

}  // namespace servo::sim
