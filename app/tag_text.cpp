#include "app/tag_text.h"

namespace servo::app {

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::string_view tag_part(std::string_view pair, unsigned position) {
    const auto parts = split(pair, '/');
    return position < parts.size() ? parts[position] : parts.front();
}

std::string_view tag_part(std::string_view pair, base::Language language) {
    return tag_part(pair, static_cast<unsigned>(language));
}

std::string_view window_caption(std::string_view tag, base::Language language) {
    return tag_part(split(tag, '\\').front(), language);
}

bool tag_is_custom(std::string_view tag) {
    return tag.find('\\') != std::string_view::npos;
}

std::vector<std::string_view> tab_captions(std::string_view tag, base::Language language) {
    auto tabs = split(tag, '|');
    for (auto& tab : tabs)
        tab = tag_part(tab, language);
    return tabs;
}

}  // namespace servo::app
