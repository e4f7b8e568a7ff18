// What the form `DigitalIO` holds. Plain values, kept by the form and shown by its window.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "tools/digital_io_list.h"
#include "tools/digital_io_rows.h"

namespace servo::tools {

// Colours of the choosers' background while they blink: red, green, blue.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Colour&) const = default;
};
inline constexpr Colour kBlinkGrey{224, 224, 224};
inline constexpr Colour kBlinkBlue{209, 216, 239};  // and the colour at rest
inline constexpr int kBlinkTicks = 6;

inline constexpr std::size_t kFunctionWords = 11;  // of a side's list; the pins come first

using IoBoxes = std::array<bool, kBits>;

// A column of eight boxes, and what is known of it.
struct IoColumnState {
    IoBoxes boxes{};
    bool seen = false;   // has been answered at least once
    bool fresh = false;  // has been answered since the link was opened
};

// A row's function, and what is known of it.
struct IoRowState {
    bool seen = false;
    bool fresh = false;
    bool waiting = false;  // written, and not read back yet
};

struct DigitalIOData {
    FunctionList list;

    // Function values by their place.
    std::array<std::uint16_t, kFunctionWords> din{};
    std::array<std::uint16_t, kFunctionWords> dout{};
    std::array<IoRowState, kIoRows> rows{};
    std::array<std::array<IoColumnState, 4>, 2> columns{};  // by side, then Check1 to Check4

    // The chooser.
    std::optional<int> open_row;  // whose button is marked; its side tells which picture is shown
    std::vector<bool> checkboxdin;
    std::vector<bool> checkboxdout;

    // Blinking.
    bool Timer1_enabled = false;
    int Timer1_ticks = 0;
    Colour picture = kBlinkBlue;

    // The clock's time of the last answer of any row or column; nothing before the first.
    std::optional<std::chrono::microseconds> last_answer;
    bool link_open = false;

    const IoColumnState& column(IoSide side, IoColumn which) const {
        return columns[static_cast<std::size_t>(side)][static_cast<std::size_t>(which) - 1];
    }
    IoColumnState& column(IoSide side, IoColumn which) {
        return columns[static_cast<std::size_t>(side)][static_cast<std::size_t>(which) - 1];
    }
    bool box(int row, IoColumn which) const {
        const auto bit = static_cast<std::size_t>(row % kBits);
        return column(side_of(row), which).boxes[bit];
    }
    std::uint16_t value(int row) const {
        const auto place = static_cast<std::size_t>(place_of(row));
        return side_of(row) == IoSide::kInput ? din[place] : dout[place];
    }
    std::uint16_t& value(int row) {
        const auto place = static_cast<std::size_t>(place_of(row));
        return side_of(row) == IoSide::kInput ? din[place] : dout[place];
    }
    const IoFunctions& functions(IoSide side) const {
        return side == IoSide::kInput ? list.inputs : list.outputs;
    }
    const std::vector<bool>& ticks(IoSide side) const {
        return side == IoSide::kInput ? checkboxdin : checkboxdout;
    }
    std::vector<bool>& ticks(IoSide side) {
        return side == IoSide::kInput ? checkboxdin : checkboxdout;
    }
};

}  // namespace servo::tools
