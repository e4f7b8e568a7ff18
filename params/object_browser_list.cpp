#include "params/object_browser_list.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"

namespace servo::params {

namespace {

using base::Language;

// The two of a column with one text are the same on purpose: the list has one header for each
// column, and only the keys are called differently in the two languages.
constexpr std::array<base::Text, kListColumns> kHeaders{{{"索引1", "Index"},
                                                         {"索引2", "Sub."},
                                                         {"变量名", "变量名"},
                                                         {"Name", "Name"},
                                                         {"属性", "属性"},
                                                         {"数据类型", "数据类型"},
                                                         {"注释", "注释"},
                                                         {"Comment", "Comment"},
                                                         {"公式", "公式"}}};

constexpr std::array<base::Text, kListColumns> kTitles{{{"索引1", "Index"},
                                                        {"索引2", "Sub."},
                                                        {"变量名", "Chinese name"},
                                                        {"英文名", "Name"},
                                                        {"属性", "Attr."},
                                                        {"数据类型", "Data type"},
                                                        {"注释", "Chinese comment"},
                                                        {"英文注释", "Comment"},
                                                        {"公式", "Formula"}}};

// In thousandths of the list. The comments have a pane of their own.
constexpr int kWhole = 1000;
constexpr int kNameWidth = 550;
constexpr std::array<int, kListColumns> kWidths{105, 85, kNameWidth, kNameWidth, 85, 140};

std::string_view text_at(const std::array<base::Text, kListColumns>& texts, int column,
                         Language language) {
    if (column < 0 || column >= kListColumns) return {};
    return texts.at(static_cast<std::size_t>(column)).in(language);
}

// Distance from a capital to its small letter, 0 for anything else.
char32_t case_distance(char32_t c) {
    const auto within = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
    if (within(U'A', U'Z')) return 32;
    if (within(0x00C0, 0x00DE) && c != 0x00D7) return 32;
    if (within(0x0391, 0x03A9) && c != 0x03A2) return 32;  // Greek
    if (within(0x0410, 0x042F)) return 32;                 // Cyrillic
    if (c == 0x0401) return 80;
    if (within(0x2160, 0x216F)) return 16;  // Roman numerals
    if (within(0xFF21, 0xFF3A)) return 32;  // full width
    return 0;
}

std::size_t length_at(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0xC0 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
    return std::min(length, text.size() - at);
}

unsigned bits(char byte) {
    return static_cast<unsigned char>(byte) & 0x3FU;
}

// A character of several bytes with its case changed. No small letter has another length than its
// capital. Bytes that are no character stay as they are.
void append_lower(std::string& out, std::string_view character) {
    const auto lead = static_cast<unsigned char>(character[0]);
    const bool two = character.size() == 2 && lead < 0xE0;
    const bool three = character.size() == 3 && lead < 0xF0;
    char32_t code = 0;
    if (two) code = (lead & 0x1FU) << 6U | bits(character[1]);
    if (three) code = (lead & 0x0FU) << 12U | bits(character[1]) << 6U | bits(character[2]);
    const char32_t distance = case_distance(code);
    if (distance == 0) {
        out += character;
        return;
    }
    code += distance;
    if (two) {
        out += static_cast<char>(0xC0U | code >> 6U);
    } else {
        out += static_cast<char>(0xE0U | code >> 12U);
        out += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
    }
    out += static_cast<char>(0x80U | (code & 0x3FU));
}

}  // namespace

std::string_view list_header(int column, Language language) {
    return text_at(kHeaders, column, language);
}

std::string_view list_title(int column, Language language) {
    return text_at(kTitles, column, language);
}

int list_column_width(int column, int list_width, Language language) {
    if (column < 0 || column >= kListColumns) return 0;
    if (column == kListNameCh && language == Language::kEnglish) return 0;
    if (column == kListNameEn && language == Language::kChinese) return 0;
    return list_width * kWidths.at(static_cast<std::size_t>(column)) / kWhole;
}

std::string lower_case(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view character = text.substr(at, length_at(text, at));
        if (character.size() == 1) {
            out += base::ascii_lower(character[0]);
        } else {
            append_lower(out, character);
        }
        at += character.size();
    }
    return out;
}

std::string search_text(const dictionary::Store& dictionary, int row) {
    const auto cell = [&](ListColumn column) {
        return dictionary.dictionary_cell(static_cast<std::size_t>(row - 1), column);
    };
    return lower_case(cell(kListIndex) + cell(kListSub) + ' ' + cell(kListNameCh) + ' ' +
                      cell(kListNameEn));
}

void ListSearch::forget() {
    texts_.clear();
    ends_.clear();
    matches_known_ = false;
}

void ListSearch::make_texts() {
    if (!ends_.empty()) return;
    ends_.reserve(dictionary_.dictionary_rows());
    for (int row = 1; row < rows(); ++row) {
        texts_ += search_text(dictionary_, row);
        ends_.push_back(texts_.size());
    }
}

const std::vector<int>& ListSearch::matches(std::string_view text) {
    const std::string wanted = lower_case(text);
    if (matches_known_ && wanted == matched_) return matches_;
    make_texts();
    matches_.clear();
    std::size_t begin = 0;
    for (std::size_t i = 0; i < ends_.size(); ++i) {
        const auto row_text = std::string_view(texts_).substr(begin, ends_[i] - begin);
        if (row_text.find(wanted) != std::string_view::npos)
            matches_.push_back(static_cast<int>(i) + 1);
        begin = ends_[i];
    }
    matched_ = wanted;
    matches_known_ = true;
    return matches_;
}

int ListSearch::next(std::string_view text, int row) {
    if (rows() == 1) return 0;
    if (text.empty()) return row + 1 < rows() ? row + 1 : 1;
    const std::vector<int>& found = matches(text);
    if (found.empty()) return 0;
    const auto below = std::upper_bound(found.begin(), found.end(), row);
    return below == found.end() ? found.front() : *below;
}

int ListSearch::previous(std::string_view text, int row) {
    if (rows() == 1) return 0;
    if (text.empty()) return row > 1 ? row - 1 : rows() - 1;
    const std::vector<int>& found = matches(text);
    if (found.empty()) return 0;
    const auto here = std::lower_bound(found.begin(), found.end(), row);
    return here == found.begin() ? found.back() : *(here - 1);
}

ListSearch::Place ListSearch::place(std::string_view text, int row) {
    if (text.empty()) return {row, rows() - 1};
    const std::vector<int>& found = matches(text);
    const auto here = std::lower_bound(found.begin(), found.end(), row);
    const bool is_match = here != found.end() && *here == row;
    return {is_match ? static_cast<int>(here - found.begin()) + 1 : 0,
            static_cast<int>(found.size())};
}

}  // namespace servo::params
