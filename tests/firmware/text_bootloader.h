// A bootloader at the far end of the virtual line, with no more in it than a text dialogue needs.
// Independent of the simulated drive's, so that the two readings of the dialogue check each other.
//
// It knows one line at a time: "hi" gets the banner, its type word "right", "e" erases, "w" makes
// the next line a block, "go" starts the firmware. Anything else gets "?". While the firmware runs
// it hears one thing only: the frame that calls the bootloader.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/virtual_line.h"
#include "support/virtual_time.h"

namespace servo::test {

class TextBootloader {
  public:
    // A reply, in pieces that leave so long after the one before.
    struct Piece {
        std::chrono::microseconds after{0};
        std::string text;
    };

    TextBootloader(VirtualTime& time, VirtualLine& line);

    // Power off and on: it waits in its bootloader, and has forgotten half a line.
    void power_up();
    void say(std::string_view text);
    void say(std::vector<Piece> pieces);

    std::string type = "ZARN";
    bool in_bootloader = false;
    bool silent = false;
    bool deaf_to_call = false;  // the running firmware does not know the call
    // What it does about a spoilt image. The last 8 characters of each block are a checksum of the
    // rest and of the block's place.
    enum class Verifies : std::uint8_t {
        kNothing,  // believes everything
        kImage,    // at "go": comes back with its banner
        kBlocks,   // at each block too: does not say that it was programmed
    };
    Verifies verifies = Verifies::kNothing;
    int expected_blocks = 0;  // of the whole image, as a header in it would tell
    bool starts = true;       // false: comes back with its banner whatever it stored
    std::chrono::microseconds turnaround{0};
    std::chrono::microseconds erase_time{std::chrono::milliseconds(200)};
    std::chrono::microseconds restart_time{std::chrono::milliseconds(300)};
    // What leaves in place of a reply to a line; nothing: the reply itself. `turn` counts lines and
    // the call from 0.
    std::function<std::optional<std::vector<Piece>>(int turn, const std::string& reply)> instead;

    // What came in: lines without their CR (blocks too), the call as "<call>".
    std::vector<std::string> lines;
    std::string stored;
    int blocks = 0;
    int bad_blocks = 0;
    bool erased = false;
    bool started = false;  // the new firmware runs
    int other_frames = 0;  // bytes of frames that were no call, counted in tens

    static std::string checksum_text(std::string_view payload);  // 8 small hexadecimal digits
    // A block whose last 8 characters are its checksum.
    static std::string sealed(std::string block, std::size_t place);

  private:
    void receive(std::uint8_t byte);
    void receive_frame_byte(std::uint8_t byte);
    void take_line(std::string line);
    void reply(const std::string& text, std::chrono::microseconds after);
    void take_block(std::string block);
    void go();
    std::string banner() const { return type + " bootloader V1.0\r\n"; }

    VirtualTime& time_;
    VirtualLine& line_;
    std::string input_;
    std::string frame_;
    bool block_mode_ = false;
};

}  // namespace servo::test
