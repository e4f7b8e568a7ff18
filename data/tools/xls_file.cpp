#include "data/tools/xls_file.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>

#include "data/tools/compound_file.h"

namespace servo::data {

namespace {

enum Record : std::uint32_t {
    kEof = 0x000A,
    kSelection = 0x001D,
    kFont = 0x0031,
    kContinue = 0x003C,
    kWindow1 = 0x003D,
    kPane = 0x0041,
    kCodePage = 0x0042,
    kColumnInfo = 0x007D,
    kSheetOptions = 0x0081,
    kBoundSheet = 0x0085,
    kPageSetup = 0x00A1,
    kFormat = 0x00E0,  // of cells
    kStrings = 0x00FC,
    kLabel = 0x00FD,
    kDimensions = 0x0200,
    kNumber = 0x0203,
    kRow = 0x0208,
    kWindow2 = 0x023E,
    kStyle = 0x0293,
    kBof = 0x0809,
};

// Formats of cells: 15 of styles come first, as every reader expects.
constexpr int kStyleFormats = 15;
enum CellFormat : std::uint32_t {
    kDefaultCell = kStyleFormats,
    kHeadingCell,
    kTextCell,
    kNumberCell
};

constexpr std::size_t kMostRecordBytes = 8224;
constexpr std::uint32_t kGrey = 0x16;
constexpr std::uint32_t kLineHeight = 270;  // twentieths of a point
constexpr std::uint32_t kCharacter = 256;   // a column's width is in parts of a character

void record(ByteWriter& out, Record type, const ByteWriter& body) {
    out.u16(type).u16(static_cast<std::uint32_t>(body.size())).raw(body.bytes());
}

std::u16string utf16_of(std::string_view text) {
    std::u16string units;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length && i + k < text.size(); ++k)
            code = code << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        units += code < 0x10000 ? static_cast<char16_t>(code) : u'\uFFFD';
        i += length;
    }
    return units;
}

// Flag and characters of two bytes each, behind a count of `count_bytes` bytes.
ByteWriter string_of(std::string_view text, int count_bytes) {
    const std::u16string units = utf16_of(text);
    ByteWriter out;
    const auto count = static_cast<std::uint32_t>(units.size());
    if (count_bytes == 1)
        out.u8(count);
    else
        out.u16(count);
    out.u8(1);
    for (const char16_t unit : units)
        out.u16(unit);
    return out;
}

// Columns that a character takes: a Chinese one is as wide as two others.
int width_of(std::string_view text) {
    int width = 0;
    for (const char16_t unit : utf16_of(text))
        width += unit < 0x2E80 ? 1 : 2;
    return width;
}

// All texts of a document, each once.
class StringTable {
  public:
    std::uint32_t place_of(const std::string& text) {
        ++used_;
        const auto [found, added] =
            places_.try_emplace(text, static_cast<std::uint32_t>(texts_.size()));
        if (added) texts_.push_back(text);
        return found->second;
    }

    // A record has a limit; the next begins with a new text.
    void write(ByteWriter& out) const {
        ByteWriter body;
        body.u32(used_).u32(static_cast<std::uint32_t>(texts_.size()));
        Record type = kStrings;
        for (const std::string& text : texts_) {
            const ByteWriter bytes = string_of(text, 2);
            if (body.size() + bytes.size() > kMostRecordBytes) {
                record(out, type, body);
                type = kContinue;
                body = {};
            }
            body.raw(bytes.bytes());
        }
        record(out, type, body);
    }

  private:
    std::map<std::string, std::uint32_t> places_;
    std::vector<std::string> texts_;
    std::uint32_t used_ = 0;
};

void begin(ByteWriter& out, std::uint32_t kind) {
    constexpr std::uint32_t kVersion = 0x0600;
    record(out, kBof,
           ByteWriter().u16(kVersion).u16(kind).u16(0x0DBB).u16(0x07CC).u32(0xC1).u32(0x0306));
}

