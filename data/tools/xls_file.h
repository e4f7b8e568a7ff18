// Writes a table document that every spreadsheet opens as ".xls": a compound file with one stream
// of BIFF8 records. Only what a list needs: sheets of text and whole numbers, a heading that stays
// in view, columns with a width, wrapped lines.
#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

namespace servo::data {

using XlsCell = std::variant<std::string, int>;  // text in UTF-8, or a number

struct XlsSheet {
    std::string name;                        // 31 characters at the most
    std::vector<int> widths;                 // of the columns, in characters
    std::vector<std::vector<XlsCell>> rows;  // the first is the heading
};

// The bytes of the file. Characters outside of the basic plane become U+FFFD.
std::string xls_bytes(std::span<const XlsSheet> sheets);

}  // namespace servo::data
