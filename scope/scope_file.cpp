#include "scope/scope_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::scope {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kNameWidth = 64;  // of the name fields, in characters

std::string without(std::string_view text, std::string_view characters) {
    std::string out(text);
    for (char& c : out)
        if (characters.find(c) != std::string_view::npos) c = ' ';
    return out;
}

// Reads the name through the trim, and fills its field with blanks behind it.
std::string trim_name(std::string& field) {
    std::string name = dictionary::trim_tail(field);
    const std::size_t length = base::utf8_length(name);
    field = name;
    field.append(kNameWidth - std::min(length, kNameWidth), ' ');
    return name;
}

std::string channel_line(ScopeChannel& channel, base::Language language) {
    const dictionary::ObjectRecord* picked = channel.picked();
    if (picked == nullptr) return "NULL,0";
    if (!channel.enable) return fmt::format("NULL,{}", picked->key);
    auto& entry = channel.entries.at(static_cast<std::size_t>(picked - channel.entries.data()));
    std::string& field = language == base::Language::kChinese ? entry.name_ch : entry.name_en;
    return fmt::format("{},{}", without(trim_name(field), kLineEnd), entry.key);
}

// Sample lines that a number in Text3 stands for; nothing when the arrays do not hold so many.
std::optional<std::size_t> line_count(std::string_view text3) {
    const double count = std::trunc(base::leading_number(text3));
    if (count > static_cast<double>(kMaxSamples)) return std::nullopt;
    return static_cast<std::size_t>(std::max(count, 0.0));
}

}  // namespace

std::optional<std::string> scope_text(ScopeData& data, const link::FormulaOperands& operands,
                                      base::Language language) {
    std::string text =
        fmt::format("{},{}", without(data.Text1, ",\r\n"), without(data.Text3, ",\r\n"));
    text += kLineEnd;
    text +=
        fmt::format("{},{},{},{},{}", operands.o64100320.value,
                    static_cast<std::int16_t>(operands.o65100310.value), operands.o30400710.value,
                    operands.o60F61310.value, operands.o60F61110.value);
    text += kLineEnd;
    for (std::size_t channel = 0; channel < kCurves; ++channel)
        text.append(channel_line(data.channels[channel], language)).append(kLineEnd);
    text = base::utf8_to_gbk(text);

    const std::optional<std::size_t> count = line_count(data.Text3);
    if (!count) return std::nullopt;
    const auto& channels = data.channels;
    for (std::size_t i = 0; i < *count; ++i) {
        fmt::format_to(std::back_inserter(text), "{},{},{},{}\r\n", channels[0].samples[i],
                       channels[1].samples[i], channels[2].samples[i], channels[3].samples[i]);
    }
    return text;
}

std::string clean_file_name(std::string_view name) {
    return without(name, std::string_view("\0\r\n", 3));
}

bool ends_in_xls(std::string_view name) {
    const std::size_t length = base::utf8_length(name);
    const std::size_t before = length - std::min<std::size_t>(length, 4);
    const std::string_view tail = name.substr(base::utf8_prefix(name, before).size());
    return tail.find("xls") != std::string_view::npos;
}

Exported export_scope(const std::filesystem::path& file, ScopeData& data,
                      const link::FormulaOperands& operands, base::Language language) {
    const std::string name = clean_file_name(file.string());
    // On purpose: these names ask for a spreadsheet, and there is no writer for one. A text under
    // such a name would only make the spreadsheet program complain.
    if (name.empty() || ends_in_xls(name)) return Exported::kNothing;
    const std::optional<std::string> text = scope_text(data, operands, language);
    if (!text || !base::write_file(name, *text)) return Exported::kFailed;
    return Exported::kWritten;
}

}  // namespace servo::scope
