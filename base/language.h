// The language of the screen, and the pair of texts that most things shown have.
#pragma once

#include <cstdint>
#include <string_view>

namespace servo::base {

enum class Language : std::uint8_t { kChinese = 0, kEnglish = 1 };

// Two literals of one text. Views of string literals.
struct Text {
    std::string_view chinese;
    std::string_view english;

    constexpr std::string_view in(Language language) const {
        return language == Language::kChinese ? chinese : english;
    }
};

// The font that goes with a language.
constexpr std::string_view font_name(Language language) {
    return language == Language::kChinese ? "宋体" : "Tahoma";
}

}  // namespace servo::base
