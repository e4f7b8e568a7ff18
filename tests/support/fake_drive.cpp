#include "support/fake_drive.h"

#include <algorithm>
#include <numeric>

#include "link/engine.h"

namespace servo::test {

using link::Identity;
using link::Payload;

namespace {

constexpr auto kEndOfFrame = 5ms;  // a pause that ends a broken frame

Identity object_of(const Payload& payload) {
    return payload[2] << 16 | payload[1] << 8 | payload[3];
}

Payload abort_of(const Payload& request, std::uint32_t code) {
    return {0x80,
            request[1],
            request[2],
            request[3],
            static_cast<std::uint8_t>(code),
            static_cast<std::uint8_t>(code >> 8),
            static_cast<std::uint8_t>(code >> 16),
            static_cast<std::uint8_t>(code >> 24)};
}

}  // namespace

FakeDrive::FakeDrive(VirtualTime& time, VirtualLine& line) : time_(time), line_(line) {
    for (int lane = 0; lane < 3; ++lane)
        for (const link::WireKey key : link::Engine::status_list(lane))
            add(key, 0);
    line_.to_drive.deliver = [this](std::uint8_t byte) { receive(byte); };
}

void FakeDrive::add(link::WireKey key, std::int64_t value) {
    objects[dictionary::identity_of(key)] = {static_cast<int>(key & 0xFF), value, {}};
}

void FakeDrive::add_text(Identity object, std::string text) {
    objects[object] = {0, 0, std::move(text)};
}

std::vector<std::uint8_t> FakeDrive::frame_of(const Payload& payload, std::uint8_t id) {
    std::vector<std::uint8_t> frame{id};
    frame.insert(frame.end(), payload.begin(), payload.end());
    frame.push_back(static_cast<std::uint8_t>(-std::accumulate(frame.begin(), frame.end(), 0)));
    return frame;
}

void FakeDrive::send_payload(const Payload& payload) {
    send(frame_of(payload, id));
}

void FakeDrive::receive(std::uint8_t byte) {
    if (time_.now() - last_byte_ > kEndOfFrame) {
        bad_frames += bytes_.size();
        bytes_.clear();
    }
    last_byte_ = time_.now();
    bytes_.push_back(byte);
    if (bytes_.size() < link::kFrameSize) return;
    const int sum = std::accumulate(bytes_.begin(), bytes_.end(), 0);
    if (bytes_[0] != id || sum % 256 != 0) {
        ++bad_frames;
        bytes_.erase(bytes_.begin());
        return;
    }
    Payload payload{};
    std::copy_n(bytes_.begin() + 1, payload.size(), payload.begin());
    bytes_.clear();
    requests.push_back({time_.now(), payload});
    execute(payload);
}

void FakeDrive::execute(const Payload& request) {
    const Payload answer = answer_to(request);
    if (silent || mute.contains(object_of(request))) return;
    if (answers && !answers(request)) return;
    auto bytes = frame_of(answer, id);
    if (mangle) bytes = mangle(bytes);
    ++sent;
    time_.after(turnaround, [this, bytes = std::move(bytes)] { send(bytes); });
}

Payload FakeDrive::answer_to(const Payload& request) {
    const std::uint8_t command = request[0];
    if (command == 0x60 || command == 0x70) return segment(command == 0x60 ? 0x00 : 0x10);
    const Identity object = object_of(request);
    const auto found = objects.find(object);
    if (found == objects.end() || refuse.contains(object)) return abort_of(request, 0x06020000);

    Payload answer = request;
    if (command != 0x40) {
        const std::uint32_t value = request[4] | request[5] << 8 | request[6] << 16 |
                                    static_cast<std::uint32_t>(request[7]) << 24;
        const int bits = 8 * std::max(found->second.size, 1);
        found->second.value = value & static_cast<std::uint32_t>((1ULL << bits) - 1);
        answer[0] = 0x60;
        return answer;
    }
    if (found->second.size == 0) {
        upload_ = found->second.text;
        upload_position_ = 0;
        upload_toggle_ = -1;
        answer[0] = 0x41;
        answer[4] = static_cast<std::uint8_t>(upload_.size());
        return answer;
    }
    answer[0] = found->second.size == 1 ? 0x4F : found->second.size == 2 ? 0x4B : 0x43;
    for (int i = 0; i < found->second.size; ++i)
        answer[static_cast<std::size_t>(4 + i)] =
            static_cast<std::uint8_t>(found->second.value >> (8 * i));
    return answer;
}

Payload FakeDrive::segment(std::uint8_t toggle) {
    if (repeats_segments && upload_toggle_ == toggle) return last_segment_;
    upload_toggle_ = toggle;
    Payload answer{};
    const std::size_t left = upload_.size() - upload_position_;
    const std::size_t count = std::min<std::size_t>(left, 7);
    std::copy_n(upload_.begin() + static_cast<std::ptrdiff_t>(upload_position_), count,
                answer.begin() + 1);
    upload_position_ += count;
    const bool last = upload_position_ == upload_.size();
    answer[0] = static_cast<std::uint8_t>(toggle | (last ? ((7 - count) << 1 | 1) : 0));
    last_segment_ = answer;
    return answer;
}

}  // namespace servo::test
