// The table on its way between grids and drive: 208 objects in a fixed order. Which object stands
// on a line of the list is data; what the line means is told by its number alone.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "dictionary/keys.h"
#include "tools/position_table.h"

namespace servo::tools {

inline constexpr int kTransferLines = 208;
inline constexpr std::string_view kTransferFile = "\\sys\\PosFlow.cdo";

// Wire keys, one for each line.
using TransferList = std::array<dictionary::WireKey, kTransferLines>;

// A list of 208 lines of eight hexadecimal digits: index, sub-index, length in bits (08, 10, 20) or
// size code (01, 02, 04). Blanks do not count. Nothing when a line is missing or is none: a list
// with a gap would put values into wrong cells. What stands behind the last line is not read.
std::optional<TransferList> parse_transfer_list(std::string_view content);
std::optional<TransferList> load_transfer_list(const std::filesystem::path& folder);

enum class TransferUnit : std::uint8_t {
    kRamp,      // `MSHFlexGrid1`, 32 bits signed, turns/s^2 with two places
    kPosition,  // 32 bits signed, increments
    kSpeed,     // 32 bits signed, rpm with two places
    kCount,     // 16 bits unsigned: delay, loops
    kRegister,  // 16 bits unsigned, hexadecimal text; also columns 1 and 2
    kIndexes,   // 8 bits unsigned: column 6 in the high half, column 7 in the low half
};

struct TransferCell {
    TransferUnit unit = TransferUnit::kPosition;
    int row = 0;
    int column = 0;
};

// `line` from 0 to 207.
TransferCell transfer_cell(int line);
// Size code of the value decoder for an answer to that line.
int transfer_decoder(int line);

// Puts the drive's value into its cell (for a register and for indexes, into its cells).
// `resolution` is in encoder increments per turn; 0 gives the text of 0 where it is used.
void put_value(PositionGrids& grids, int line, double value, double resolution,
               const ListItems& combo2);

// The value of a line's cell for the drive: whole, halves to the even neighbour. What does not fit
// 32 bits becomes the nearest number that does: one that wraps round would turn the motor the other
// way.
std::int32_t value_for_drive(const PositionGrids& grids, int line, double resolution);

// The conversions themselves.
double ramp_from_drive(double value, double resolution);
double ramp_to_drive(double ramp, double resolution);  // not yet rounded
double speed_from_drive(double value, double resolution);
double speed_to_drive(double speed, double resolution);

}  // namespace servo::tools
