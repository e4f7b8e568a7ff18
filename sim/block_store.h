// The drive's program memory as its bootloader fills it: pages that come as blocks of characters.
//
// A block is a line of up to 4120 characters, all of them small letters, digits or full stops:
//
//   0..3      number of the block, from 0         four hexadecimal digits, as all numbers here
//   4..7      number of blocks of the image       1 to 256
//   8..11     bytes in this block                 2048, in the last block 1 to 2048
//   12..15    mark of the image                   the same in all its blocks
//   16..      the bytes, two digits each
//   ..        full stops, any number of them
//   last 8    CRC-32 of all characters before
//
// The bytes of all blocks, one after the other, are the image. Numbers in it are low byte first:
//
//   0..3      "QFW1"
//   4..7      bytes behind this head of 64
//   8..11     CRC-32 of all from byte 16 on
//   12..15    0
//   16..31    type of the drive, filled up with zeros
//   32..63    software version, filled up with zeros
//   64..      the program
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace servo::sim {

inline constexpr std::size_t kBlockCharacters = 4120;
inline constexpr std::size_t kPageBytes = 2048;
inline constexpr std::size_t kPages = 256;

struct FirmwareImage {
    std::string type;
    std::string version;
    std::uint32_t check_value = 0;
    std::size_t bytes = 0;  // head and program
};

class BlockStore {
  public:
    enum class Result : std::uint8_t {
        kStored,      // also when the page held the same already
        kLength,      // shorter than a block with one byte can be, or longer than 4120
        kChecksum,    // the characters are not those that were sent
        kNumbers,     // no such page, or the bytes do not fit the block
        kCharacters,  // something else than what belongs there, although the sum is right
        kForeign,     // of another image than the blocks before
        kInUse,       // the page holds something else and can only be erased
    };

    void erase();
    Result put(std::string_view block);

    // The image when it is whole: all blocks there, the right type, its checksum right.
    std::optional<FirmwareImage> verify(std::string_view type) const;

    // Turns one bit of the page that was stored last over, as a worn-out memory would.
    void damage();

    // What is there, in the order of the pages: the bytes, and the characters of the blocks that
    // brought them.
    std::vector<std::uint8_t> bytes() const;
    std::string characters() const;
    std::size_t pages() const { return pages_.size(); }

  private:
    struct Page {
        std::string characters;
        std::vector<std::uint8_t> bytes;
    };

    std::map<std::size_t, Page> pages_;
    std::size_t total_ = 0;   // blocks of the image, from the first block that was stored
    std::uint32_t mark_ = 0;  // the same
    std::size_t newest_ = 0;  // page that was stored last
};

}  // namespace servo::sim
