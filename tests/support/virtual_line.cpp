#include "support/virtual_line.h"

#include <algorithm>

#include "link/port_names.h"

namespace servo::test {

namespace {
constexpr std::int64_t kBitsOfByte = 10;  // start, eight, stop
constexpr std::int64_t kNanoseconds = 1'000'000'000;
}  // namespace

VirtualTime::Duration Wire::time_of(std::size_t bytes) const {
    return VirtualTime::Duration(static_cast<std::int64_t>(bytes) * kBitsOfByte * kNanoseconds /
                                 baud_);
}

void Wire::send(std::span<const std::uint8_t> bytes) {
    if (cut_) return;
    queue_.insert(queue_.end(), bytes.begin(), bytes.end());
    if (busy_ || queue_.empty()) return;
    burst_start_ = time_.now();
    burst_bytes_ = 0;
    start_next();
}

// Bytes of a burst are counted from its start, so that no rounding adds up.
void Wire::start_next() {
    busy_ = true;
    ++burst_bytes_;
    const std::uint64_t generation = generation_;
    time_.at(burst_start_ + time_of(burst_bytes_), [this, generation] { complete(generation); });
}

void Wire::complete(std::uint64_t generation) {
    if (generation != generation_) return;
    const std::uint8_t byte = queue_.front();
    queue_.pop_front();
    busy_ = !queue_.empty();
    if (busy_) start_next();
    if (!deliver) return;
    if (!noise) {
        deliver(byte);
        return;
    }
    for (const std::uint8_t arriving : noise(byte))
        deliver(arriving);
}

void Wire::clear() {
    if (queue_.size() > 1) queue_.resize(1);
}

void Wire::set_cut(bool cut) {
    cut_ = cut;
    if (!cut) return;
    ++generation_;
    busy_ = false;
    queue_.clear();
}

VirtualPort::VirtualPort(VirtualLine& line) : line_(line) {
    line_.to_pc.deliver = [this](std::uint8_t byte) {
        if (open_) in_.push_back(byte);
    };
}

link::OpenResult VirtualPort::open(std::string_view port_text, int baud_rate) {
    opened.emplace_back(port_text);
    open_ = false;
    const auto found = ports.find(link::port_number(port_text));
    if (found == ports.end()) return link::OpenResult::kFailed;
    if (found->second != link::OpenResult::kOpened) return found->second;
    open_ = true;
    in_.clear();
    baud = baud_rate;
    line_.to_drive.set_baud(baud_rate);
    line_.to_pc.set_baud(baud_rate);
    return link::OpenResult::kOpened;
}

void VirtualPort::close() {
    open_ = false;
    in_.clear();
}

std::size_t VirtualPort::read(std::span<std::uint8_t> into) {
    const std::size_t count = std::min(into.size(), in_.size());
    std::copy_n(in_.begin(), count, into.begin());
    last_read.assign(into.begin(), into.begin() + static_cast<std::ptrdiff_t>(count));
    in_.erase(in_.begin(), in_.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
}

void VirtualPort::write(std::span<const std::uint8_t> bytes) {
    if (!open_) return;
    if (record) written.insert(written.end(), bytes.begin(), bytes.end());
    line_.to_drive.send(bytes);
}

}  // namespace servo::test
