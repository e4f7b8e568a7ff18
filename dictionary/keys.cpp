#include "dictionary/keys.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number.h"

namespace servo::dictionary {

namespace {

struct Type {
    std::string_view word;  // in the dictionary file
    std::string_view name;  // everywhere else
    int decoder_size = 0;   // 0: no number
    std::uint8_t wire = 0;  // low byte of a wire key
};

constexpr std::array<Type, 7> kTypes{{
    {"Unsigned8", "uint8", 1, 0x01},
    {"Integer8", "int8", 11, 0x01},
    {"Unsigned16", "uint16", 2, 0x02},
    {"Integer16", "int16", 12, 0x02},
    {"Unsigned32", "uint32", 4, 0x04},
    {"Integer32", "int32", 14, 0x04},
    {"Visible String", "String", 0, 0x06},
}};

const Type* find_type(std::string_view name) {
    const auto* found = std::find_if(kTypes.begin(), kTypes.end(),
                                     [&](const Type& type) { return type.name == name; });
    return found == kTypes.end() ? nullptr : found;
}

WireKey make_key(std::string_view index_text, std::uint8_t size) {
    if (size == 0) return 0;
    std::string text = "&H";
    text.append(index_text).append({'0', static_cast<char>('0' + size)});
    // A key of four digits or less is negative when its high bit is set, as any such number is; the
    // upper half of the wire key is then all ones. No object of a drive has an index that low.
    const double number = base::leading_number(text);
    if (!(std::fabs(number) <= 4294967295.0)) return 0;  // too many digits: no object
    return static_cast<WireKey>(static_cast<std::int64_t>(number));
}

}  // namespace

std::uint8_t wire_size(std::string_view type_name) {
    const Type* type = find_type(type_name);
    return type != nullptr ? type->wire : 0;
}

int decoder_size(std::string_view type_name) {
    const Type* type = find_type(type_name);
    return type != nullptr ? type->decoder_size : 0;
}

std::string_view short_type(std::string_view dictionary_word) {
    using namespace std::literals;
    const std::size_t last = dictionary_word.find_last_not_of(" \0"sv);
    if (last == std::string_view::npos) return {};
    const std::string_view word = dictionary_word.substr(0, last + 1);
    const auto* found = std::find_if(kTypes.begin(), kTypes.end(),
                                     [&](const Type& type) { return type.word == word; });
    return found == kTypes.end() ? std::string_view{} : found->name;
}

std::uint8_t wire_size_of_bits(std::uint8_t bits) {
    switch (bits) {
        case 0x08:
            return 0x01;
        case 0x10:
            return 0x02;
        case 0x20:
            return 0x04;
        default:
            return 0;
    }
}

WireKey read_key(std::string_view index_text, std::string_view type_name) {
    return make_key(index_text, wire_size(type_name));
}

WireKey write_key(std::string_view index_text, std::string_view type_name) {
    return type_name == "String" ? 0 : read_key(index_text, type_name);
}

std::string strip_blanks(std::string_view text) {
    std::string bare;
    std::copy_if(text.begin(), text.end(), std::back_inserter(bare),
                 [](char c) { return c != ' ' && c != '\r' && c != '\n' && c != '\0'; });
    return bare;
}

}  // namespace servo::dictionary
