#include "params/page_loader.h"

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::params {

namespace {

constexpr std::size_t kKeyDigits = 6;

// The last characters of a line; all of it when it is shorter. Characters of the code page, not
// bytes: the second byte of a Chinese one may look like a digit.
std::string last_characters(std::string_view line) {
    std::string text = base::gbk_to_utf8(line);
    const std::size_t length = base::utf8_length(text);
    if (length > kKeyDigits) {
        text.erase(0, base::utf8_prefix(text, length - kKeyDigits).size());
    }
    return text;
}

}  // namespace

std::vector<dictionary::Identity> parse_page_keys(std::string_view content) {
    std::vector<dictionary::Identity> keys;
    base::LineReader lines(content);
    if (!lines.next() || !lines.next()) return keys;
    while (const auto line = lines.next()) {
        if (line->empty() || keys.size() == kMaxPageKeys) break;
        // Six digits fit the key.
        keys.push_back(static_cast<dictionary::Identity>(base::scan_hex(last_characters(*line))));
    }
    return keys;
}

std::optional<std::vector<dictionary::Identity>> load_page_keys(const std::filesystem::path& folder,
                                                                std::string_view file) {
    const auto content = base::read_file(base::find_in(folder, file));
    if (!content) return std::nullopt;
    return parse_page_keys(*content);
}

std::string missing_file_text(std::string_view file) {
    return "Missing file " + std::string(file);
}

}  // namespace servo::params
