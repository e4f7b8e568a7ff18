#include "app/tag_text.h"

namespace servo::app {

namespace {

constexpr std::string_view kBlockSeparator = "\r\n";

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + separator.size());
    }
}

std::string_view part(std::string_view text, std::string_view separator, unsigned slot) {
    const auto parts = split(text, separator);
    return slot < parts.size() ? parts[slot] : parts.front();
}

}  // namespace

std::string_view tag_part(std::string_view pair, unsigned slot) {
    return part(pair, "/", slot);
}

std::string_view tag_part(std::string_view pair, base::Language language) {
    return tag_part(pair, slot_of(language));
}

std::string_view block_part(std::string_view block, unsigned slot) {
    return part(block, kBlockSeparator, slot);
}

std::string_view window_caption(std::string_view tag, unsigned slot) {
    return tag_part(part(tag, "\\", 0), slot);
}

std::string_view window_caption(std::string_view tag, base::Language language) {
    return window_caption(tag, slot_of(language));
}

bool tag_is_custom(std::string_view tag) {
    return tag.find('\\') != std::string_view::npos;
}

std::vector<std::string_view> tab_captions(std::string_view tag, unsigned slot) {
    auto tabs = split(tag, "|");
    for (auto& tab : tabs)
        tab = tag_part(tab, slot);
    return tabs;
}

std::vector<std::string_view> tab_captions(std::string_view tag, base::Language language) {
    return tab_captions(tag, slot_of(language));
}

}  // namespace servo::app
