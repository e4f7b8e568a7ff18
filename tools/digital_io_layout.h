// Where the parts of the form `DigitalIO` stand. The reduced product has its controls in other
// places than the full one: inputs and outputs side by side, the chooser below them.
#pragma once

#include <cstdint>

#include "dictionary/store.h"
#include "tools/digital_io_rows.h"

namespace servo::tools {

// A place in the form's grid.
struct IoPlace {
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
    bool operator==(const IoPlace&) const = default;
};

struct IoLayout {
    IoPlace inputs;
    IoPlace outputs;
    IoPlace chooser;
    int growing_row = 0;  // takes the room that is left over
};

IoLayout layout_of(dictionary::Variant variant);

// Where a box stands in its chooser.
struct IoBoxPlace {
    int row = 0;
    int column = 0;
    bool operator==(const IoBoxPlace&) const = default;
};
constexpr int boxes_in_column(IoSide side) {
    return side == IoSide::kInput ? 17 : 9;
}
constexpr IoBoxPlace box_place(IoSide side, int index) {
    return {index % boxes_in_column(side), index / boxes_in_column(side)};
}
// From one box to the next below it, in 1/1440 of an inch.
constexpr int box_pitch(IoSide side) {
    return side == IoSide::kInput ? 275 : 300;
}
constexpr int pixels(int units, int dots_per_inch) {
    return (units * dots_per_inch + 720) / 1440;
}

}  // namespace servo::tools
