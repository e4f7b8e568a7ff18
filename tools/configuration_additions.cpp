// What the configuration window offers beyond its two jobs: looking before writing, comparing, and
// keeping what went wrong.
#include "base/file.h"
#include "tools/configuration.h"

namespace servo::tools {

namespace {

constexpr base::Text kNoSource{"cdi文件未选择!", "Did not chose any cdi file!"};
constexpr base::Text kNotSaved{"无法写入文件。", "The file could not be written."};
constexpr base::Text kNotOpened{"无法打开文件。", "The file could not be opened."};

std::string name_of(const std::filesystem::path& file) {
    const auto text = file.filename().u8string();
    return {text.begin(), text.end()};
}

}  // namespace

bool ImExport::link_open() const {
    const link::Engine& engine = services_.engine;
    return engine.state.channel == 0 ? engine.serial.is_open() : engine.can.is_open();
}

void ImExport::show_side(ConfigurationSide side) {
    if (side_ == side) return;
    side_ = side;
    tell();
}

void ImExport::stop() {
    job_.stop();
}

void ImExport::dry_run() {
    begin_survey(Survey::kDryRun);
}

void ImExport::compare_with_drive() {
    begin_survey(Survey::kComparison);
}

void ImExport::begin_survey(Survey survey) {
    if (locked_ || running()) return;
    if (source_file_.empty()) {
        say(kNoSource);
        return;
    }
    if (other_job_runs()) return;
    sent_ = ConfigurationCommand::kNone;
    data_.survey = template_of(data_.source);
    survey_ = survey;
    job_.start_survey();
    lock();
    tell();
}

// The lock goes with the reading: nothing has been written that the drive would still work on.
void ImExport::end_survey() {
    const Survey wanted = *survey_;
    survey_.reset();
    locked_ = false;
    if (data_.survey_count.end != TransferEnd::kFinished) return;
    const link::FormulaOperands& operands = services_.engine.values().operands;
    switch (wanted) {
        case Survey::kDryRun:
            finding_ = DryRunFinding{
                tools::dry_run(data_.source, data_.survey, services_.dictionary, operands),
                name_of(source_file_)};
            break;
        case Survey::kComparison:
            finding_ = ComparisonFinding{compare_configurations(configuration_values(data_.source),
                                                                configuration_values(data_.survey),
                                                                services_.dictionary, operands),
                                         name_of(source_file_),
                                         {}};
            break;
    }
}

void ImExport::compare_with_file(ConfigurationSide side) {
    const bool of_file = side == ConfigurationSide::kWrite;
    if (locked_ || running()) return;
    if (of_file && source_file_.empty()) {
        say(kNoSource);
        return;
    }
    const auto chosen = services_.ask_file(
        {.save = false, .kind = "cdi", .suffix = "cdi", .suggestion = source_file_});
    if (!chosen) return;
    const auto bytes = base::read_file(*chosen);
    if (!bytes) {
        say(kNotOpened);
        return;
    }
    const auto other = read_cdi(*bytes, services_.dictionary);
    const auto mine =
        of_file ? configuration_values(data_.source) : configuration_values(data_.driver);
    finding_ = ComparisonFinding{
        compare_configurations(mine, configuration_values(other), services_.dictionary,
                               services_.engine.values().operands),
        of_file ? name_of(source_file_) : std::string(), name_of(*chosen)};
    tell();
}

void ImExport::show_failures(ConfigurationSide side) {
    const bool write = side == ConfigurationSide::kWrite;
    FailureFinding finding = write ? failures_of(data_.source) : failures_of(data_.driver);
    finding.file = name_of(write ? source_file_ : template_file_);
    finding_ = std::move(finding);
    tell();
}

ConfigurationReport ImExport::report() const {
    return finding_ ? report_of(*finding_, services_.language) : ConfigurationReport{};
}

void ImExport::close_report() {
    finding_.reset();
    tell();
}

void ImExport::save_report() {
    if (!finding_) return;
    const auto chosen =
        services_.ask_file({.save = true, .kind = "txt", .suffix = "txt", .suggestion = {}});
    if (chosen && !base::write_file(*chosen, report_text(report()))) say(kNotSaved);
}

}  // namespace servo::tools
