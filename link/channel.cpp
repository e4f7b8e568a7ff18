#include "link/channel.h"

#include <algorithm>
#include <chrono>

namespace servo::link {

namespace {
// Three quarters of a frame's time at 38400 baud: long enough to catch a frame that is just coming
// in, short enough for a tick of 3 ms.
constexpr std::chrono::milliseconds kPause{2};
}  // namespace

void SerialChannel::Datawrite(const Payload& payload) {
    if (!port_.is_open()) return;
    port_.write(make_frame(COMM_ID, payload));
}

std::uint8_t SerialChannel::get_frame(Payload& reply) {
    if (port_.in_buffer_count() < kFrameSize) {
        clock_.sleep(kPause);
        if (port_.in_buffer_count() < kFrameSize) return kFrameNotYet;
    }
    Frame frame{};
    if (port_.read(frame) < kFrameSize) return kFrameNotYet;
    std::copy(frame.begin() + 1, frame.begin() + 9, reply.begin());
    if (!check_frames) return kFrameAccepted;

    std::uint8_t result = kFrameAccepted;
    if (checksum(std::span(frame).first(9)) != frame[9]) result = kFrameBadChecksum;
    if (frame[0] != COMM_ID) {
        // The only resynchronisation: after a byte slip some frame begins with another byte, and
        // the purge makes the next answer begin at its first.
        result = kFrameForeign;
        port_.clear_in();
    }
    return result;
}

void CanChannel::Datawrite(const Payload& payload) {
    if (adapter_ == nullptr) return;
    can_message.data = payload;
    adapter_->CAN_Write(can_message);
}

std::uint8_t CanChannel::get_frame(Payload& reply) {
    if (adapter_ == nullptr) return kFrameNotYet;
    const std::uint8_t status = adapter_->CAN_Read(can_receive);
    if (status == kFrameAccepted) reply = can_receive.data;
    return status;
}

}  // namespace servo::link
