#include "tools/configuration_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "link/abort_text.h"
namespace servo::tools {

namespace {

using base::Language;
using base::Text;

constexpr Text kDrive{"驱动器", "Drive"};

bool chinese(Language language) {
    return language == Language::kChinese;
}

std::string source_name(const std::string& name, Language language) {
    return name.empty() ? std::string(kDrive.in(language)) : name;
}

const std::string& name_of(const std::string& zh, const std::string& en, Language language) {
    const std::string& wanted = chinese(language) ? zh : en;
    return wanted.empty() ? (chinese(language) ? en : zh) : wanted;
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

// --- Comparison

struct Sides {
    std::size_t differ = 0;
    std::size_t only_A = 0;
    std::size_t only_B = 0;
};

Sides sides_of(const Comparison& comparison) {
    Sides sides;
    for (const ComparedRow& row : comparison.rows) {
        if (row.B.side == ComparedSide::kAbsent)
            ++sides.only_A;
        else if (row.A.side == ComparedSide::kAbsent)
            ++sides.only_B;
        else
            ++sides.differ;
    }
    return sides;
}

std::string chinese_summary(const Comparison& found, const std::string& A, const std::string& B) {
    const Sides sides = sides_of(found);
    std::string text = fmt::format("{} 个数值不同", sides.differ);
    if (sides.only_A > 0) text += fmt::format("，{} 个对象仅在 {} 中", sides.only_A, A);
    if (sides.only_B > 0) text += fmt::format("，{} 个对象仅在 {} 中", sides.only_B, B);
    text += fmt::format("，{} 个对象相同", found.equal);
    if (found.unusable > 0) text += fmt::format("，{} 行没有对象", found.unusable);
    return text;
}

std::string english_summary(const Comparison& found, const std::string& A, const std::string& B) {
    const Sides sides = sides_of(found);
    const auto only = [](std::size_t count, const std::string& where) {
        return fmt::format(", {} only in {}", counted(count, "object is", "objects are"), where);
    };
    std::string text = counted(sides.differ, "value differs", "values differ");
    if (sides.only_A > 0) text += only(sides.only_A, A);
    if (sides.only_B > 0) text += only(sides.only_B, B);
    text += fmt::format(", {} the same", counted(found.equal, "object is", "objects are"));
    if (found.unusable > 0)
        text += fmt::format(", {} no object", counted(found.unusable, "row names", "rows name"));
    return text;
}

ConfigurationReport report(const ComparisonFinding& finding, Language language) {
    const std::string A = source_name(finding.A, language);
    const std::string B = source_name(finding.B, language);
    ConfigurationReport report;
    report.title = fmt::format("{}{} / {}", chinese(language) ? "比较：" : "Comparison: ", A, B);
    report.summary = chinese(language) ? chinese_summary(finding.comparison, A, B)
                                       : english_summary(finding.comparison, A, B);
    if (chinese(language))
        report.headers = {"索引", "名称", A, B, "说明"};
    else
        report.headers = {"Index", "Name", A, B, "Remark"};
    for (const ComparedRow& row : finding.comparison.rows)
        report.rows.push_back({.cells = {row.Index, name_of(row.name_ch, row.name_en, language),
                                         compared_text(row.A, row, language),
                                         compared_text(row.B, row, language), std::string()}});
    return report;
}

// --- Dry run

std::string remarks_of(const CheckedRow& row, Language language) {
    std::string text;
    for (const RowWarning warning : row.warnings) {
        if (!text.empty()) text += chinese(language) ? "；" : "; ";
        text += warning_text(warning).in(language);
    }
    return text;
}

std::string written_text(const CheckedRow& row, Language language) {
    if (row.goes_out.empty()) return chinese(language) ? "（不写入）" : "(not sent)";
    if (row.changes) return compared_text(row.values.B, row.values, language);
    return chinese(language) ? "（不变）" : "(unchanged)";
}

ConfigurationReport report(const DryRunFinding& finding, Language language) {
    const DryRun& run = finding.run;
    ConfigurationReport report;
    report.warns = run.warned > 0;
    if (chinese(language)) {
        report.title = fmt::format("试运行：{}", finding.file);
        report.headers = {"索引", "名称", "驱动器当前值", "写入后", "说明"};
        report.summary = fmt::format("写入 {} 行将改变 {} 个数值；{} 行有警告。未写入任何数据。",
                                     run.writes, run.changes, run.warned);
    } else {
        report.title = fmt::format("Dry run: {}", finding.file);
        report.headers = {"Index", "Name", "Drive now", "After the write", "Remark"};
        report.summary =
            fmt::format("{} would be written and change {}; {}. Nothing was written.",
                        counted(run.writes, "row", "rows"), counted(run.changes, "value", "values"),
                        counted(run.warned, "row has a warning", "rows have warnings"));
    }
    for (const CheckedRow& row : run.rows)
        report.rows.push_back(
            {.cells = {row.values.Index, name_of(row.values.name_ch, row.values.name_en, language),
                       compared_text(row.values.A, row.values, language),
                       written_text(row, language), remarks_of(row, language)},
             .warns = !row.warnings.empty()});
    return report;
}

// --- Failures

std::string reason_of(const FailedRow& row, Language language) {
    if (row.Result == kInvalidWord)
        return std::string(warning_text(RowWarning::kInvalid).in(language));
    if (row.no_key)
        return chinese(language) ? "键或数值无法发送" : "key or value that cannot be sent";
    if (row.refusal != 0) return link::abort_text(row.refusal, language);
    return chinese(language) ? "驱动器的应答不符" : "another answer than the one expected";
}

ConfigurationReport report(const FailureFinding& finding, Language language) {
    const auto invalid = static_cast<std::size_t>(std::ranges::count_if(
        finding.rows, [](const FailedRow& row) { return row.Result == kInvalidWord; }));
    const std::size_t failed = finding.rows.size() - invalid;
    ConfigurationReport report;
    report.warns = failed > 0;
    if (chinese(language)) {
        report.title = fmt::format("失败的行：{}", finding.file);
        report.headers = {"索引", "名称", "行", "数值", "原因"};
        report.summary = fmt::format("{} 行失败", failed);
        if (invalid > 0) report.summary += fmt::format("，{} 行无效而被跳过", invalid);
    } else {
        report.title = fmt::format("Failed rows: {}", finding.file);
        report.headers = {"Index", "Name", "Row", "Value", "Reason"};
        report.summary = fmt::format("{} failed", counted(failed, "row", "rows"));
        if (invalid > 0)
            report.summary += fmt::format(", {} passed over",
                                          counted(invalid, "invalid row was", "invalid rows were"));
    }
    for (const FailedRow& row : finding.rows)
        report.rows.push_back(
            {.cells = {row.Index, name_of(row.name_ch, row.name_en, language),
                       std::to_string(row.row), row.value, reason_of(row, language)},
             .warns = row.Result != kInvalidWord});
    return report;
}

// A cell stays in its cell whatever a file put into it.
std::string cell_text(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return text;
}

template <typename Cells>
std::string line_of(const Cells& cells) {
    std::string line;
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) line += '\t';
        line += cell_text(cell);
    }
    return line + "\r\n";
}

}  // namespace

