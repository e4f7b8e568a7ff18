#include "app/recent_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "base/gbk.h"

namespace servo::app {

namespace {

// Characters shown of a name and of a folder: together with the digit about half a small screen.
constexpr std::size_t kNameWidth = 40;
constexpr std::size_t kFolderWidth = 40;

// Empty when the path is not absolute.
std::string normal_path(std::string_view path) {
    const std::filesystem::path given(path);
    return given.is_absolute() ? given.lexically_normal().string() : std::string();
}

// Text of a file name as a menu can show it.
std::string menu_text(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        if (c == '&') shown += '&';
        const auto byte = static_cast<unsigned char>(c);
        shown += byte < 0x20 || byte == 0x7F ? ' ' : c;
    }
    return shown;
}

std::string_view utf8_suffix(std::string_view text, std::size_t count) {
    const std::size_t length = base::utf8_length(text);
    if (length <= count) return text;
    return text.substr(base::utf8_prefix(text, length - count).size());
}

}  // namespace

RecentFiles::RecentFiles(const std::vector<std::string>& paths) {
    // From the back, so that the first ones stay when there are too many.
    std::for_each(paths.rbegin(), paths.rend(), [this](const std::string& path) { add(path); });
}

void RecentFiles::add(std::string_view path) {
    std::string normal = normal_path(path);
    if (normal.empty()) return;
    std::erase(paths_, normal);
    paths_.insert(paths_.begin(), std::move(normal));
    if (paths_.size() > kMaxRecentFiles) paths_.resize(kMaxRecentFiles);
}

void RecentFiles::remove(std::string_view path) {
    std::erase(paths_, normal_path(path));
}

std::vector<RecentEntry> recent_entries(const RecentFiles& files,
                                        const std::function<bool(const std::string&)>& exists) {
    std::vector<RecentEntry> entries;
    for (const std::string& path : files.paths())
        entries.push_back({recent_text(entries.size() + 1, path), path, exists(path)});
    return entries;
}

std::string recent_text(std::size_t number, std::string_view path) {
    const std::filesystem::path whole(path);
    // Shortened before the "&" is doubled, or a cut could leave half of a pair.
    const std::string name = menu_text(shorten_middle(whole.filename().string(), kNameWidth));
    const std::string folder =
        menu_text(shorten_middle(whole.parent_path().string(), kFolderWidth));
    return fmt::format("&{}  {} — {}", number, name, folder);
}

std::string shorten_middle(std::string_view text, std::size_t width) {
    if (base::utf8_length(text) <= width) return std::string(text);
    // The end tells more than the beginning: the inner folders, the suffix.
    const std::size_t front = (width - 1) / 2;
    const std::size_t back = width - 1 - front;
    return fmt::format("{}…{}", base::utf8_prefix(text, front), utf8_suffix(text, back));
}

}  // namespace servo::app
