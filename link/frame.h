// Bytes of the line: payloads of eight bytes in the shape of SDO messages, and the frame of ten
// bytes that carries one over the serial line. Numbers are little-endian.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "dictionary/keys.h"

namespace servo::link {

using dictionary::Identity;
using dictionary::WireKey;

using Payload =
    std::array<std::uint8_t, 8>;             // command, index low, index high, sub, four data bytes
using Frame = std::array<std::uint8_t, 10>;  // communication ID, payload, checksum

inline constexpr std::size_t kFrameSize = 10;

// Command bytes.
inline constexpr std::uint8_t kWrite1 = 0x2F;
inline constexpr std::uint8_t kWrite2 = 0x2B;
inline constexpr std::uint8_t kWrite4 = 0x23;
inline constexpr std::uint8_t kRead = 0x40;
inline constexpr std::uint8_t kSegment0 = 0x60;  // request: next segment, toggle 0
inline constexpr std::uint8_t kSegment1 = 0x70;  // request: next segment, toggle 1
inline constexpr std::uint8_t kAnswer1 = 0x4F;
inline constexpr std::uint8_t kAnswer2 = 0x4B;
inline constexpr std::uint8_t kAnswer4 = 0x43;
inline constexpr std::uint8_t kAnswerSegmented = 0x41;
inline constexpr std::uint8_t kWritten = 0x60;
inline constexpr std::uint8_t kAbort = 0x80;

// Two's complement of the sum of the bytes, modulo 256.
std::uint8_t checksum(std::span<const std::uint8_t> bytes);

Frame make_frame(std::uint8_t comm_id, const Payload& payload);

// The payload of a request. `str_read_step` (0, 1, 2) chooses the command of a string read. A write
// of a size other than 1, 2, 4 has the command byte 0. All four value bytes travel whatever the
// size.
Payload make_payload(WireKey key, std::int32_t value, bool read, std::uint8_t str_read_step);

// The 24-bit identity of a reply, and its value by the size code of the decoder (1, 11, 2, 12, 4,
// 14; any other gives 0).
Identity reply_key(const Payload& payload);
double reply_value(const Payload& payload, int size_code);

}  // namespace servo::link
