#include "firmware/image.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/ascii.h"
#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::firmware {

namespace {

constexpr std::string_view kMark = "This is ";
// Case counts: an image whose header says "Firmware" is refused, although the display of an own
// brand writes it so.
constexpr std::string_view kWord = "firmware";
constexpr std::string_view kOwnBrand = "This is ZARN Firmware";
constexpr std::size_t kTypeWord = 2;
constexpr char kCarriageReturn = '\r';

// The text between occurrence `index` - 1 and occurrence `index` of the separator.
std::optional<std::string_view> piece(std::string_view text, std::string_view separator,
                                      std::size_t index) {
    for (; index > 0; --index) {
        const std::size_t at = text.find(separator);
        if (at == std::string_view::npos) return std::nullopt;
        text.remove_prefix(at + separator.size());
    }
    return text.substr(0, text.find(separator));
}

std::string without(std::string text, std::string_view unwanted) {
    for (std::size_t at = text.find(unwanted); at != std::string::npos;
         at = text.find(unwanted, at))
        text.erase(at, unwanted.size());
    return text;
}

}  // namespace

std::size_t bytes_of(const Blocks& blocks) {
    return std::accumulate(
        blocks.begin(), blocks.end(), std::size_t{0},
        [](std::size_t sum, const std::string& block) { return sum + block.size(); });
}

ImageFault parse_header(std::string_view line, ImageHeader& header) {
    ImageHeader found;
    found.line = base::gbk_to_utf8(line);
    const std::string_view text = found.line;
    if (text.find(kMark) == std::string_view::npos) return ImageFault::kBadHeader;
    const auto tail = piece(text, kWord, 1);
    if (!tail) return ImageFault::kBadHeader;
    const auto type = piece(*piece(text, kWord, 0), " ", kTypeWord);
    if (!type) return ImageFault::kNoType;
    found.tail = *tail;
    found.FW_Type = *type;
    // Without its first character, which parts it from the word.
    found.CRC_From_File = tail->substr(base::utf8_prefix(*tail, 1).size());
    header = std::move(found);
    return ImageFault::kNone;
}

std::string shown_header(const ImageHeader& header, bool own_brand) {
    std::string line = own_brand ? std::string(kOwnBrand) + header.tail : header.line;
    return without(std::move(line), header.CRC_From_File + ".") + "\r\nCRC:" + header.CRC_From_File;
}

std::size_t block_count(std::size_t characters) {
    return static_cast<std::size_t>(
        base::round_half_even(static_cast<double>(characters) / kBlockCharacters));
}

// One byte is one character: the payload is the image maker's text and the bootloader's business.
Blocks cut_blocks(std::string_view payload) {
    const std::size_t count = block_count(payload.size());
    Blocks blocks(count + 1);
    for (std::size_t i = 0; i < count; ++i) {
        blocks[i].reserve(kBlockCharacters + 1);
        blocks[i] = base::ascii_lower(payload.substr(i * kBlockCharacters, kBlockCharacters));
        blocks[i].push_back(kCarriageReturn);
    }
    return blocks;
}

Image read_image(std::string_view content) {
    Image image;
    base::LineReader lines(content);
    const auto first = lines.next();
    if (!first) {
        image.fault = ImageFault::kBadHeader;
        return image;
    }
    image.fault = parse_header(*first, image.header);
    if (image.fault != ImageFault::kNone) return image;
    const auto payload = lines.next();
    if (!payload) return image;
    if (block_count(payload->size()) > kMaxBlocks) {
        image.fault = ImageFault::kTooLong;
        return image;
    }
    image.payload_characters = payload->size();
    const std::size_t sent = block_count(payload->size()) * kBlockCharacters;
    image.lost_characters = payload->size() > sent ? payload->size() - sent : 0;
    image.blocks = std::make_shared<const Blocks>(cut_blocks(*payload));
    return image;
}

}  // namespace servo::firmware