FailureFinding failures_of(const std::vector<SourceRow>& rows) {
    FailureFinding finding{.rows = {}, .file = {}, .writing = true};
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const SourceRow& row = rows[at];
        if (row.Result.empty() || row.Result == kTrueWord) continue;
        finding.rows.push_back({.row = at,
                                .Index = row.Index,
                                .name_ch = row.name_ch,
                                .name_en = row.name_en,
                                .value = row.Source_Value,
                                .Result = row.Result,
                                .refusal = row.refusal,
                                .no_key = !row_key(row.Index) || !source_number(row.Source_Value)});
    }
    return finding;
}

FailureFinding failures_of(const std::vector<DriverRow>& rows) {
    FailureFinding finding;
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const DriverRow& row = rows[at];
        if (row.Result != kFalseWord) continue;
        finding.rows.push_back({.row = at,
                                .Index = row.Index,
                                .name_ch = row.name_ch,
                                .name_en = row.name_en,
                                .value = {},
                                .Result = row.Result,
                                .refusal = row.refusal,
                                .no_key = !row_key(row.Index)});
    }
    return finding;
}

ConfigurationReport report_of(const ConfigurationFinding& finding, base::Language language) {
    return std::visit([language](const auto& found) { return report(found, language); }, finding);
}

std::string report_text(const ConfigurationReport& report) {
    std::string text = cell_text(report.title) + "\r\n" + cell_text(report.summary) + "\r\n\r\n" +
                       line_of(report.headers);
    for (const ReportRow& row : report.rows)
        text += line_of(row.cells);
    return text;
}

}  // namespace servo::tools
