#include "sim/recorder_rows.h"

#include <algorithm>

namespace servo::sim {

void RecorderRows::begin(const std::vector<Object*>& sources, std::size_t row_bytes,
                         std::size_t rows) {
    sources_ = sources;
    row_bytes_ = row_bytes;
    room_ = rows;
    next_ = 0;
    taken_ = 0;
    ring_.assign(row_bytes * rows, 0);
}

void RecorderRows::take(ObjectTable& table) {
    std::size_t at = next_ * row_bytes_;
    for (Object* const source : sources_) {
        const auto value = static_cast<std::uint64_t>(table.read(*source));
        const std::size_t bytes = width(source->type);
        for (std::size_t i = 0; i < bytes; ++i)
            ring_[at++] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    next_ = (next_ + 1) % room_;
    ++taken_;
}

std::size_t RecorderRows::held() const {
    return std::min(taken_, room_);
}

std::string RecorderRows::newest(std::size_t rows) const {
    rows = std::min(rows, held());
    std::string bytes;
    bytes.reserve(rows * row_bytes_);
    for (std::size_t i = 0; i < rows; ++i) {
        const std::size_t row = (next_ + room_ - rows + i) % room_;
        const auto from = ring_.begin() + static_cast<std::ptrdiff_t>(row * row_bytes_);
        bytes.append(from, from + static_cast<std::ptrdiff_t>(row_bytes_));
    }
    return bytes;
}

}  // namespace servo::sim
