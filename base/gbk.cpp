#include "base/gbk.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace servo::base {

namespace {

using Byte = unsigned char;

constexpr std::size_t kLeads = 0x100 - 0x80;
constexpr std::size_t kPlane = 0x10000;
constexpr char32_t kReplacement = 0xFFFD;

// Both directions of the code page as plain tables, filled once from the system's converter. All
// double-byte characters lie in the first plane; 0 stands for "none".
struct Tables {
    std::array<std::uint16_t, kLeads * 0x100> to_unicode{};
    std::array<std::uint16_t, kPlane> to_gbk{};
};

std::unique_ptr<Tables> make_tables() {
    auto tables = std::make_unique<Tables>();
    const iconv_t converter = iconv_open("UTF-16LE", "GBK");
    // Without the converter every character beyond ASCII shows as unknown; nothing else suffers.
    if (reinterpret_cast<std::intptr_t>(converter) == -1) return tables;
    for (unsigned lead = 0x81; lead <= 0xFE; ++lead) {
        for (unsigned trail = 0x40; trail <= 0xFE; ++trail) {
            std::array<char, 2> in{static_cast<char>(lead), static_cast<char>(trail)};
            std::array<Byte, 4> out{};
            char* from = in.data();
            char* to = reinterpret_cast<char*>(out.data());
            std::size_t from_left = in.size();
            std::size_t to_left = out.size();
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            const std::size_t done = iconv(converter, &from, &from_left, &to, &to_left);
            if (done == static_cast<std::size_t>(-1) || from_left != 0 || to_left != 2) continue;
            const unsigned unicode = out[0] | static_cast<unsigned>(out[1]) << 8;
            const unsigned code = lead << 8 | trail;
            tables->to_unicode[code - 0x8000] = static_cast<std::uint16_t>(unicode);
            tables->to_gbk[unicode] = static_cast<std::uint16_t>(code);
        }
    }
    iconv_close(converter);
    return tables;
}

const Tables& tables() {
    static const std::unique_ptr<const Tables> made = make_tables();
    return *made;
}

// Length of the run of ASCII at the start of `text`, eight bytes at a time.
std::size_t ascii_run(std::string_view text) {
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & 0x8080808080808080U) != 0) break;
    }
    while (at < text.size() && static_cast<Byte>(text[at]) < 0x80)
        ++at;
    return at;
}

// The character that begins at the first byte of `bytes`, 0 when the two bytes there are none.
char32_t double_byte(const Tables& table, std::string_view bytes) {
    const auto lead = static_cast<Byte>(bytes[0]);
    if (bytes.size() < 2 || lead < 0x80) return 0;
    const auto trail = static_cast<Byte>(bytes[1]);
    return table.to_unicode[(static_cast<std::size_t>(lead) << 8 | trail) - 0x8000];
}

void append_utf8(std::string& out, char32_t c) {
    if (c < 0x800) {
        out += static_cast<char>(0xC0 | c >> 6);
    } else {
        out += static_cast<char>(0xE0 | c >> 12);
        out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    }
    out += static_cast<char>(0x80 | (c & 0x3F));
}

// One character beyond ASCII of a UTF-8 text and the bytes that it takes. A malformed byte counts
// as one unknown character.
struct Decoded {
    char32_t character = kReplacement;
    std::size_t length = 1;
};

Decoded decode_utf8(std::string_view text) {
    const auto lead = static_cast<Byte>(text[0]);
    std::size_t length = 0;
    char32_t c = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, c = lead & 0x1F, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, c = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, c = lead & 0x07, least = 0x10000;
    }
    if (length == 0 || text.size() < length) return {};
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<Byte>(text[i]);
        if ((next & 0xC0) != 0x80) return {};
        c = c << 6 | (next & 0x3F);
    }
    if (c < least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return {};
    return {c, length};
}

}  // namespace

std::string gbk_to_utf8(std::string_view bytes) {
    std::size_t run = ascii_run(bytes);
    if (run == bytes.size()) return std::string(bytes);
    const Tables& table = tables();
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2 + 1);
    for (;;) {
        out.append(bytes.substr(0, run));
        bytes.remove_prefix(run);
        if (bytes.empty()) return out;
        const char32_t c = double_byte(table, bytes);
        append_utf8(out, c == 0 ? kReplacement : c);
        bytes.remove_prefix(c == 0 ? 1 : 2);
        run = ascii_run(bytes);
    }
}

std::string gbk_to_utf8_field(std::string_view bytes, std::size_t width) {
    std::string out;
    std::size_t left = width;
    for (;;) {
        const std::size_t run = ascii_run(bytes.substr(0, left));
        if (out.empty()) out.reserve(run == left ? width : 2 * width);
        out.append(bytes.substr(0, run));
        bytes.remove_prefix(run);
        left -= run;
        if (left == 0 || bytes.empty()) break;
        const char32_t c = double_byte(tables(), bytes);
        append_utf8(out, c == 0 ? kReplacement : c);
        bytes.remove_prefix(c == 0 ? 1 : 2);
        --left;
    }
    return out.append(left, ' ');
}

std::string utf8_to_gbk(std::string_view text) {
    std::size_t run = ascii_run(text);
    if (run == text.size()) return std::string(text);
    const Tables& table = tables();
    std::string out;
    out.reserve(text.size());
    for (;;) {
        out.append(text.substr(0, run));
        text.remove_prefix(run);
        if (text.empty()) return out;
        const Decoded next = decode_utf8(text);
        const unsigned code = next.character < kPlane ? table.to_gbk[next.character] : 0;
        if (code == 0) {
            out += '?';
        } else {
            out += static_cast<char>(code >> 8);
            out += static_cast<char>(code & 0xFF);
        }
        text.remove_prefix(next.length);
        run = ascii_run(text);
    }
}

std::size_t gbk_find(std::string_view bytes, char character) {
    if (bytes.find(character) == std::string_view::npos) return std::string_view::npos;
    const std::string_view whole = bytes;
    for (;;) {
        const std::size_t run = ascii_run(bytes);
        const std::size_t found = bytes.substr(0, run).find(character);
        const auto begin = static_cast<std::size_t>(bytes.data() - whole.data());
        if (found != std::string_view::npos) return begin + found;
        bytes.remove_prefix(run);
        if (bytes.empty()) return std::string_view::npos;
        bytes.remove_prefix(double_byte(tables(), bytes) == 0 ? 1 : 2);
    }
}

std::size_t utf8_length(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<Byte>(c) & 0xC0) != 0x80; }));
}

std::string_view utf8_prefix(std::string_view text, std::size_t count) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<Byte>(text[i]) & 0xC0) == 0x80) continue;
        if (seen == count) return text.substr(0, i);
        ++seen;
    }
    return text;
}

}  // namespace servo::base
