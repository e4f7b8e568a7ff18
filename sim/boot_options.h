// What the bootloader is like, and what goes wrong in it.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace servo::sim {

// The turns of the dialogue, as one can ask for silence in them.
enum class BootStep : std::uint8_t {
    kEntry,   // the banner behind the object write that calls the bootloader
    kHi,      // "hi"
    kType,    // the type word
    kErase,   // "e"
    kSwitch,  // "w"
    kBlock,   // a block
    kGo,      // "go"
};

// The word of the options; nothing for another one.
std::optional<BootStep> parse_boot_step(std::string_view word);

struct BootOptions {
    std::string type = "QRL400";  // the word that a firmware must be made for
    std::chrono::milliseconds erase_time{2560};
    std::chrono::milliseconds programme_time{10};  // of one block

    std::set<BootStep> silent;  // done, not answered; "go": neither answers nor starts
    bool wrong_type = false;    // no type word is the right one
    bool erase_fails = false;   // takes its time and fails; what was there is lost all the same
    bool no_switch = false;     // "w" is refused
    bool start_fails = false;   // a whole image does not start: the drive is back in its bootloader
    std::optional<std::uint32_t> refused_block;  // from 1: answered as if it came in broken
    std::optional<std::uint32_t> flash_block;  // from 1: acknowledged, and stored with a wrong bit
};

}  // namespace servo::sim
