// The control register of a step: sixteen bits in ten fields.
//
// Bits 0 to 4 next step | 5, 6, 7 | 8 go on (0: the table stops behind the step) | 9, 10 the two
// conditions | 11 joins them | 12 and 13 mode | 14 and 15 start condition.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/language.h"
#include "tools/position_table.h"

namespace servo::tools {

namespace register_field {
inline constexpr int kNext = 0;
inline constexpr int kBit5 = 1;
inline constexpr int kBit6 = 2;
inline constexpr int kBit7 = 3;
inline constexpr int kGoOn = 4;
inline constexpr int kCondition0 = 5;
inline constexpr int kCondition1 = 6;
inline constexpr int kJoin = 7;  // 1: both conditions have to hold, 0: one of them is enough
inline constexpr int kMode = 8;
inline constexpr int kStartCond = 9;
}  // namespace register_field

struct RegisterField {
    base::Text name;
    int shift = 0;
    int mask = 1;     // of the field's own bits, behind the shift
    int highest = 1;  // of an entry
};

// An entry of 32 for the next step is let in although the table ends at 31, and lands in the
// register as 0.
inline constexpr int kHighestNext = 32;

inline constexpr std::array<RegisterField, kRegisterColumns> kRegisterFields{{
    {{"位0-4:下一个", "Bit0-4:Next Index"}, 0, 0x1F, kHighestNext},
    {{"位5", "Bit5"}, 5, 1, 1},
    {{"位6", "Bit6"}, 6, 1, 1},
    {{"位7", "Bit7"}, 7, 1, 1},
    {{"位8:继续/停止", "Bit8:Next/Stop"}, 8, 1, 1},
    {{"位9:条件0", "Bit9:Cond 0"}, 9, 1, 1},
    {{"位10:条件1", "Bit10:Cond 1"}, 10, 1, 1},
    {{"位11:与/或", "Bit11:And/Or"}, 11, 1, 1},
    {{"位12-13:模式", "Bit12-13:MODE"}, 12, 3, 2},
    {{"位14-15:触发", "Bit14-15:StartCond."}, 14, 3, 2},
}};

using RegisterValues = std::array<int, kRegisterColumns>;

RegisterValues decode_register(std::uint16_t value);
// Each field is cut to its own bits, so none spills into another.
std::uint16_t compose_register(const RegisterValues& fields);
int register_field_of(std::uint16_t value, int field);

// The register of a cell: hexadecimal text, of which four digits from 8000 up come out negative and
// are brought into the unsigned range. Of longer texts the low 16 bits count. What is no
// hexadecimal text reads as 0.
std::uint16_t register_of_text(std::string_view text);
std::string register_text(std::uint16_t value);

// Decodes a register into row 2 of `MSHFlexGrid3` and into columns 1, 2 and 8 of a row (1 to 32) of
// `MSHFlexGrid2`.
void update_CTL_REG(PositionGrids& grids, int row, std::uint16_t value, const ListItems& combo2);

// Columns 1 and 2 of a row from a register, column 8 untouched.
void set_register_texts(StepGrid& steps, int row, std::uint16_t value, const ListItems& combo2);

// The register that row 2 of `MSHFlexGrid3` stands for. Whole numbers, halves to the even one.
std::uint16_t compose_from_grid(const RegisterGrid& fields);

}  // namespace servo::tools
