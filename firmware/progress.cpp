#include "firmware/progress.h"

#include <fmt/format.h>

#include <cmath>

namespace servo::firmware {

namespace {
// Long enough to even out, short enough to follow a line that gets slower.
constexpr std::size_t kRecentBlocks = 8;
}  // namespace

void Progress::begin(std::size_t total_bytes, std::size_t total_blocks, Time now) {
    *this = {};
    total_bytes_ = total_bytes;
    total_blocks_ = total_blocks;
    marks_.push_back({now, 0});
}

void Progress::block_done(std::size_t bytes, Time now) {
    bytes_ += bytes;
    ++blocks_;
    marks_.push_back({now, bytes_});
    if (marks_.size() > kRecentBlocks + 1) marks_.pop_front();
}

std::optional<double> Progress::speed() const {
    if (marks_.size() < 2) return std::nullopt;
    const std::chrono::duration<double> taken = marks_.back().at - marks_.front().at;
    if (taken.count() <= 0) return std::nullopt;
    return static_cast<double>(marks_.back().bytes - marks_.front().bytes) / taken.count();
}

std::optional<std::chrono::seconds> Progress::remaining(Time now) const {
    const auto rate = speed();
    if (!rate || *rate <= 0) return std::nullopt;
    const double left = bytes_ < total_bytes_ ? static_cast<double>(total_bytes_ - bytes_) : 0;
    const std::chrono::duration<double> since = now - marks_.back().at;
    const double seconds = left / *rate - since.count();
    return std::chrono::seconds(seconds > 0 ? static_cast<std::int64_t>(std::ceil(seconds)) : 0);
}

std::string duration_text(std::chrono::seconds duration) {
    const auto seconds = duration.count();
    if (seconds >= 3600)
        return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
    return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

}  // namespace servo::firmware
