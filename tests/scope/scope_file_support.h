// A program that holds a recording, and its files, for the tests of both directions.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/gbk.h"
#include "dictionary/store_of.h"
#include "scope/channel_lists.h"
#include "scope/scope_file.h"

namespace servo::scope {

inline constexpr dictionary::Identity kCurrent = 0x607800;   // 6322176
inline constexpr dictionary::Identity kCommand = 0x60F60C;   // 6354444
inline constexpr dictionary::Identity kPosition = 0x606300;  // 6316800
inline constexpr dictionary::Identity kSpeed = 0x606B00;     // 6318848
inline constexpr dictionary::Identity kStatus = 0x60FC00;    // 6355968

inline RawRecord object(std::string index, std::string sub, const std::string& chinese,
                        std::string english, std::string type, std::string formula = "[DEC]N*1") {
    RawRecord record;
    record.index = std::move(index);
    record.sub = std::move(sub);
    record.name_ch = base::utf8_to_gbk(chinese);
    record.name_en = std::move(english);
    record.type = std::move(type);
    record.formula = std::move(formula);
    return record;
}

inline dictionary::Store usual_dictionary() {
    return dictionary::store_of(
        {object("6078", "00", "实际电流", "Actual current", "Integer16",
                "[DEC Ap]N/2048*[65100310]/10"),
         object("60F6", "0C", "目标电流", "Target current, q axis", "Integer16"),
         object("6063", "00", "实际位置", "Actual position", "Integer32"),
         object("606B", "00", "目标速度", "Target velocity", "Integer32"),
         object("60FC", "00", "状态", "State", "Unsigned8", "[DEC x]N*[30400710]")});
}

// A program of another make of drive: other names, other types, one object fewer.
inline dictionary::Store other_dictionary() {
    return dictionary::store_of({object("6078", "00", "电流", "Iq", "Integer32"),
                                 object("60F6", "0C", "给定电流", "NULL current", "Integer16"),
                                 object("606B", "00", "给定速度", "Demand", "Integer32")});
}

struct Program {
    explicit Program(dictionary::Store store = usual_dictionary(),
                     base::Language shown = base::Language::kEnglish)
        : dictionary(std::move(store)), language(shown) {}

    // Ticks the channel with that object.
    void record(std::size_t channel, dictionary::Identity key) {
        pick(channel, key);
        data.channels[channel].enable = true;
    }
    void pick(std::size_t channel, dictionary::Identity key) {
        ScopeChannel& picked = data.channels[channel];
        picked.objectList.ListIndex = *Add_OD_To_CH(key, picked, dictionary, language) + 1;
    }
    void put_samples(std::size_t index, std::initializer_list<std::int32_t> row) {
        std::size_t channel = 0;
        for (const std::int32_t value : row)
            data.channels[channel++].samples[index] = value;
    }

    std::string text() { return scope_text(data, operands, language).value_or("(nothing)"); }
    Imported read(std::string_view bytes) {
        return read_scope(bytes, data, operands, dictionary, language);
    }
    std::vector<std::int32_t> row(std::size_t index) const {
        std::vector<std::int32_t> values;
        for (std::size_t channel = 0; channel < kCurves; ++channel)
            values.push_back(data.channels[channel].samples[index]);
        return values;
    }

    dictionary::Store dictionary;
    base::Language language;
    ScopeData data;
    link::FormulaOperands operands;
};

inline std::string lines_of(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines)
        text.append(line).append("\r\n");
    return text;
}

}  // namespace servo::scope
