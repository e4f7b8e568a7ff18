#include "firmware/batch.h"

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"
#include "base/profile_file.h"

namespace servo::firmware {

namespace {

// Room for one character less than told, as everywhere in such files.
constexpr std::size_t kCompareSize = 1024;
constexpr std::size_t kOtherSize = 50;

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// A name may stand for another: the first line, in any section, that holds it with a "=" behind
// tells which. Case counts here, and the line is taken as it stands, blanks included.
std::string resolve(std::string_view content, const std::string& name) {
    const std::string key = std::string(trim(name)) + "=";
    base::LineReader lines(content);
    while (const auto line = lines.next()) {
        if (line->find(key) == std::string_view::npos) continue;
        const std::string_view value = line->substr(line->find('=') + 1);
        return std::string(value.substr(0, value.find('=')));
    }
    return name;
}

// `count` characters of a UTF-8 text from the one at `position`, counted from 1.
std::string_view characters(std::string_view text, std::int64_t position, std::size_t count) {
    const auto before = static_cast<std::size_t>(position - 1);
    text.remove_prefix(base::utf8_prefix(text, before).size());
    return base::utf8_prefix(text, count);
}

}  // namespace

std::optional<Product> find_product(std::string_view content, std::string_view name) {
    const std::string section = base::utf8_to_gbk(name);
    const auto read = [&](std::string_view key, std::size_t size) {
        return base::profile_lookup(content, section, key, {}, size);
    };
    const std::string compare = read("SN_Compare", kCompareSize);
    const std::string position = read("Compare_Pos", kOtherSize);
    const std::string length = read("SN_Length", kOtherSize);
    const std::string file = read("FW_Name", kOtherSize);
    if (compare.empty() || position.empty() || length.empty() || file.empty()) return std::nullopt;
    return Product{base::gbk_to_utf8(compare), base::gbk_to_utf8(position),
                   base::gbk_to_utf8(length), base::gbk_to_utf8(resolve(content, file))};
}

Barcode check_barcode(std::string_view barcode, const Product& shown) {
    if (base::leading_number(shown.SN_Length) != static_cast<double>(base::utf8_length(barcode)))
        return Barcode::kWrongLength;
    const std::int64_t position = base::round_half_even(base::leading_number(shown.Compare_Pos));
    if (position < 1) return Barcode::kBadPosition;
    const std::size_t count = base::utf8_length(shown.SN_Compare);
    return characters(barcode, position, count) == shown.SN_Compare ? Barcode::kMatches
                                                                    : Barcode::kNoMatch;
}

// Batch files come from other systems, so either slash parts folders, and the case of the image's
// name may differ.
std::filesystem::path image_beside(std::string_view ini_path, std::string_view file_name) {
    const std::size_t slash = ini_path.find_last_of("/\\");
    if (slash == std::string_view::npos) return base::find_in({}, file_name);
    return base::find_in(std::filesystem::path(ini_path.substr(0, slash + 1)), file_name);
}

}  // namespace servo::firmware
