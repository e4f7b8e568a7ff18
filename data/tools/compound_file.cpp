#include "data/tools/compound_file.h"

#include <bit>

namespace servo::data {

namespace {

constexpr std::size_t kSector = 512;
constexpr std::size_t kSmallStream = 4096;  // shorter streams lie in a container of their own
constexpr std::size_t kEntriesPerSector = kSector / 4;
constexpr std::size_t kHeaderTable = 109;  // places for table sectors in the header
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kTableSector = 0xFFFFFFFD;
constexpr std::uint32_t kNobody = 0xFFFFFFFF;

enum EntryType : std::uint32_t { kUnused = 0, kStream = 2, kRoot = 5 };

void directory_entry(ByteWriter& out, std::string_view name, EntryType type, std::uint32_t child,
                     std::uint32_t start, std::size_t size) {
    constexpr std::size_t kNameBytes = 64;
    constexpr std::uint32_t kBlack = 1;
    for (const char character : name)
        out.u16(static_cast<unsigned char>(character));
    out.fill(kNameBytes - 2 * name.size());
    out.u16(name.empty() ? 0 : static_cast<std::uint32_t>(2 * name.size() + 2));
    out.u8(type).u8(kBlack).u32(kNobody).u32(kNobody).u32(child);
    out.fill(36);  // class, state and times
    out.u32(start).u32(static_cast<std::uint32_t>(size)).u32(0);
}

std::size_t sectors_of(std::size_t bytes) {
    return (bytes + kSector - 1) / kSector;
}

}  // namespace

ByteWriter& ByteWriter::put(std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes_ += static_cast<char>(value >> 8 * i & 0xFF);
    return *this;
}

ByteWriter& ByteWriter::f64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return u32(static_cast<std::uint32_t>(bits)).u32(static_cast<std::uint32_t>(bits >> 32));
}

void ByteWriter::patch_u32(std::size_t place, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes_[place + i] = static_cast<char>(value >> 8 * i & 0xFF);
}

// Sectors in their order: the stream, the directory, the table that chains them. A document of this
// program needs far fewer table sectors than the header has places.
std::string compound_file(std::string_view name, std::string stream) {
    if (stream.size() < kSmallStream) stream.resize(kSmallStream);
    const std::size_t size = stream.size();
    const std::size_t count = sectors_of(size);
    stream.resize(count * kSector);
    std::size_t tables = 1;
    while (count + 1 + tables > tables * kEntriesPerSector)
        ++tables;

    ByteWriter out;
    out.raw("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1").fill(16);
    out.u16(0x3E).u16(3).u16(0xFFFE).u16(9).u16(6).fill(6);  // version, byte order, sector sizes
    out.u32(0).u32(static_cast<std::uint32_t>(tables));
    out.u32(static_cast<std::uint32_t>(count)).u32(0).u32(kSmallStream);
    out.u32(kEndOfChain).u32(0).u32(kEndOfChain).u32(0);
    for (std::size_t i = 0; i < kHeaderTable; ++i)
        out.u32(i < tables ? static_cast<std::uint32_t>(count + 1 + i) : kFree);

    out.raw(stream);
    directory_entry(out, "Root Entry", kRoot, 1, kEndOfChain, 0);
    directory_entry(out, name, kStream, kNobody, 0, size);
    directory_entry(out, {}, kUnused, kNobody, 0, 0);
    directory_entry(out, {}, kUnused, kNobody, 0, 0);

    for (std::size_t sector = 0; sector < tables * kEntriesPerSector; ++sector) {
        if (sector + 1 < count)
            out.u32(static_cast<std::uint32_t>(sector + 1));
        else if (sector <= count)
            out.u32(kEndOfChain);  // of the stream, of the directory
        else
            out.u32(sector <= count + tables ? kTableSector : kFree);
    }
    return out.bytes();
}

}  // namespace servo::data