void write_font(ByteWriter& out, bool bold) {
    constexpr std::uint32_t kTenPoints = 200;
    ByteWriter body;
    body.u16(kTenPoints).u16(bold ? 1 : 0).u16(0x7FFF).u16(bold ? 700 : 400).u16(0).u8(0).u8(0);
    body.u8(0).u8(0).u8(5).u8(0).raw("Arial");
    record(out, kFont, body);
}

void write_style_format(ByteWriter& out) {
    record(out, kFormat,
           ByteWriter().u16(0).u16(0).u16(0xFFF5).u8(0x20).u8(0).u8(0).u8(0).fill(8).u16(0x20C0));
}

struct CellLook {
    std::uint32_t font = 0;   // 1 bold
    std::uint32_t align = 0;  // bits 0 to 2 across, 3 wrapped, 4 to 6 down
    bool lines = false;
    bool filled = false;
};

void write_cell_format(ByteWriter& out, const CellLook& look) {
    const std::uint32_t edge = look.lines ? 1 : 0;
    const std::uint32_t colour = look.lines ? kGrey : 0;
    ByteWriter body;
    body.u16(look.font).u16(0).u16(1).u8(look.align).u8(0).u8(0).u8(0xF8);
    body.u32(edge * 0x1111 | colour << 16 | colour << 23);
    body.u32(colour | colour << 7 | (look.filled ? 1U << 26 : 0));
    body.u16(look.filled ? kGrey | 0x41U << 7 : 0x20C0);
    record(out, kFormat, body);
}

void write_looks(ByteWriter& out) {
    constexpr std::uint32_t kCentre = 2;
    constexpr std::uint32_t kLeft = 1;
    constexpr std::uint32_t kWrapped = 8;
    for (const bool bold : {false, true, false, false})
        write_font(out, bold);
    for (int i = 0; i < kStyleFormats; ++i)
        write_style_format(out);
    write_cell_format(out, {.align = 0x20});
    write_cell_format(out,
                      {.font = 1, .align = kLeft | kWrapped | 0x10, .lines = true, .filled = true});
    write_cell_format(out, {.align = kLeft | kWrapped, .lines = true});
    write_cell_format(out, {.align = kCentre, .lines = true});
    record(out, kStyle, ByteWriter().u16(0x8000).u8(0).u8(0xFF));
}

// Lines that the tallest cell of a row takes.
int lines_of(const XlsSheet& sheet, const std::vector<XlsCell>& row) {
    int lines = 1;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const auto* text = std::get_if<std::string>(&row[column]);
        if (text == nullptr || column >= sheet.widths.size()) continue;
        // Words do not break, so a line is not quite filled.
        const int room = std::max(1, sheet.widths[column] * 9 / 10);
        lines = std::max(lines, (width_of(*text) + room - 1) / room);
    }
    return lines;
}

void write_view(ByteWriter& out, bool first) {
    constexpr std::uint32_t kShown = 0x00B6 | 0x0108;  // the usual, and a heading that stays
    constexpr std::uint32_t kLowerPane = 2;
    record(out, kWindow2,
           ByteWriter()
               .u16(kShown | (first ? 0x0600U : 0))
               .u16(0)
               .u16(0)
               .u32(0x40)
               .u16(0)
               .u16(0)
               .u32(0));
    record(out, kPane, ByteWriter().u16(0).u16(1).u16(1).u16(0).u16(kLowerPane));
    record(out, kSelection,
           ByteWriter().u8(kLowerPane).u16(1).u16(0).u16(0).u16(1).u16(1).u16(1).u8(0).u8(0));
}

