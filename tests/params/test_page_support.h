// What the tests of pages share: a dictionary made in the test, and a grid that records its writes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/gbk.h"
#include "dictionary/store.h"
#include "params/page_grid.h"

namespace servo::params::test {

struct Entry {
    std::string_view index;  // six digits
    std::string_view name_ch;
    std::string_view name_en;
    std::string_view type = "Unsigned16";
    std::string_view attr = "RW";
    std::string_view formula = "[DEC]N*1";
    std::string_view comment_ch = "";
    std::string_view comment_en = "";
};

// One record of the dictionary file, its fields filled with `padding`.
inline std::string record(const Entry& entry, char padding = ' ') {
    std::string bytes;
    const auto field = [&](std::string_view text, std::size_t width) {
        std::string gbk = base::utf8_to_gbk(text);
        gbk.resize(width, padding);
        bytes += gbk;
    };
    field(entry.index.substr(0, 4), 4);
    field(entry.index.substr(4), 2);
    field(entry.name_ch, 64);
    field(entry.name_en, 64);
    field(entry.type, 16);
    field(entry.attr, 8);
    field(entry.comment_ch, 4096);
    field(entry.comment_en, 4096);
    field(entry.formula, 200);
    field("N", 4);
    return bytes;
}

inline constexpr std::string_view kRpm =
    "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]";

// Objects with every trait that a rule looks at.
inline std::vector<Entry> sample_entries() {
    return {
        {"606000", "工作模式", "Operation mode", "Integer8", "RWL", "[DEC]N*1",
         "工作模式|1:位置|3:速度|-4:脉冲", "Mode|1:Position|3:Velocity|-4:Pulse"},
        {"606300", "实际位置", "Position actual", "Integer32", "RH", "[inc]N*1"},
        {"607A00", "目标位置", "Target position", "Integer32", "RW", "[inc]N*1"},
        {"60FF00", "目标速度", "Target velocity", "Integer32", "RW", kRpm},
        {"604000", "控制字", "Control word", "Unsigned16", "RW", "[HEX]N*1\n[DEC]N*1",
         "控制字|06:断电|0F:使能|FFFF:全部", "Word|06:Off|0F:Enable|FFFF:All"},
        {"100900", "硬件版本", "Hardware version", "Visible String", "RW", "[ASCII]N*1"},
        {"607100", "状态", "Status", "Unsigned16", "R", "[DEC]N*1", "|0:关", "|0:Off"},
        {"608100", "一种列表", "List in one language", "Unsigned8", "RW", "[DEC]N*1", "", "|0:Off"},
        {"608300", "文字", "Text", "Unsigned32", "RW", "[ASCII]N*1"},
        {"608400", "计数", "Count", "Unsigned32", "RW", "[INC]N*1\n[HEX]N*1", "|0:关", "|0:Off"},
        {"608500", "未知类型", "Odd type", "Float64", "RW"},
        {"608600", "电流", "Current", "Integer16", "RWH", "[DEC Ap]N/2048*[65100310]/10"},
        {"608700", "坏公式", "Bad formula", "Unsigned32", "RW",
         "[DEC]N*1\n[DEC bad]lg()\n[bad DEC]lg()"},
    };
}

inline std::string dictionary_bytes(const std::vector<Entry>& entries, char padding = ' ') {
    std::string bytes;
    for (const Entry& entry : entries)
        bytes += record(entry, padding);
    return bytes;
}

struct Write {
    dictionary::WireKey key = 0;
    std::int32_t value = 0;
    bool operator==(const Write&) const = default;
};

// Dictionary, operands, language and a record of writes for grids and pages.
struct Bench {
    explicit Bench(const std::vector<Entry>& entries = sample_entries()) {
        dictionary.load(dictionary_bytes(entries));
        operands.o64100320 = {10000, true};
        operands.o65100310 = {150, true};
    }

    dictionary::Store dictionary;
    link::FormulaOperands operands;
    base::Language language = base::Language::kEnglish;
    std::vector<Write> writes;

    PageServices services() {
        return {dictionary, operands, language,
                [this](dictionary::WireKey key, std::int32_t value) {
                    writes.push_back({key, value});
                }};
    }

    Row row(dictionary::Identity key, int number = 0) const {
        return build_row(dictionary, key, number, language);
    }

    PageGrid grid(const std::vector<dictionary::Identity>& keys) {
        PageGrid made(services());
        std::vector<Row> rows;
        for (const dictionary::Identity key : keys) {
            rows.push_back(row(key, static_cast<int>(rows.size())));
        }
        made.set_rows(std::move(rows));
        return made;
    }
};

}  // namespace servo::params::test
