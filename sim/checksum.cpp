#include "sim/checksum.h"

#include <array>

namespace servo::sim {

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;
constexpr std::uint32_t kAllOnes = 0xFFFFFFFF;

constexpr std::array<std::uint32_t, 256> make_table() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1U) != 0 ? rest >> 1U ^ kPolynomial : rest >> 1U;
        table.at(byte) = rest;
    }
    return table;
}

constexpr auto kTable = make_table();

template <typename Bytes>
std::uint32_t crc_of(const Bytes& bytes) {
    std::uint32_t crc = kAllOnes;
    for (const auto byte : bytes) {
        const auto low = static_cast<std::uint8_t>(crc ^ static_cast<std::uint8_t>(byte));
        crc = crc >> 8U ^ kTable.at(low);
    }
    return crc ^ kAllOnes;
}

}  // namespace

std::uint32_t crc32(std::span<const std::uint8_t> bytes) {
    return crc_of(bytes);
}

std::uint32_t crc32(std::string_view characters) {
    return crc_of(characters);
}

}  // namespace servo::sim
