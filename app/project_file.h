// The text of a project file (*.tpjt): which windows were open, and which objects with which values
// their grids held.
//
//   [Basic]
//   606000,1,DEC
//   607A00,10000,inc
//   [Errors]
//
// Lines end in CR LF, the text is in the code page of the data files. A section line names a
// window; the rows of its grid follow: key (hexadecimal, as it stands in column 1), value, unit.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"

namespace servo::app {

inline constexpr std::string_view kProjectSuffix = "tpjt";

// UTF-8 texts of columns 1, 4 and 5 of a grid.
struct ProjectRow {
    std::string key;
    std::string value;
    std::string unit;
    bool operator==(const ProjectRow&) const = default;
};

struct ProjectSection {
    std::string window;
    std::vector<ProjectRow> rows;
    bool operator==(const ProjectSection&) const = default;
};

// The bytes of a file. No section gives no byte.
//
// Cells are written as they stand: a comma or a bracket in a value is not quoted, since no reader
// of these files knows quotes. Only line breaks become blanks, because an item is one line; a text
// that came from a drive could otherwise write sections of its own.
std::string project_bytes(std::span<const ProjectSection> sections);

// What a reader knows of the windows, in the order of all_windows.
struct ProjectPlace {
    std::string_view name;
    bool has_grid = false;  // whether it has a grid MSHFlexGrid1
};

// What opening a file does. Windows are positions in the list that was handed in.
struct ProjectReading {
    struct Rows {
        std::size_t window = 0;
        std::vector<ProjectRow> rows;
        bool operator==(const Rows&) const = default;
    };
    std::vector<Rows> rows;  // grids that lose their rows, with those that they get; each one once
    std::vector<std::size_t> shown;  // windows to show, each one once; the last comes out on top
    bool stopped = false;            // a row could not be read, what stands behind it was not
    bool operator==(const ProjectReading&) const = default;
};

// Reads a file line by line. The rules are simple-minded and kept so, because files made under them
// are about:
//
// - A line that holds a "[" anywhere is a section line; without its brackets it is the name. Names
//   are compared letter by letter.
// - The last window of the list (modbus) is left out of the search. Its rows are one long reference
//   list, which no file should replace.
// - A section whose window has a grid empties that grid, and the rows that follow fill it. Its
//   window is shown at the next section line, whatever that names, and at the end of the file.
// - PosFlow and ObjectDictionay are shown at once and keep what they hold; rows that stand in their
//   sections are left out.
// - A window without a grid is shown at once.
// - The last two, and a section that finds no window, do not end the section before: rows below a
//   name that is not found, or below a window without a grid, go to the window that was open.
//   Without one they are ignored.
// - A row with fewer than three fields, an empty line among them, stops the reading: what was
//   restored stays, the window that was being filled is not shown for its own sake. Fields behind
//   the third are ignored.
ProjectReading read_project(std::string_view bytes, std::span<const ProjectPlace> windows);

// The identity that a key field stands for: the number read from "&H" and the field. 0, an object
// that no drive has, when there is none or when it does not fit 32 bits.
dictionary::Identity project_key(std::string_view field);

// The window whose section never holds rows, and the one that is shown without restoring them.
inline constexpr std::string_view kBrowserName = "ObjectDictionay";
inline constexpr std::string_view kPositionTableName = "PosFlow";

}  // namespace servo::app
