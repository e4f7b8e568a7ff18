#include "faults/faulty_wire.h"

#include <algorithm>
#include <utility>

namespace servo::test {

namespace {
constexpr std::size_t kRemembered = 400;  // more than any fault holds a frame back
}

FaultyWire::FaultyWire(VirtualTime& time, Wire& wire, std::uint64_t seed)
    : time_(time), out_(std::move(wire.deliver)), random_(seed) {
    wire.deliver = [this](std::uint8_t byte) { collect(byte); };
}

void FaultyWire::arm(const LineFault& fault) {
    fault_ = &fault;
    left_ = fault.frames;
}

bool FaultyWire::genuine(const Bytes& frame) const {
    return std::find(recent_.rbegin(), recent_.rend(), frame) != recent_.rend();
}

void FaultyWire::hand_on(const Bytes& bytes) {
    if (time_.now() < dead_until_) return;
    for (const std::uint8_t byte : bytes)
        out_(byte);
}

void FaultyWire::collect(std::uint8_t byte) {
    frame_.push_back(byte);
    if (frame_.size() < 10) return;
    const Bytes frame = std::exchange(frame_, {});
    recent_.push_back(frame);
    if (recent_.size() > kRemembered)
        recent_.erase(recent_.begin(), recent_.begin() + kRemembered / 2);
    if (left_ == 0) {
        hand_on(frame);
        return;
    }
    if (left_ == fault_->frames) ++strikes;
    --left_;
    const Bytes& other = recent_[random_() % recent_.size()];
    VirtualTime::Duration when = time_.now();
    for (const Piece& piece : fault_->apply(frame, other, random_)) {
        when += piece.after;
        if (when == time_.now()) {
            hand_on(piece.bytes);
        } else {
            time_.at(when, [this, bytes = piece.bytes] { hand_on(bytes); });
        }
    }
    if (fault_->dead.count() > 0) dead_until_ = time_.now() + fault_->dead;
}

}  // namespace servo::test
