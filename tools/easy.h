// The page `EASY1` presents a first set-up: motor, control command, inputs and outputs,
// application. It is a presentation: it reads nothing from the drive and writes nothing to it, and
// its button has no action. What stands on it is here.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "base/language.h"

namespace servo::tools::easy {

inline constexpr std::string_view kCaption = "快速设置/EASY Setup Wizard";

// A named control and its caption, "Chinese/English".
struct Labelled {
    std::string_view control;
    std::string_view caption;
};
struct Box {
    std::string_view control;
    std::string_view text;     // default
    std::string_view label;    // control of its caption
    std::string_view caption;  // "Chinese/English"
    std::string_view unit;     // may be empty
};

// How the drive is to be commanded, by the position in Combo1: the item, and the frame that it
// shows in the one place of the four.
struct Method {
    std::string_view item;
    Labelled frame;
};
inline constexpr int kMethods = 4;
std::span<const Method, kMethods> methods();

std::span<const std::string_view> pulse_types();      // Combo2
std::span<const std::string_view> analog_channels();  // Combo3

// Text2 to Text6. The help with the gear factor takes the first two's place: nothing is computed.
inline constexpr int kPulseBoxes = 5;
std::span<const Box, kPulseBoxes> pulse_boxes();
constexpr bool box_enabled(int box, bool gear_help) {
    return (box < 2) != gear_help;
}

// MSHFlexGrid1: the pins; the functions stay empty.
inline constexpr std::array<std::string_view, 2> kColumns{"Pin", "Function"};
inline constexpr int kPins = 12;
std::string pin_text(int row);  // from 0

// Additions: what the page is, and where the real settings are.
std::string_view note();
base::Text button_tip();

}  // namespace servo::tools::easy
