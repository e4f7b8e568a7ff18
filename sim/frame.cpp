#include "sim/frame.h"

#include <algorithm>
#include <numeric>

namespace servo::sim {

namespace {

constexpr std::chrono::microseconds kShortestGap{2000};
constexpr std::size_t kGapBytes = 4;
constexpr std::uint64_t kBitsPerByte = 10;  // start, eight data, stop

}  // namespace

Frame make_frame(std::uint8_t id, const Payload& payload) {
    Frame frame{};
    frame[0] = id;
    std::copy(payload.begin(), payload.end(), frame.begin() + 1);
    const unsigned sum = std::accumulate(frame.begin(), frame.end() - 1, 0U);
    frame[kFrameSize - 1] = static_cast<std::uint8_t>(0x100U - (sum & 0xFFU));
    return frame;
}

bool sum_is_right(const Frame& frame) {
    return (std::accumulate(frame.begin(), frame.end(), 0U) & 0xFFU) == 0;
}

std::chrono::microseconds line_time(std::size_t bytes, std::uint32_t baud) {
    const std::uint64_t bits = bytes * kBitsPerByte * 1'000'000U;
    return std::chrono::microseconds((bits + baud - 1) / baud);
}

FrameReader::FrameReader(std::uint8_t id, std::uint32_t baud)
    : id_(id),
      gap_(std::max(kShortestGap, line_time(kGapBytes, baud))),
      byte_time_(line_time(1, baud)) {}

void FrameReader::clear() {
    count_ = 0;
    out_of_step_ = false;
    last_.reset();
}

FrameReader::Result FrameReader::take(std::uint8_t byte, std::chrono::microseconds at) {
    Result result;
    // The line was silent until this byte's own start bit.
    if (last_ && at - byte_time_ - *last_ >= gap_) {
        result.ended_broken = count_ > 0;
        count_ = 0;
        out_of_step_ = false;
    }
    last_ = at;
    if (out_of_step_) return result;
    bytes_[count_++] = byte;
    if (count_ == kFrameSize) {
        count_ = 0;
        result.event = judge();
    }
    return result;
}

FrameReader::Event FrameReader::judge() {
    if (!sum_is_right(bytes_)) {
        out_of_step_ = bytes_[0] != id_;
        return Event::kBadSum;
    }
    if (bytes_[0] != id_) return Event::kForeign;
    std::copy(bytes_.begin() + 1, bytes_.end() - 1, payload_.begin());
    return Event::kFrame;
}

}  // namespace servo::sim
