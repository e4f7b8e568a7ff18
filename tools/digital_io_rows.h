// The pins of the drive as the form `DigitalIO` knows them: a row for each, the object of its
// function, and the columns of states that come with it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/language.h"
#include "link/frame.h"

namespace servo::tools {

enum class IoSide : std::uint8_t { kInput, kOutput };
inline constexpr std::array kIoSides{IoSide::kInput, IoSide::kOutput};

inline constexpr int kBits = 8;  // boxes of a column, bit 0 first
inline constexpr int kInputPins = 8;
inline constexpr int kOutputPins = 7;
// Rows 0 to 7 are inputs, 8 to 14 outputs. Row 15 has its boxes, so that a column has eight of them
// on both sides, but neither a pin nor a tag.
inline constexpr int kIoRows = 16;
inline constexpr int kPinlessRow = 15;

constexpr IoSide side_of(int row) {
    return row < kInputPins ? IoSide::kInput : IoSide::kOutput;
}
constexpr int first_row(IoSide side) {
    return side == IoSide::kInput ? 0 : kInputPins;
}
constexpr int pins_of(IoSide side) {
    return side == IoSide::kInput ? kInputPins : kOutputPins;
}
// A row that stands for a pin.
constexpr bool is_pin(int row) {
    return row >= 0 && row < kPinlessRow;
}

// The tag of a row's `Text1`: "OD:201003:OD"; empty for row 15.
std::string_view tag_of(int row);
// The wire key in a tag. An empty tag has no digits in front of the size code, which leaves 2.
link::WireKey key_of_tag(std::string_view tag);

// A column of boxes: Check1 to Check4.
enum class IoColumn : std::uint8_t { kPolarity = 1, kInternal = 2, kSimulate = 3, kReal = 4 };
inline constexpr std::array kIoColumns{IoColumn::kPolarity, IoColumn::kInternal,
                                       IoColumn::kSimulate, IoColumn::kReal};
// In the order of the screen.
inline constexpr std::array kShownColumns{IoColumn::kSimulate, IoColumn::kInternal,
                                          IoColumn::kPolarity, IoColumn::kReal};

struct IoStates {
    IoSide side;
    IoColumn column;
};

// What an answer of the block carries: a column of states, the function of a row, or neither.
// (Input filter time is read with the block and shown on a page.)
std::optional<IoStates> states_of(link::Identity object);
std::optional<int> row_of(link::Identity object);
// The place of a row's value in the list of its side: subs 3 to 9 and 1D, subs 0F to 13, 1E and 1F.
constexpr int place_of(int row) {
    return row - first_row(side_of(row));
}
// The object behind a column, as a wire key.
link::WireKey column_key(IoSide side, IoColumn column);

// --- Texts, both languages in one string as the controls' tags have them
inline constexpr std::string_view kDigitalIOCaption = "数字IO设置/Digital IO Functions";
std::string_view frame_caption(IoSide side);
inline constexpr std::string_view kNumberCaption = "编号/Num";
inline constexpr std::string_view kFunctionCaption = "功能/Function";
std::string_view column_caption(IoSide side, IoColumn column);
// "Input 1".
base::Text pin_word(IoSide side);

}  // namespace servo::tools
