// Look-up and replacement in a profile file. The first three lines of an input are section, key and
// value, the rest is the file.
#include "base/profile_file.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using servo::base::profile_lookup;
using servo::base::profile_replace;
using namespace std::literals;

constexpr std::size_t kAmple = std::size_t{1} << 24;
constexpr std::string_view kMissing = "\x02none";

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

std::string_view take_line(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

bool has_any(std::string_view text, std::string_view characters) {
    return text.find_first_of(characters) != std::string_view::npos;
}

bool is_tight(std::string_view text) {
    return text.empty() ||
           (!has_any(text.substr(0, 1), " \t") && !has_any(text.substr(text.size() - 1), " \t"));
}

// Texts that a file of this form can hold: a bracket ends a heading, "=" ends a key, and a heading
// must not join its last byte with the bracket to a Chinese character.
bool is_section_name(std::string_view text) {
    return is_tight(text) && !has_any(text, "[]\r\0"sv) &&
           std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

bool is_key(std::string_view text) {
    return is_tight(text) && !has_any(text, "=\r\0"sv) && !has_any(text.substr(0, 1), ";[");
}

bool is_value(std::string_view text) {
    return is_tight(text) && !has_any(text, "\r\0"sv) && !has_any(text.substr(0, 1), "\"'");
}

std::vector<std::string> names(const std::string& list) {
    std::vector<std::string> out;
    std::string_view rest = list;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        out.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return out;
}

std::string value_of(std::string_view content, std::string_view section, std::string_view key) {
    return profile_lookup(content, section, key, kMissing, kAmple);
}

// True when a look-up of `asked` finds a section of this name.
bool same_section(std::string_view name, std::string_view asked) {
    const std::string content = "[" + std::string(name) + "]\nx=1\n";
    return value_of(content, asked, "x") == "1";
}

void check_other_sections(std::string_view before, std::string_view after,
                          std::string_view section) {
    const std::string list = profile_lookup(before, std::nullopt, std::nullopt, "", kAmple);
    for (const std::string& other : names(list)) {
        if (same_section(other, section)) continue;
        const std::string keys = profile_lookup(before, other, std::nullopt, kMissing, kAmple);
        require(keys == profile_lookup(after, other, std::nullopt, kMissing, kAmple),
                "keys of another section");
        for (const std::string& key : names(keys)) {
            require(value_of(before, other, key) == value_of(after, other, key),
                    "value in another section");
        }
    }
}

// What differs between the two texts lies within one line of the old one.
void check_rest_kept(std::string_view before, std::string_view after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head])
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
        ++tail;
    }
    require(!has_any(before.substr(head, before.size() - head - tail), "\r\n"), "rest of the file");
}

void check_removal(std::string content, std::string_view section, std::string_view key) {
    // A key may stand there several times; each removal takes one.
    while (value_of(content, section, key) != kMissing) {
        std::string less = profile_replace(content, section, key, std::nullopt);
        require(less.size() < content.size(), "removal of a key");
        content = std::move(less);
    }
    const std::string less = profile_replace(content, section, std::nullopt, std::nullopt);
    require(less.size() <= content.size(), "removal of a section");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view content(reinterpret_cast<const char*>(data), size);
    const std::string_view section = take_line(content);
    const std::string_view key = take_line(content);
    const std::string_view value = take_line(content);

    for (const std::size_t buffer : {0U, 1U, 2U, 3U, 50U}) {
        const std::size_t most = buffer == 0 ? 0 : buffer - 1;
        require(profile_lookup(content, section, key, value, buffer).size() <= most, "buffer");
        require(profile_lookup(content, section, std::nullopt, value, buffer).size() <= most,
                "buffer");
        require(profile_lookup(content, std::nullopt, key, value, buffer).size() <= most, "buffer");
    }

    const std::string after = profile_replace(content, section, key, value);
    check_rest_kept(content, after);
    check_removal(std::string(content), section, key);
    if (!is_section_name(section) || !is_key(key)) return 0;
    check_other_sections(content, after, section);
    require(profile_replace(after, section, key, value) == after, "written twice");
    if (is_value(value)) require(value_of(after, section, key) == value, "written and read");
    return 0;
}
