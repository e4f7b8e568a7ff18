#include "data/tools/table.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/file.h"

namespace servo::data {

namespace {

constexpr std::string_view kFormulaHeader = "name\tformula\tuse";
constexpr std::string_view kObjectHeader =
    "index\tsub\tname_zh\tname_en\ttype\tattr\tcomment_zh\tcomment_en\tformula\tmodbus";

enum Cell : std::size_t {
    kIndex,
    kSub,
    kNameZh,
    kNameEn,
    kType,
    kAttr,
    kCommentZh,
    kCommentEn,
    kFormula,
    kModbus
};

std::vector<std::string> split_tabs(std::string_view line) {
    std::vector<std::string> cells;
    for (;;) {
        const std::size_t tab = line.find('\t');
        cells.emplace_back(line.substr(0, tab));
        if (tab == std::string_view::npos) return cells;
        line.remove_prefix(tab + 1);
    }
}

// Exactly `digits` upper-case hexadecimal digits.
std::optional<unsigned> hex_number(std::string_view text, std::size_t digits) {
    if (text.size() != digits) return std::nullopt;
    if (text.find_first_not_of("0123456789ABCDEF") != std::string_view::npos) return std::nullopt;
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

struct Range {
    unsigned first = 0;
    unsigned last = 0;
};

// "6040", or "1A00..1A07" for a family.
std::optional<Range> read_range(std::string_view text, std::size_t digits) {
    constexpr std::string_view kTo = "..";
    const std::size_t to = text.find(kTo);
    const auto first = hex_number(text.substr(0, to), digits);
    if (!first) return std::nullopt;
    if (to == std::string_view::npos) return Range{*first, *first};
    const auto last = hex_number(text.substr(to + kTo.size()), digits);
    if (!last || *last <= *first) return std::nullopt;
    return Range{*first, *last};
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

std::string with_line_feeds(std::string text) {
    replace_all(text, "\\n", "\n");
    return text;
}

// The member's number in its family, counted from 1 and from 0, by index and by sub-index.
struct Member {
    unsigned index = 0;
    unsigned sub = 0;

    std::string in(std::string text) const {
        replace_all(text, "{i}", fmt::to_string(index + 1));
        replace_all(text, "{i0}", fmt::to_string(index));
        replace_all(text, "{s}", fmt::to_string(sub + 1));
        replace_all(text, "{s0}", fmt::to_string(sub));
        return text;
    }
};

class Expander {
  public:
    Expander(std::string_view file, const Formulas& formulas, Problems& problems)
        : file_(file), formulas_(formulas), problems_(problems) {}

    void expand(const Row& row, std::vector<Object>& objects) {
        const auto indexes = read_range(row.cells[kIndex], 4);
        const auto subs = read_range(row.cells[kSub], 2);
        if (!indexes)
            return report(row, "index is not four hexadecimal digits, or a range of them");
        if (!subs) return report(row, "sub is not two hexadecimal digits, or a range of them");
        const auto formula = formula_of(row);
        if (!formula) return report(row, fmt::format("no formula named {}", row.cells[kFormula]));
        const unsigned registers = modbus_registers(row.cells[kType]);
        unsigned offset = 0;
        for (unsigned index = indexes->first; index <= indexes->last; ++index) {
            for (unsigned sub = subs->first; sub <= subs->last; ++sub) {
                const Member member{index - indexes->first, sub - subs->first};
                Object object = member_of(row, member);
                object.key = static_cast<dictionary::Identity>(index << 8 | sub);
                object.formula = *formula;
                object.modbus = address(row.cells[kModbus], offset);
                offset += registers;
                objects.push_back(std::move(object));
            }
        }
    }

  private:
    void report(const Row& row, std::string text) {
        problems_.push_back({std::string(file_), row.line, std::move(text)});
    }

    std::optional<std::string> formula_of(const Row& row) const {
        const std::string& cell = row.cells[kFormula];
        if (!cell.starts_with('@')) return with_line_feeds(cell);
        const auto found = formulas_.find(std::string_view(cell).substr(1));
        if (found == formulas_.end()) return std::nullopt;
        return found->second;
    }

    Object member_of(const Row& row, const Member& member) const {
        Object object;
        object.name_zh = member.in(row.cells[kNameZh]);
        object.name_en = member.in(row.cells[kNameEn]);
        object.type = row.cells[kType];
        object.attr = row.cells[kAttr];
        object.comment_zh = with_line_feeds(member.in(row.cells[kCommentZh]));
        object.comment_en = with_line_feeds(member.in(row.cells[kCommentEn]));
        object.place = {std::string(file_), row.line};
        return object;
    }

    // A family counts on from its first address by the registers of each member.
    static std::string address(const std::string& cell, unsigned offset) {
        const auto first = hex_number(cell, 4);
        return first ? fmt::format("{:04X}", *first + offset) : cell;
    }

    std::string_view file_;
    const Formulas& formulas_;
    Problems& problems_;
};

}  // namespace

std::vector<Row> read_rows(std::string_view file, std::string_view text, std::string_view header,
                           Problems& problems) {
    std::vector<Row> rows;
    const auto columns = static_cast<std::size_t>(std::ranges::count(header, '\t')) + 1;
    bool header_seen = false;
    base::LineReader reader(text);
    for (int line = 1; const auto bytes = reader.next(); ++line) {
        if (bytes->empty() || bytes->front() == '#') continue;
        if (!header_seen) {
            header_seen = true;
            if (*bytes == header) continue;
            problems.push_back({std::string(file), line, "the header line is wrong"});
            return rows;
        }
        Row row{line, split_tabs(*bytes)};
        if (row.cells.size() == columns) {
            rows.push_back(std::move(row));
        } else {
            problems.push_back({std::string(file), line,
                                fmt::format("{} columns, not {}", row.cells.size(), columns)});
        }
    }
    if (!header_seen) problems.push_back({std::string(file), 1, "the header line is missing"});
    return rows;
}

Formulas read_formulas(std::string_view file, std::string_view text, Problems& problems) {
    Formulas formulas;
    for (const Row& row : read_rows(file, text, kFormulaHeader, problems)) {
        const bool added = formulas.emplace(row.cells[0], with_line_feeds(row.cells[1])).second;
        if (!added) {
            problems.push_back(
                {std::string(file), row.line, fmt::format("{} is there already", row.cells[0])});
        }
    }
    return formulas;
}

std::vector<Object> read_objects(std::string_view file, std::string_view text,
                                 const Formulas& formulas, Problems& problems) {
    std::vector<Object> objects;
    Expander expander(file, formulas, problems);
    for (const Row& row : read_rows(file, text, kObjectHeader, problems)) {
        expander.expand(row, objects);
    }
    return objects;
}

unsigned modbus_registers(std::string_view type) {
    const std::uint8_t size = dictionary::wire_size(dictionary::short_type(type));
    if (size == 4) return 2;
    return size == 1 || size == 2 ? 1 : 0;
}

}  // namespace servo::data
