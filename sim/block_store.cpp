#include "sim/block_store.h"

#include <algorithm>
#include <span>

#include "sim/checksum.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

// Of a block.
constexpr std::size_t kField = 4;
constexpr std::size_t kHeadCharacters = 4 * kField;
constexpr std::size_t kSumCharacters = 8;
constexpr std::size_t kShortest = kHeadCharacters + 2 + kSumCharacters;
constexpr char kFill = '.';

// Of an image.
constexpr std::string_view kMagic = "QFW1";
constexpr std::size_t kLengthAt = 4;
constexpr std::size_t kCheckAt = 8;
constexpr std::size_t kTypeAt = 16;
constexpr std::size_t kTypeBytes = 16;
constexpr std::size_t kVersionAt = 32;
constexpr std::size_t kVersionBytes = 32;
constexpr std::size_t kImageHead = 64;

// Small letters only: the line is taken as it was sent.
std::optional<std::uint32_t> small_hex(std::string_view text) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'F'; })) {
        return std::nullopt;
    }
    return parse_hex(text, text.size());
}

struct BlockHead {
    std::size_t number = 0;
    std::size_t total = 0;
    std::size_t bytes = 0;
    std::uint32_t mark = 0;
};

std::optional<BlockHead> head_of(std::string_view block) {
    const auto number = small_hex(block.substr(0, kField));
    const auto total = small_hex(block.substr(kField, kField));
    const auto bytes = small_hex(block.substr(2 * kField, kField));
    const auto mark = small_hex(block.substr(3 * kField, kField));
    if (!number || !total || !bytes || !mark) return std::nullopt;
    return BlockHead{*number, *total, *bytes, *mark};
}

// Only the last block may be short: an image has no holes.
bool fits(const BlockHead& head, std::size_t characters) {
    if (head.total == 0 || head.total > kPages || head.number >= head.total) return false;
    if (head.bytes == 0 || head.bytes > kPageBytes) return false;
    if (head.number + 1 < head.total && head.bytes != kPageBytes) return false;
    return kHeadCharacters + 2 * head.bytes + kSumCharacters <= characters;
}

bool decode(std::string_view characters, std::vector<std::uint8_t>& bytes) {
    for (std::size_t i = 0; i + 2 <= characters.size(); i += 2) {
        const auto byte = small_hex(characters.substr(i, 2));
        if (!byte) return false;
        bytes.push_back(static_cast<std::uint8_t>(*byte));
    }
    return true;
}

std::uint32_t number_at(std::span<const std::uint8_t> bytes, std::size_t at) {
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
           static_cast<std::uint32_t>(bytes[at + 3]) << 24U;
}

// A text field up to its first zero; nothing when it holds what no text does.
std::optional<std::string> text_at(std::span<const std::uint8_t> bytes, std::size_t at,
                                   std::size_t size) {
    const auto field = bytes.subspan(at, size);
    const auto end = std::find(field.begin(), field.end(), 0);
    std::string text(field.begin(), end);
    const bool plain =
        std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
    const bool filled = std::all_of(end, field.end(), [](std::uint8_t byte) { return byte == 0; });
    if (text.empty() || !plain || !filled) return std::nullopt;
    return text;
}

}  // namespace

void BlockStore::erase() {
    pages_.clear();
    total_ = 0;
    mark_ = 0;
}

BlockStore::Result BlockStore::put(std::string_view block) {
    if (block.size() < kShortest || block.size() > kBlockCharacters) return Result::kLength;
    const std::string_view summed = block.substr(0, block.size() - kSumCharacters);
    const auto sum = small_hex(block.substr(summed.size()));
    if (!sum || *sum != crc32(summed)) return Result::kChecksum;
    const auto head = head_of(block);
    if (!head) return Result::kCharacters;
    if (!fits(*head, block.size())) return Result::kNumbers;
    const std::string_view fill = summed.substr(kHeadCharacters + 2 * head->bytes);
    Page page{std::string(block), {}};
    page.bytes.reserve(head->bytes);
    if (!decode(summed.substr(kHeadCharacters, 2 * head->bytes), page.bytes) ||
        fill.find_first_not_of(kFill) != std::string_view::npos) {
        return Result::kCharacters;
    }
    if (!pages_.empty() && (head->total != total_ || head->mark != mark_)) return Result::kForeign;
    const auto there = pages_.find(head->number);
    if (there != pages_.end() && there->second.bytes != page.bytes) return Result::kInUse;
    total_ = head->total;
    mark_ = head->mark;
    newest_ = head->number;
    pages_.insert_or_assign(head->number, std::move(page));
    return Result::kStored;
}

std::optional<FirmwareImage> BlockStore::verify(std::string_view type) const {
    if (pages_.empty() || pages_.size() != total_) return std::nullopt;
    const std::vector<std::uint8_t> image = bytes();
    if (image.size() < kImageHead || !std::equal(kMagic.begin(), kMagic.end(), image.begin())) {
        return std::nullopt;
    }
    if (number_at(image, kLengthAt) != image.size() - kImageHead) return std::nullopt;
    const std::uint32_t check = crc32(std::span(image).subspan(kTypeAt));
    const auto own_type = text_at(image, kTypeAt, kTypeBytes);
    auto version = text_at(image, kVersionAt, kVersionBytes);
    if (number_at(image, kCheckAt) != check || own_type != type || !version) return std::nullopt;
    return FirmwareImage{*own_type, *std::move(version), check, image.size()};
}

void BlockStore::damage() {
    const auto newest = pages_.find(newest_);
    if (newest != pages_.end()) newest->second.bytes.back() ^= 1U;
}

std::vector<std::uint8_t> BlockStore::bytes() const {
    std::vector<std::uint8_t> all;
    for (const auto& [number, page] : pages_)
        all.insert(all.end(), page.bytes.begin(), page.bytes.end());
    return all;
}

std::string BlockStore::characters() const {
    std::string all;
    for (const auto& [number, page] : pages_)
        all += page.characters;
    return all;
}

}  // namespace servo::sim
