// A dictionary record field by field, in bytes of the code page, written down a second time here so
// that a wrong offset in the store shows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

struct RawRecord {
    std::string index = "2000";
    std::string sub = "00";
    std::string name_ch;
    std::string name_en;
    std::string type;
    std::string attribute;
    std::string comment_ch;
    std::string comment_en;
    std::string formula;
    std::string modbus = "N   ";
    char padding = ' ';

    std::string bytes() const {
        std::string out;
        const auto add = [&](std::string_view text, std::size_t width) {
            out.append(text.substr(0, width));
            out.append(width - std::min(width, text.size()), padding);
        };
        add(index, 4);
        add(sub, 2);
        add(name_ch, 64);
        add(name_en, 64);
        add(type, 16);
        add(attribute, 8);
        add(comment_ch, 4096);
        add(comment_en, 4096);
        add(formula, 200);
        add(modbus, 4);
        return out;
    }
};

// Left-aligned in blanks.
inline std::string filled(std::string text, std::size_t width) {
    text.append(width - std::min(width, text.size()), ' ');
    return text;
}
