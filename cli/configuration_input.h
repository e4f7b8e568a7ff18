// The configuration files of a command line, read and looked at.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/output.h"
#include "dictionary/store.h"
#include "tools/configuration_rows.h"

namespace servo::cli {

template <typename Row>
struct ConfigurationInput {
    std::vector<Row> rows;
    // The line at which the file breaks off.
    std::optional<std::size_t> broken_line;
};

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
