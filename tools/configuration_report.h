// What the additions of the configuration window show, as one plain table: the differences of a
// comparison, the outcome of a dry run, the rows of a job that failed. It can be kept as text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/language.h"
#include "tools/configuration_check.h"
#include "tools/configuration_compare.h"
#include "tools/configuration_rows.h"

namespace servo::tools {

inline constexpr std::size_t kReportColumns = 5;

struct ReportRow {
    std::array<std::string, kReportColumns> cells;
    bool warns = false;  // a warning is in the last cell
    bool operator==(const ReportRow&) const = default;
};

struct ConfigurationReport {
    std::string title;
    std::string summary;  // one line
    std::array<std::string, kReportColumns> headers;
    std::vector<ReportRow> rows;
    bool warns = false;  // the summary is a warning
};

// Where values come from, as the user knows it: a file's name, or empty for the drive.
struct ComparisonFinding {
    Comparison comparison;
    std::string A;
    std::string B;
};
struct DryRunFinding {
    DryRun run;
    std::string file;
};
struct FailedRow {
    std::size_t row = 0;
    std::string Index;
    std::string name_ch;
    std::string name_en;
    std::string value;  // that should have been written; empty for a read
    std::string Result;
    std::uint32_t refusal = 0;
    bool no_key = false;  // the row was never sent
};
struct FailureFinding {
    std::vector<FailedRow> rows;
    std::string file;
    bool writing = false;
};
using ConfigurationFinding = std::variant<ComparisonFinding, DryRunFinding, FailureFinding>;

// Rows with "False", and the invalid ones of a file, which are not counted as failures.
FailureFinding failures_of(const std::vector<SourceRow>& rows);
FailureFinding failures_of(const std::vector<DriverRow>& rows);

ConfigurationReport report_of(const ConfigurationFinding& finding, base::Language language);

// Title, summary, headers and rows, cells separated by tabs, lines ended by CR LF, UTF-8.
std::string report_text(const ConfigurationReport& report);

}  // namespace servo::tools
