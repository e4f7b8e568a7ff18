// The list of functions that a digital input or output can carry, \sys\DigitIOSettings.ini. A drive
// family has its own list, so nothing of it stands in the program.
//
// A pin's function object is a number of 16 bits. Codes from 0x8000 up carry the number of their
// group in the top four bits and one function in the other twelve; the codes below are one group of
// fifteen functions. So a pin can carry several functions of one group at once, and never of two.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::tools {

inline constexpr std::string_view kFunctionListFile = R"(\sys\DigitIOSettings.ini)";
inline constexpr std::string_view kInputSection = "[DigitIN]";
inline constexpr std::string_view kOutputSection = "[DigitOUT]";

// A side has fifteen functions below 0x8000 and eight groups of twelve above. What a file holds
// beyond that has no code of its own any more.
inline constexpr int kMostFunctions = 15 + 8 * 12;

struct IoFunction {
    std::string chinese;
    std::string english;
    std::uint16_t code = 0;
};

// The name for the screen. A function that the list names in one language has that name in both;
// one without any is "保留" or "Reserved".
std::string_view name_of(const IoFunction& function, base::Language language);

// The first code at or above which a group has 12 bits; up to it all belongs to the 15-bit group.
inline constexpr std::uint16_t kFirstHighCode = 0x8000;

// What the boxes of a chooser say together.
struct Encoded {
    int groups = 0;           // with a tick
    std::uint16_t value = 0;  // to be written; of no use when there are two groups or more
};

// The functions of one side in the order of the file.
class IoFunctions {
  public:
    // False when the side is full.
    bool add(IoFunction function);

    int count() const { return static_cast<int>(functions_.size()); }
    const IoFunction& at(int index) const { return functions_.at(static_cast<std::size_t>(index)); }
    int groups() const { return static_cast<int>(last_.size()); }
    // 0 for a group that there isn't.
    int entries_of(int group) const;
    // -1 for a group that there isn't, so that the first entry of group n stands behind the last
    // one of group n - 1.
    int last_of(int group) const;
    int group_of(int index) const;

    // Nothing when the value is above all groups.
    std::optional<int> group_of_value(std::uint16_t value) const;
    // One flag for each entry.
    std::vector<bool> decode(std::uint16_t value) const;
    // Bits of a value that name no entry of its group; 0 when the list explains it whole.
    std::uint16_t unnamed_bits(std::uint16_t value) const;
    Encoded encode(const std::vector<bool>& ticks) const;
    // The names of a value's functions, joined by "+".
    std::string names(std::uint16_t value, base::Language language) const;

  private:
    std::uint16_t first_code(int group) const { return at(last_of(group - 1) + 1).code; }

    std::vector<IoFunction> functions_;
    std::vector<int> last_;  // index of each group's last entry
    int stored_group_ = 0;   // code / 4096 of the entry that began the last group
};

enum class ListState : std::uint8_t {
    kRead,
    kEmpty,     // no line at all
    kNotRight,  // the first line is not "[DigitIN]"
    kMissing,   // can't be opened
};

struct FunctionList {
    ListState state = ListState::kMissing;
    IoFunctions inputs;
    IoFunctions outputs;
    // Lines that hold no function, counted from 1. They are passed over: one slip of the pen must
    // not take the rest of the list away. Empty lines are none of them.
    std::vector<int> bad_lines;
};

// Bytes of the code page.
FunctionList parse_function_list(std::string_view content);
FunctionList load_function_list(const std::filesystem::path& folder);

}  // namespace servo::tools
