// The configuration files of a command line, read and looked at.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "cli/options.h"
#include "cli/output.h"
#include "dictionary/store.h"
#include "tools/configuration_rows.h"

namespace servo::cli {

template <typename Row>
struct ConfigurationInput {
    std::vector<Row> rows;
    // Number, from 1, of a line that cannot be split into its fields although there is something to
    // split in it or behind it. Loading ends there.
    std::optional<std::size_t> broken_line;
};

// Line behind which nothing was loaded, although something is there: `loaded` lines became rows.
// `fields`: how many a line needs.
std::optional<std::size_t> broken_line(std::string_view bytes, std::size_t loaded,
                                       std::size_t fields);

// Nothing, and a message, when the file cannot be read. A broken line is said too.
std::optional<ConfigurationInput<tools::SourceRow>> read_source(const std::filesystem::path& file,
                                                                const Options& options,
                                                                const dictionary::Store& dictionary,
                                                                const Output& output);
std::optional<ConfigurationInput<tools::DriverRow>> read_template(
    const std::filesystem::path& file, const Options& options, const dictionary::Store& dictionary,
    const Output& output);

// Six digits of an index of eight.
std::string short_key(const std::string& Index);

// The name in the language, the other one where there is none.
std::string name_of(const std::string& name_ch, const std::string& name_en,
                    base::Language language);

}  // namespace servo::cli
