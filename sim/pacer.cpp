#include "sim/pacer.h"

#include <algorithm>

namespace servo::sim {

namespace {

using std::chrono::nanoseconds;

// Ten bits for each byte.
constexpr std::uint64_t kNanosecondBits = 10'000'000'000;

}  // namespace

nanoseconds LineClock::end() const {
    return origin_ + nanoseconds(count_ * kNanosecondBits / baud_);
}

void LineClock::set_baud(std::uint32_t baud) {
    if (baud == baud_) return;
    origin_ = end();
    count_ = 0;
    baud_ = baud;
}

nanoseconds LineClock::take(nanoseconds from) {
    if (from > end()) {
        origin_ = from;
        count_ = 0;
    } else if (count_ >= baud_) {
        // As many bytes as the rate has bits a second take exactly ten seconds.
        origin_ += std::chrono::seconds(10);
        count_ -= baud_;
    }
    ++count_;
    return end();
}

PacedBytes::PacedBytes(std::uint32_t baud, std::size_t group, nanoseconds span)
    : clock_(baud), group_(group), span_(span) {}

void PacedBytes::put(std::span<const std::uint8_t> bytes, nanoseconds from) {
    for (const std::uint8_t byte : bytes)
        bytes_.push_back({byte, clock_.take(from)});
}

std::optional<nanoseconds> PacedBytes::next() const {
    if (bytes_.empty()) return std::nullopt;
    const nanoseconds last = bytes_.front().at + span_;
    nanoseconds at = bytes_.front().at;
    for (std::size_t i = 1; i < std::min(group_, bytes_.size()); ++i) {
        if (bytes_[i].at > last) break;
        at = bytes_[i].at;
    }
    return at;
}

std::vector<PacedBytes::Byte> PacedBytes::take(nanoseconds now) {
    std::vector<Byte> through;
    while (!bytes_.empty() && bytes_.front().at <= now) {
        through.push_back(bytes_.front());
        bytes_.pop_front();
    }
    return through;
}

}  // namespace servo::sim
