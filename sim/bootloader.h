// The drive's bootloader: a dialogue of text lines through which a new program comes in.
//
// A line ends with CR. LF never counts, empty lines are passed over. Answers end with CR LF; what
// is refused begins with the banner's first two words, so that whoever waits for the bootloader not
// to speak hears it speak.
//
//   "hi"          "QRL400 bootloader 1.3"
//   type word     "right"                          "... wrong type"
//   "e"           "erased success"                 "... type first", "... erase failed"
//   "w"           "switch to block receive mode"   "... erase first", "... no block receive mode"
//   block         "programme ok"                   "... block error, checksum" and others
//   "go"          none: the program starts         "... image not valid"
//
// While it erases or programs, its receiver keeps 64 bytes; more are lost.
//
// Time is handed in. Like the drive's, its events come before bytes of the same moment.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/block_store.h"
#include "sim/boot_options.h"
#include "sim/installed_firmware.h"
#include "sim/statistics.h"

namespace servo::sim {

class Bootloader {
  public:
    // `options` may change between two calls. All of these must outlive the bootloader.
    Bootloader(const BootOptions& options, InstalledFirmware& firmware, Statistics& statistics);

    // Begins anew: what came before the power went off does not count. `id` is the one by which
    // frames of the running drive's protocol are told from text.
    void start(std::uint8_t id, std::uint32_t baud);
    // The banner that nobody asked for.
    void announce(std::chrono::microseconds now);

    void take(std::uint8_t byte, std::chrono::microseconds at);
    std::optional<std::chrono::microseconds> next_event() const;
    void handle_event(std::chrono::microseconds now);

    struct Reply {
        std::chrono::microseconds ready{0};
        std::string text;
    };
    std::vector<Reply> take_replies();

    enum class Outcome : std::uint8_t {
        kStay,
        kStart,   // the installed program starts
        kReturn,  // it was tried, and the drive comes back
        kHang,    // nothing goes on until the power goes off
    };
    Outcome take_outcome();

    const BlockStore& store() const { return store_; }

  private:
    enum class Work : std::uint8_t { kNone, kErase, kProgramme };
    struct Byte {
        std::uint8_t value = 0;
        std::chrono::microseconds at{0};
    };

    void process(std::uint8_t byte, std::chrono::microseconds at);
    void collect(std::uint8_t byte);
    void clear_line();
    bool inside_frame() const;
    std::chrono::microseconds patience() const;
    void give_up(std::chrono::microseconds now);
    void take_line(std::chrono::microseconds at);
    void take_command(const std::string& line, std::chrono::microseconds at);
    void take_type(const std::string& word, std::chrono::microseconds at);
    void take_block(const std::string& block, std::chrono::microseconds at);
    void go(std::chrono::microseconds at);
    void finish_work(std::chrono::microseconds now);
    void answer(BootStep step, std::string_view text, std::chrono::microseconds at);
    void refuse(BootStep step, std::string_view why, std::chrono::microseconds at);
    void complain(std::chrono::microseconds at);
    void say(std::string_view text, std::chrono::microseconds at);

    const BootOptions& options_;
    InstalledFirmware& firmware_;
    Statistics& statistics_;
    BlockStore store_;

    std::uint8_t id_ = 0;
    std::chrono::microseconds byte_time_{0};
    bool type_is_right_ = false;
    bool erased_ = false;
    bool block_mode_ = false;
    std::uint32_t block_count_ = 0;  // blocks that came since the erase

    std::string line_;
    bool spoilt_ = false;    // holds what no command does
    bool too_long_ = false;  // the line was longer than there is room for
    std::chrono::microseconds last_byte_{0};

    Work work_ = Work::kNone;
    std::chrono::microseconds work_ends_{0};
    std::deque<Byte> receiver_;
    std::vector<Reply> replies_;
    Outcome outcome_ = Outcome::kStay;
};

}  // namespace servo::sim
