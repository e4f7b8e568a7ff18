// What was said on the line during a transfer, both ways, with its times: to be looked at and kept
// when a transfer has failed.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>

namespace servo::firmware {

struct DialogueEntry {
    enum class Kind : std::uint8_t {
        kCommand,  // sent: a word, or a block
        kFrame,    // sent: the frame that calls the bootloader
        kReply,    // received
        kEvent,    // neither: a start, an end, a message
    };
    std::chrono::microseconds at{0};  // since the start of the transfer
    Kind kind = Kind::kEvent;
    std::uint8_t step = 0;
    std::string bytes;
};

class DialogueLog {
  public:
    // Entries beyond this many bytes push the oldest ones out.
    static constexpr std::size_t kMaxBytes = std::size_t{4} * 1024 * 1024;

    void begin(std::chrono::microseconds now);
    // A reply that comes in pieces becomes one entry, as long as nothing else lies between them and
    // no line has ended.
    void add(DialogueEntry::Kind kind, std::uint8_t step, std::string_view bytes,
             std::chrono::microseconds now);

    const std::deque<DialogueEntry>& entries() const { return entries_; }
    std::size_t dropped() const { return dropped_; }  // entries that were pushed out
    std::uint64_t changes() const { return changes_; }
    std::uint64_t transfers() const { return transfers_; }  // begun so far

    // All entries, one a line, blocks in full.
    std::string text() const;
    bool save(const std::filesystem::path& file) const;

  private:
    std::chrono::microseconds start_{0};
    std::deque<DialogueEntry> entries_;
    std::size_t bytes_ = 0;
    std::size_t dropped_ = 0;
    std::uint64_t changes_ = 0;
    std::uint64_t transfers_ = 0;
};

// "    1.234 s  step 3  > hi<CR>"; long texts are shortened for the screen.
std::string shown_entry(const DialogueEntry& entry, bool shortened = true);

}  // namespace servo::firmware
