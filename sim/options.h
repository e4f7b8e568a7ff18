// What a simulated drive is built from, and the faults of its line. Plain values: the program fills
// them from its command line, a test by hand.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"
#include "sim/boot_options.h"
#include "sim/rail.h"

namespace servo::sim {

// What happens to frames that the drive sends. Probabilities are for each frame and are drawn in
// the order in which they stand here, so that one more fault turned on does not shift the others.
struct LineFaults {
    double drop = 0.0;                        // the frame is never sent
    double foreign = 0.0;                     // another station's ID, with a right checksum
    double corrupt = 0.0;                     // one to three bytes are changed to other values
    double doubled = 0.0;                     // the frame is sent twice
    double lose = 0.0;                        // one byte of the frame is missing
    double stutter = 0.0;                     // one byte of the frame is sent twice
    std::chrono::milliseconds delay{0};       // every answer is that much later
    bool silent = false;                      // requests are executed, nothing is answered
    std::vector<dictionary::Identity> abort;  // every access is refused
    std::vector<dictionary::Identity> mute;   // executed, never answered
};

// One object's own factory value, in place of the one of the data; at the first power-up it also
// goes before a stored value. A number (decimal, or hexadecimal behind "0x"), or the text of a
// string object.
struct Setting {
    dictionary::Identity object = 0;
    std::string value;
};

struct Options {
    std::uint8_t id = 127;       // communication ID, the first byte of every frame
    std::uint32_t baud = 38400;  // line rate: the spacing of answers, and the silence that ends a
                                 // broken frame
    std::chrono::microseconds turnaround{300};  // from a request's last byte to its execution
    std::uint64_t seed = 1;                     // of line faults and of noise on live values
    std::filesystem::path data;  // the folder that holds sim/values.tsv; empty: no table
    std::string values;          // text of a value table, in place of the file if not empty
    std::filesystem::path
        state_file;                 // non-volatile memory between runs; empty: in the object only
    std::uint8_t pins = 0;          // levels at the digital inputs, bit 0 for input 1
    std::optional<RailSetup> rail;  // the axis has switches and ends; nothing: it turns for ever
    bool bootloader = false;   // power up as after a transfer that broke off: in the bootloader
    std::uint16_t fault1 = 0;  // fault bits that are raised at every power-up
    std::uint16_t fault2 = 0;
    LineFaults faults;
    BootOptions boot;
    std::vector<Setting> settings;
};

// Reads one fault of the command line ("drop:0.01", "delay:20", "silent", "abort:606300",
// "fault1:0200", "boot-silent:erase" ...) into the options. Gives what is wrong with it, nothing
// when it is good.
std::optional<std::string> add_fault(Options& options, std::string_view spec);

// Reads "KEY=VALUE", KEY being six hexadecimal digits.
std::optional<std::string> add_setting(Options& options, std::string_view spec);

}  // namespace servo::sim
