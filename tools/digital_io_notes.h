// What the form `DigitalIO` says beside its controls: warnings, what is forced, how old the states
// are, tool tips. All of it is an addition; nothing of it changes what is written.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "tools/digital_io_data.h"

namespace servo::tools {

// The two limit switches among the functions of an input, as the drive numbers them.
inline constexpr std::uint16_t kPositiveLimit = 0x0010;
inline constexpr std::uint16_t kNegativeLimit = 0x0020;

// States older than this are told with their age while the link is open. A full turn of the wheel
// with a long page on screen takes about as long.
inline constexpr std::chrono::seconds kOldAfter{5};

enum class IoWarning : std::uint8_t {
    kLimitSimulated,  // an input that carries a limit switch is forced
    kUnknownValue,    // a pin's value holds bits that the list does not name
    kDoubled,         // two pins of a side carry the same function
    kBadLines,        // the list has lines that hold no function
};

struct IoWarningText {
    IoWarning kind;
    std::string text;
};

// The worst first.
std::vector<IoWarningText> warnings_of(const DigitalIOData& data, base::Language language);
// All of it in one line: the first, and how many more there are. Empty when there is none.
std::string warning_line(const std::vector<IoWarningText>& warnings);
std::string warning_tip(const std::vector<IoWarningText>& warnings);  // one a line

// The pins that are forced: "Simulated: Input 3 (P Limit +), Output 2". Empty when none is.
std::string simulated_text(const DigitalIOData& data, base::Language language);

// What the line at the bottom says: live, or how old the states are and why.
std::string age_text(const DigitalIOData& data, std::optional<std::chrono::seconds> age,
                     base::Language language);
// Whether the states are shown grey.
bool states_old(const DigitalIOData& data, std::optional<std::chrono::seconds> age);

// "Input 3".
std::string pin_name(int row, base::Language language);
// "0x0010", four digits.
std::string code_text(std::uint16_t code);
// A row's functions, its object and its value, for the tool tip of `Text1`.
std::string row_tip(const DigitalIOData& data, int row, base::Language language);
// An entry's name, code and group, for the tool tip of its box.
std::string function_tip(const IoFunctions& functions, int index, base::Language language);
// What OK would write, for the chooser's last line.
std::string chosen_text(const Encoded& chosen, base::Language language);

}  // namespace servo::tools
