#include "cli/configuration_input.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/file.h"

namespace servo::cli {
namespace {

constexpr std::size_t kIdentityDigits = 6;

constexpr base::Text kUnreadable{"servoctl: 无法读取 {}", "servoctl: {} can't be read"};
constexpr base::Text kBroken{"servoctl: {} 的第 {} 行不完整；该行及其后的内容没有载入",
                             "servoctl: {} breaks off at line {}; nothing of it and behind it is "
                             "loaded"};

template <typename... Values>
std::string filled(base::Text text, base::Language language, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

bool blank(std::string_view line) {
    return std::ranges::all_of(line, [](char c) { return c == ' ' || c == '\t' || c == '\0'; });
}

template <typename Row, typename Read>
std::optional<ConfigurationInput<Row>> read_input(const std::filesystem::path& file,
                                                  std::size_t fields, const Options& options,
                                                  const Output& output, const Read& read) {
    const auto bytes = base::read_file(file);
    if (!bytes) {
        output.message(filled(kUnreadable, options.language, file.string()));
        return std::nullopt;
    }
    ConfigurationInput<Row> input{read(*bytes), std::nullopt};
    input.broken_line = tools::broken_line(*bytes, input.rows.size(), fields);
    if (input.broken_line)
        output.message(filled(kBroken, options.language, file.string(), *input.broken_line));
    return input;
}

}  // namespace

std::string short_key(const std::string& Index) {
    return Index.substr(0, kIdentityDigits);
}

std::string name_of(const std::string& name_ch, const std::string& name_en,
                    base::Language language) {
    const bool english = language == base::Language::kEnglish;
    // A name that the dictionary lacks is a field of blanks.
    for (const std::string* name : {english ? &name_en : &name_ch, english ? &name_ch : &name_en})
        if (!blank(*name)) return *name;
    return {};
}

std::optional<ConfigurationInput<tools::SourceRow>> read_source(const std::filesystem::path& file,
                                                                const Options& options,
                                                                const dictionary::Store& dictionary,
                                                                const Output& output) {
    return read_input<tools::SourceRow>(
        file, tools::kCdiFields, options, output,
        [&](std::string_view bytes) { return tools::read_cdi(bytes, dictionary); });
}

std::optional<ConfigurationInput<tools::DriverRow>> read_template(
    const std::filesystem::path& file, const Options& options, const dictionary::Store& dictionary,
    const Output& output) {
    return read_input<tools::DriverRow>(
        file, tools::kCdoFields, options, output,
        [&](std::string_view bytes) { return tools::read_cdo(bytes, dictionary); });
}

}  // namespace servo::cli
