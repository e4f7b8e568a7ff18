#include "data/tools/object_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <set>

#include "base/gbk.h"
#include "data/tools/formula_check.h"

namespace servo::data {

namespace {

constexpr std::size_t kNameBytes = 64;
constexpr std::size_t kCommentBytes = 4096;
constexpr std::size_t kListCharacters = 768;

// A dictionary word, and the least and greatest number that such an object holds.
struct TypeWord {
    std::string_view word;
    std::int64_t lowest = 0;
    std::int64_t highest = 0;
    std::size_t hex_digits = 0;
};

constexpr std::array<TypeWord, 7> kTypes{{
    {"Unsigned8", 0, 0xFF, 2},
    {"Integer8", -0x80, 0x7F, 2},
    {"Unsigned16", 0, 0xFFFF, 4},
    {"Integer16", -0x8000, 0x7FFF, 4},
    {"Unsigned32", 0, 0xFFFFFFFF, 8},
    {"Integer32", -0x80000000LL, 0x7FFFFFFF, 8},
    {"Visible String", 0, 0, 0},
}};

const TypeWord* type_of(const Object& object) {
    const auto found = std::ranges::find(kTypes, object.type, &TypeWord::word);
    return found == kTypes.end() ? nullptr : &*found;
}

// The item list of a comment: from its first "|" on.
std::string_view item_list(std::string_view comment) {
    const std::size_t bar = comment.find('|');
    return bar == std::string_view::npos ? std::string_view{} : comment.substr(bar);
}

// Value part of an item as the grid shows it: decimal, or as many upper-case hexadecimal digits as
// the type has. Only then does the list select the item of the cell's text.
std::optional<std::int64_t> item_value(std::string_view text, const TypeWord& type, bool hex) {
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, hex ? 16 : 10);
    if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
    const std::string shown =
        hex ? fmt::format("{:0{}X}", value, type.hex_digits) : fmt::to_string(value);
    if (shown != text || value < type.lowest || value > type.highest) return std::nullopt;
    return value;
}

struct Items {
    std::vector<std::int64_t> values;
    std::optional<std::string> problem;
};

Items read_items(std::string_view list, const TypeWord& type, bool hex) {
    Items items;
    while (!list.empty()) {
        list.remove_prefix(1);
        const std::size_t end = std::min(list.find('|'), list.size());
        const std::string_view item = list.substr(0, end);
        list.remove_prefix(end);
        const std::size_t colon = item.find(':');
        const auto value = item_value(item.substr(0, colon), type, hex);
        if (colon == std::string_view::npos || colon + 1 == item.size() || !value) {
            items.problem = fmt::format("item \"{}\" is not value:text", item);
            return items;
        }
        items.values.push_back(*value);
    }
    std::vector<std::int64_t> sorted = items.values;
    std::ranges::sort(sorted);
    if (std::ranges::adjacent_find(sorted) != sorted.end())
        items.problem = "an item value comes twice";
    return items;
}

std::optional<std::string> list_problem(const Object& object, const TypeWord& type) {
    const std::string_view zh = item_list(object.comment_zh);
    const std::string_view en = item_list(object.comment_en);
    if (zh.empty() && en.empty()) return std::nullopt;
    if (base::utf8_length(zh) > kListCharacters || base::utf8_length(en) > kListCharacters) {
        return "item list of more than 768 characters";
    }
    const std::string unit = first_unit(object.formula);
    if (type.hex_digits == 0 || (unit != "HEX" && unit != "DEC")) {
        return fmt::format("a list never opens in the unit {}", unit);
    }
    const Items chinese = read_items(zh, type, unit == "HEX");
    const Items english = read_items(en, type, unit == "HEX");
    if (chinese.problem) return chinese.problem;
    if (english.problem) return english.problem;
    if (chinese.values != english.values) return "the lists of the two languages differ in values";
    return std::nullopt;
}

std::optional<std::string> attr_problem(std::string_view attr) {
    if (attr.find_first_not_of("RWHL") != std::string_view::npos) return "attr knows R, W, H and L";
    for (const char letter : attr) {
        if (std::ranges::count(attr, letter) > 1) return "a letter of attr comes twice";
    }
    if (attr.find_first_of("RW") == std::string_view::npos) return "attr holds neither R nor W";
    if (attr.find('H') != std::string_view::npos && attr.find('L') != std::string_view::npos) {
        return "attr holds both H and L";
    }
    return std::nullopt;
}

std::optional<std::string> modbus_problem(const Object& object) {
    const std::string& address = object.modbus;
    if (address.empty() || address.size() > 4)
        return "Modbus address must have one to four characters";
    if (address.front() == 'N') return std::nullopt;
    const bool digits =
        address.size() == 4 && address.find_first_not_of("0123456789ABCDEF") == std::string::npos;
    if (!digits) return "Modbus address is neither four hexadecimal digits nor begins with N";
    if (modbus_registers(object.type) == 0) return "a string has no Modbus address";
    return std::nullopt;
}

// Texts of one width. A field of fewer than two bytes would keep its whole width when its tail is
// trimmed, so there is none but the attribute's single letter.
std::optional<std::string> text_problem(std::string_view name, std::string_view text,
                                        std::size_t width) {
    if (!is_code_page_text(text)) return fmt::format("{} holds a character that GBK has not", name);
    const std::size_t bytes = base::utf8_to_gbk(text).size();
    if (bytes < 2) return fmt::format("{} is empty or too short", name);
    if (bytes > width) return fmt::format("{} has {} bytes, at most {}", name, bytes, width);
    if (text.find('{') != std::string_view::npos) {
        return fmt::format("{} holds a placeholder that is not known", name);
    }
    return std::nullopt;
}

std::optional<std::string> object_problem(const Object& object) {
    const TypeWord* const type = type_of(object);
    if (type == nullptr) return fmt::format("type {} is not known", object.type);
    if (auto problem = text_problem("name_zh", object.name_zh, kNameBytes)) return problem;
    if (auto problem = text_problem("name_en", object.name_en, kNameBytes)) return problem;
    // A name with a line feed would break a grid row, one with a comma the Modbus list.
    const auto breaks = [](std::string_view name) {
        return name.find_first_of("\n,") != std::string_view::npos;
    };
    if (breaks(object.name_zh) || breaks(object.name_en))
        return "a name holds a comma or line feed";
    if (auto problem = text_problem("comment_zh", object.comment_zh, kCommentBytes)) return problem;
    if (auto problem = text_problem("comment_en", object.comment_en, kCommentBytes)) return problem;
    if (auto problem = attr_problem(object.attr)) return problem;
    const bool writable = object.attr.find('W') != std::string::npos;
    if (auto problem = formula_problem(object.formula, writable)) return "formula: " + *problem;
    if (auto problem = list_problem(object, *type)) return problem;
    return modbus_problem(object);
}

std::string place_text(const Place& place) {
    return fmt::format("{}:{}", place.file, place.line);
}

void check_shared(const std::vector<Object>& objects, Problems& problems) {
    std::map<dictionary::Identity, const Object*> by_key;
    std::map<unsigned, const Object*> by_register;
    for (const Object& object : objects) {
        const auto report = [&](std::string text) {
            problems.push_back({object.place.file, object.place.line, std::move(text)});
        };
        const auto [other, added] = by_key.emplace(object.key, &object);
        if (!added) {
            report(
                fmt::format("{:06X} was told at {}", object.key, place_text(other->second->place)));
        }
        if (modbus_problem(object) || object.modbus.front() == 'N') continue;
        unsigned address = 0;
        std::from_chars(object.modbus.data(), object.modbus.data() + object.modbus.size(), address,
                        16);
        for (unsigned i = 0; i < modbus_registers(object.type); ++i) {
            const auto [taken, free] = by_register.emplace(address + i, &object);
            if (free) continue;
            report(fmt::format("Modbus register {:04X} belongs to {:06X} at {}", address + i,
                               taken->second->key, place_text(taken->second->place)));
            break;
        }
    }
}

}  // namespace

bool is_code_page_text(std::string_view text) {
    const bool control = std::ranges::any_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && c != '\n') || byte == 0x7F;
    });
    return !control && base::gbk_to_utf8(base::utf8_to_gbk(text)) == text;
}

void check_objects(const std::vector<Object>& objects, Problems& problems) {
    for (const Object& object : objects) {
        const auto problem = object_problem(object);
        if (!problem) continue;
        problems.push_back({object.place.file, object.place.line,
                            fmt::format("{:06X}: {}", object.key, *problem)});
    }
    check_shared(objects, problems);
}

}  // namespace servo::data
