// What the status lanes know of the drive: the five objects that unit formulas need, the firmware
// check value and the two fault words.
#pragma once

#include <cstdint>
#include <string>

namespace servo::link {

// A drive object that formulas refer to. Clearing `seen` leaves the cached value as it was.
struct Operand {
    std::int32_t value = 0;
    bool seen = false;
};

struct FormulaOperands {
    Operand o64100320;  // encoder resolution, counts per revolution
    Operand o65100310;  // peak current, tenths of an ampere; held as signed 16 bits
    Operand o30400710;
    Operand o60F61310;
    Operand o60F61110;

    void clear_seen() {
        for (Operand* operand : {&o64100320, &o65100310, &o30400710, &o60F61310, &o60F61110})
            operand->seen = false;
    }
};

struct DriveValues {
    FormulaOperands operands;
    bool firmware_check_known = false;
    std::string firmware_check_text;  // hexadecimal, shown by `Download`; empty when not known
    std::uint16_t fault_word1 = 0;
    std::uint16_t fault_word2 = 0;
    std::string fault_text1 = "0000";  // as `Errors` shows them
    std::string fault_text2 = "0000";

    // Every flag; values stay.
    void clear_known() {
        operands.clear_seen();
        firmware_check_known = false;
    }
};

}  // namespace servo::link
