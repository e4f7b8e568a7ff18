// `.pft` files: 32 lines of nine fields, an empty line, eight lines of three. The bytes are in the
// code page, lines end in CR LF. Columns `MODE` and `StartCond.` are not stored: they follow from
// the register.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "tools/position_table.h"

namespace servo::tools {

// The bytes of a file with all rows of the grids.
std::string position_file_bytes(const PositionGrids& grids);

// Steps and ramps that a file had; each line counts once, also when two name the same row.
struct PositionFileRows {
    int steps = 0;
    int ramps = 0;
    int skipped = 0;         // lines that were none
    bool all_steps = false;  // every row was there
    bool all_ramps = false;
};

// Takes the lines of a file into the grids. A line with another number of fields, or with an index
// that no row has, is skipped. A file without the empty line leaves the accelerations as they were.
PositionFileRows take_position_file(std::string_view bytes, PositionGrids& grids,
                                    const ListItems& combo2);

// False when the file could not be written; what was there stands.
bool write_position_file(const std::filesystem::path& file, const PositionGrids& grids);

}  // namespace servo::tools
