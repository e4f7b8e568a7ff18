#include "cli/command_diff.h"

#include <fmt/format.h>

#include "base/number.h"
#include "cli/configuration_input.h"
#include "tools/configuration_compare.h"

namespace servo::cli {
namespace {

constexpr base::Text kUnusable{"servoctl: 没有可比较对象的行数：{}",
                               "servoctl: rows that name no object to be compared: {}"};

// A number where there is one, else why there is none.
Field value_field(const tools::ComparedValue& value, const tools::ComparedRow& row,
                  const Options& options) {
    if (value.side != tools::ComparedSide::kValue || options.transfer.units)
        return tools::compared_text(value, row, options.language);
    return static_cast<std::int64_t>(base::leading_number(value.raw));
}

}  // namespace

ExitStatus run_diff(const Options& options, const dictionary::Store& dictionary,
                    const Output& output) {
    const TransferOptions& files = options.transfer;
    const auto A = read_source(files.in, options, dictionary, output);
    const auto B = read_source(files.out, options, dictionary, output);
    if (!A || !B) return ExitStatus::kFile;
    const tools::Comparison comparison = tools::compare_configurations(
        tools::configuration_values(A->rows), tools::configuration_values(B->rows), dictionary);
    if (comparison.unusable > 0)
        output.message(
            fmt::format(fmt::runtime(kUnusable.in(options.language)), comparison.unusable));
    RowPrinter printer(output, options.json, {"key", "name", "A", "B"});
    for (const tools::ComparedRow& row : comparison.rows)
        printer.row({short_key(row.Index), name_of(row.name_ch, row.name_en, options.language),
                     value_field(row.A, row, options), value_field(row.B, row, options)});
    printer.finish();
    return comparison.rows.empty() ? ExitStatus::kDone : ExitStatus::kNo;
}

}  // namespace servo::cli
