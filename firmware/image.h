// The firmware image `*.servo`: a header line that names the firmware's type, and one line with the
// whole payload as text. Anything behind the second line is ignored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace servo::firmware {

// Payload characters of a full block; its CR comes on top.
inline constexpr std::size_t kBlockCharacters = 4120;
// The counter of the next block has 16 bits with a sign.
inline constexpr std::size_t kMaxBlocks = 32767;

// `fw_blocks`: entries 0 to n - 1 are sent as they stand, each with its CR; the entry n is empty.
using Blocks = std::vector<std::string>;

// n, the highest index: the number of blocks.
inline std::size_t highest_index(const Blocks& blocks) {
    return blocks.empty() ? 0 : blocks.size() - 1;
}
std::size_t bytes_of(const Blocks& blocks);

struct ImageHeader {
    std::string line;           // as it stands in the file, in UTF-8
    std::string tail;           // the piece behind the first "firmware", up to any next one
    std::string FW_Type;        // the word that the bootloader must know
    std::string CRC_From_File;  // shown only; nothing here computes a checksum of the payload
};

enum class ImageFault : std::uint8_t {
    kNone,
    kBadHeader,  // no line 1, or one that is not an image's
    kNoType,     // an image's line 1 with fewer than three words before "firmware"
    kTooLong,    // more blocks than their counter can count
};

// `header` gets what line 1 tells; kNone, kBadHeader or kNoType.
ImageFault parse_header(std::string_view line, ImageHeader& header);

// What the form shows of it: the header without the checksum and its full stop, and the checksum on
// a line of its own. A brand of its own (`Tavro_Nevra_Other_mode` other than 0) shows another name.
std::string shown_header(const ImageHeader& header, bool own_brand);

// The number of blocks of so many characters: to the nearest whole number, halves to the even one.
// So a rest below half a block is never sent, and a longer one goes out as a short block.
std::size_t block_count(std::size_t characters);

// One line, in small letters, cut into blocks. Nothing is known of what the characters mean.
Blocks cut_blocks(std::string_view payload);

struct Image {
    ImageFault fault = ImageFault::kNone;
    ImageHeader header;
    // Nothing when line 2 is missing: whoever reads the image keeps the blocks that he has.
    std::shared_ptr<const Blocks> blocks;
    std::size_t payload_characters = 0;
    std::size_t lost_characters = 0;  // at the end of the payload, left out by the rounding
};

// The bytes of a file.
Image read_image(std::string_view content);

}  // namespace servo::firmware
