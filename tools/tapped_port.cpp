#include "tools/tapped_port.h"

#include <algorithm>

namespace servo::tools {

namespace {

bool is_frame(std::span<const std::uint8_t> bytes) {
    return link::checksum(bytes.first(link::kFrameSize - 1)) == bytes[link::kFrameSize - 1];
}

link::Payload payload_of(std::span<const std::uint8_t> bytes) {
    link::Payload payload{};
    std::copy_n(bytes.begin() + 1, payload.size(), payload.begin());
    return payload;
}

}  // namespace

link::OpenResult TappedPort::open(std::string_view port_text, int baud) {
    gathered_.clear();
    return line_.open(port_text, baud);
}

void TappedPort::close() {
    gathered_.clear();
    line_.close();
}

// Bytes that no frame begins with are passed by one at a time, so a broken frame costs no whole one
// behind it.
std::size_t TappedPort::read(std::span<std::uint8_t> into) {
    const std::size_t count = line_.read(into);
    if (tap_ == nullptr) return count;
    const auto fresh = into.first(count);
    gathered_.insert(gathered_.end(), fresh.begin(), fresh.end());
    std::size_t at = 0;
    while (gathered_.size() - at >= link::kFrameSize) {
        const auto bytes = std::span(gathered_).subspan(at, link::kFrameSize);
        if (bytes.front() != station_ || !is_frame(bytes)) {
            ++at;
            continue;
        }
        tap_->heard(payload_of(bytes));
        at += link::kFrameSize;
    }
    gathered_.erase(gathered_.begin(), gathered_.begin() + static_cast<std::ptrdiff_t>(at));
    return count;
}

void TappedPort::write(std::span<const std::uint8_t> bytes) {
    const bool open = line_.is_open();
    line_.write(bytes);
    if (tap_ == nullptr || !open || bytes.size() != link::kFrameSize || !is_frame(bytes)) return;
    station_ = bytes.front();
    tap_->sent(payload_of(bytes));
}

void TappedPort::clear_in() {
    gathered_.clear();
    line_.clear_in();
}

}  // namespace servo::tools
