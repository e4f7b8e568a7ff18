#include "link/frame.h"

#include <algorithm>
#include <numeric>

namespace servo::link {

namespace {

// Of a write, by the size code in the key's low byte. 0 for a size that has no command: the payload
// still travels, and the drive refuses it.
std::uint8_t write_command(std::uint8_t size) {
    if (size == 1) return kWrite1;
    if (size == 2) return kWrite2;
    if (size == 4) return kWrite4;
    return 0;
}

std::uint8_t read_command(std::uint8_t size, std::uint8_t str_read_step) {
    if (size != 6) return kRead;
    if (str_read_step == 1) return kSegment0;
    if (str_read_step == 2) return kSegment1;
    return kRead;
}

}  // namespace

std::uint8_t checksum(std::span<const std::uint8_t> bytes) {
    const unsigned sum = std::accumulate(bytes.begin(), bytes.end(), 0U);
    return static_cast<std::uint8_t>(0U - sum);
}

Frame make_frame(std::uint8_t comm_id, const Payload& payload) {
    Frame frame{comm_id};
    std::copy(payload.begin(), payload.end(), frame.begin() + 1);
    frame[9] = checksum(std::span(frame).first(9));
    return frame;
}

Payload make_payload(WireKey key, std::int32_t value, bool read, std::uint8_t str_read_step) {
    const auto size = static_cast<std::uint8_t>(key);
    const auto data = static_cast<std::uint32_t>(value);
    return {read ? read_command(size, str_read_step) : write_command(size),
            static_cast<std::uint8_t>(key >> 16),
            static_cast<std::uint8_t>(key >> 24),
            static_cast<std::uint8_t>(key >> 8),
            static_cast<std::uint8_t>(data),
            static_cast<std::uint8_t>(data >> 8),
            static_cast<std::uint8_t>(data >> 16),
            static_cast<std::uint8_t>(data >> 24)};
}

Identity reply_key(const Payload& payload) {
    return payload[2] * 0x10000 + payload[1] * 0x100 + payload[3];
}

double reply_value(const Payload& payload, int size_code) {
    const std::uint32_t u8 = payload[4];
    const std::uint32_t u16 = u8 | static_cast<std::uint32_t>(payload[5]) << 8;
    const std::uint32_t u32 = u16 | static_cast<std::uint32_t>(payload[6]) << 16 |
                              static_cast<std::uint32_t>(payload[7]) << 24;
    switch (size_code) {
        case 1:
            return u8;
        case 11:
            return static_cast<std::int8_t>(u8);
        case 2:
            return u16;
        case 12:
            return static_cast<std::int16_t>(u16);
        case 4:
            return u32;
        case 14:
            return static_cast<std::int32_t>(u32);
        default:
            return 0;
    }
}

}  // namespace servo::link
