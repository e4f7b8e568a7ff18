// The check value of the bootloader's blocks and images: CRC-32 with the reversed polynomial
// 0xEDB88320, start value and final inversion all ones. Of "123456789" it is 0xCBF43926.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace servo::sim {

std::uint32_t crc32(std::span<const std::uint8_t> bytes);
std::uint32_t crc32(std::string_view characters);

}  // namespace servo::sim