void write_columns(ByteWriter& out, const XlsSheet& sheet) {
    constexpr std::uint32_t kFitToPage = 0x05C1;
    constexpr std::uint32_t kA4 = 9;
    constexpr double kMargin = 0.5;  // inches
    record(out, kSheetOptions, ByteWriter().u16(kFitToPage));
    // Printed across, one page wide.
    record(out, kPageSetup,
           ByteWriter()
               .u16(kA4)
               .u16(100)
               .u16(1)
               .u16(1)
               .u16(0)
               .u16(0)
               .u16(600)
               .u16(600)
               .f64(kMargin)
               .f64(kMargin)
               .u16(1));
    for (std::size_t column = 0; column < sheet.widths.size(); ++column) {
        const auto place = static_cast<std::uint32_t>(column);
        record(out, kColumnInfo,
               ByteWriter()
                   .u16(place)
                   .u16(place)
                   .u16(static_cast<std::uint32_t>(sheet.widths[column]) * kCharacter)
                   .u16(kDefaultCell)
                   .u16(0)
                   .u16(0));
    }
}

void write_cell(ByteWriter& out, std::uint32_t row, std::uint32_t column, const XlsCell& cell,
                StringTable& strings) {
    ByteWriter body;
    body.u16(row).u16(column);
    if (const auto* text = std::get_if<std::string>(&cell)) {
        body.u16(row == 0 ? kHeadingCell : kTextCell).u32(strings.place_of(*text));
        record(out, kLabel, body);
    } else {
        body.u16(kNumberCell).f64(std::get<int>(cell));
        record(out, kNumber, body);
    }
}

std::string sheet_bytes(const XlsSheet& sheet, bool first, StringTable& strings) {
    constexpr std::uint32_t kWorksheet = 0x0010;
    constexpr std::uint32_t kOwnHeight = 0x000F0140;
    ByteWriter out;
    begin(out, kWorksheet);
    write_columns(out, sheet);
    const auto rows = static_cast<std::uint32_t>(sheet.rows.size());
    const auto columns = static_cast<std::uint32_t>(sheet.widths.size());
    record(out, kDimensions, ByteWriter().u32(0).u32(rows).u16(0).u16(columns).u16(0));
    for (std::uint32_t row = 0; row < rows; ++row) {
        const auto lines = static_cast<std::uint32_t>(lines_of(sheet, sheet.rows[row]));
        record(out, kRow,
               ByteWriter()
                   .u16(row)
                   .u16(0)
                   .u16(columns)
                   .u16(lines * kLineHeight)
                   .u16(0)
                   .u16(0)
                   .u32(kOwnHeight));
    }
    for (std::uint32_t row = 0; row < rows; ++row)
        for (std::uint32_t column = 0; column < sheet.rows[row].size(); ++column)
            write_cell(out, row, column, sheet.rows[row][column], strings);
    write_view(out, first);
    record(out, kEof, {});
    return out.bytes();
}

}  // namespace

// The sheets' places in the stream are known when all before them is written.
std::string xls_bytes(std::span<const XlsSheet> sheets) {
    constexpr std::uint32_t kGlobals = 0x0005;
    constexpr std::uint32_t kUnicode = 1200;
    StringTable strings;
    std::vector<std::string> bodies;
    for (const XlsSheet& sheet : sheets)
        bodies.push_back(sheet_bytes(sheet, bodies.empty(), strings));

    ByteWriter out;
    begin(out, kGlobals);
    record(out, kCodePage, ByteWriter().u16(kUnicode));
    record(out, kWindow1,
           ByteWriter().u16(0).u16(0).u16(16000).u16(9000).u16(0x38).u16(0).u16(0).u16(1).u16(600));
    write_looks(out);
    std::vector<std::size_t> places;
    for (const XlsSheet& sheet : sheets) {
        places.push_back(out.size() + 4);
        record(out, kBoundSheet, ByteWriter().u32(0).u16(0).raw(string_of(sheet.name, 1).bytes()));
    }
    strings.write(out);
    record(out, kEof, {});
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        out.patch_u32(places[i], static_cast<std::uint32_t>(out.size()));
        out.raw(bodies[i]);
    }
    return compound_file("Workbook", out.bytes());
}

}  // namespace servo::data
