#include "cli/command_configuration.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "base/file.h"
#include "cli/result_file.h"
#include "link/abort_text.h"
#include "tools/configuration_check.h"
#include "tools/configuration_job.h"
#include "tools/configuration_report.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;
using tools::TransferEnd;

// A job ends by itself or with the link. This is beyond the longest that there is.
constexpr std::chrono::milliseconds kLongestJob = 24h;
constexpr int kPercentStep = 10;

constexpr base::Text kRow{"servoctl: 行 {},", "servoctl: row {},"};
constexpr base::Text kEmpty{"servoctl: {} 中没有任何行", "servoctl: {} holds no row"};
constexpr base::Text kReads{"读取 {:3} %", "Reading {:3} %"};
constexpr base::Text kWrites{"写入 {:3} %", "Writing {:3} %"};
constexpr base::Text kInterrupted{"servoctl: 已中断，完成 {}/{} 行",
                                  "servoctl: interrupted; {} of {} rows are done"};
constexpr base::Text kLost{"servoctl: 通讯中断，完成 {}/{} 行；停在 {}",
                           "servoctl: the link is lost; {} of {} rows are done, the next is {}"};

template <typename... Values>
std::string filled(base::Text text, base::Language language, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

constexpr base::Text kNotSent{"（不写入）", "(not sent)"};
constexpr base::Text kUnchanged{"（不变）", "(unchanged)"};
constexpr base::Text kInvalidRow{"无效，已跳过", "not valid, passed over"};
constexpr base::Text kUnsendable{"键或数值无法发送", "key or value that cannot be sent"};
constexpr base::Text kOtherAnswer{"驱动器的应答不符", "another answer than the one expected"};

std::string reason_of(const tools::FailedRow& row, base::Language language) {
    if (row.Result == tools::kInvalidWord) return std::string(kInvalidRow.in(language));
    if (row.no_key) return std::string(kUnsendable.in(language));
    if (row.refusal != 0) return link::abort_text(row.refusal, language);
    return std::string(kOtherAnswer.in(language));
}

// "servoctl: row 3, 607A0020 Target position, 7: 0x06090031, the value is too high"; rows from 0,
// as the window's grid counts them.
std::string failed_line(const tools::FailedRow& row, base::Language language) {
    std::string line = filled(kRow, language, row.row) + " " + field_text(row.Index);
    const std::string name = name_of(row.name_ch, row.name_en, language);
    if (!name.empty()) line += " " + field_text(name);
    if (!row.value.empty()) line += ", " + field_text(row.value);
    return line + ": " + reason_of(row, language);
}

std::string remarks_of(const tools::CheckedRow& row, base::Language language) {
    std::string text;
    for (const tools::RowWarning warning : row.warnings) {
        if (!text.empty()) text += language == base::Language::kChinese ? "；" : "; ";
        text += tools::warning_text(warning).in(language);
    }
    return text;
}

bool operands_seen(const link::FormulaOperands& operands) {
    return operands.o64100320.seen && operands.o65100310.seen && operands.o60F61310.seen &&
           operands.o60F61110.seen;
}

class TransferRun final : private tools::ConfigurationObserver {
  public:
    TransferRun(const Options& options, TransferPlan plan, const dictionary::Store& dictionary,
                link::Engine& engine, LinkSession& session, const Output& output)
        : options_(options),
          plan_(std::move(plan)),
          dictionary_(dictionary),
          engine_(engine),
          session_(session),
          output_(output) {
        // The configuration's own place is taken by the session's accesses; this one is asked in
        // the same way.
        engine_.add_job(link::JobPlace::kPositionFlow, job_);
    }
    ~TransferRun() override { engine_.remove_job(link::JobPlace::kPositionFlow, job_); }
    TransferRun(const TransferRun&) = delete;
    TransferRun& operator=(const TransferRun&) = delete;

    ExitStatus pull() {
        data_.driver = std::move(plan_.template_.rows);
        job_.start_read();
        const ExitStatus ended = finish(data_.read_count, kReads);
        const bool whole = data_.read_count.end == TransferEnd::kFinished;
        if (whole && !base::write_file(options_.transfer.out, tools::write_cdi(data_.driver)))
            return cannot_write(options_.transfer.out, output_);
        name_failures(tools::failures_of(data_.driver));
        print_end(data_.read_result, data_.read_count);
        return verdict(ended, plan_.template_.broken_line.has_value());
    }

    ExitStatus push() {
        data_.source = std::move(plan_.source.rows);
        job_.start_write();
        const ExitStatus ended = finish(data_.write_count, kWrites);
        name_failures(tools::failures_of(data_.source));
        print_end(data_.write_result, data_.write_count);
        return verdict(ended, plan_.source.broken_line.has_value());
    }

    // What a write would change: the drive is read, nothing is written.
    ExitStatus dry_run() {
        data_.source = std::move(plan_.source.rows);
        data_.survey = tools::template_of(data_.source);
        if (!data_.survey.empty()) {
            job_.start_survey();
            const ExitStatus ended = finish(data_.survey_count, kReads);
            if (data_.survey_count.end != TransferEnd::kFinished) return ended;
            // Without them values are shown raw, which is no reason to stop.
            session_.wait([this] { return operands_seen(session_.operands()); }, options_.timeout);
        }
        const tools::DryRunFinding finding{
            tools::dry_run(data_.source, data_.survey, dictionary_, session_.operands()),
            options_.transfer.in.string()};
        print_dry_run(finding);
        return verdict(ExitStatus::kDone,
                       finding.run.changes > 0 || plan_.source.broken_line.has_value());
    }

  private:
    void row_done(std::size_t row) override {
        const auto& count = job_.writing()   ? data_.write_count
                            : job_.reading() ? data_.read_count
                                             : data_.survey_count;
        const int percent =
            static_cast<int>((row + 1) * 100 / std::max<std::size_t>(count.all, 1)) / kPercentStep *
            kPercentStep;
        if (percent <= told_percent_) return;
        told_percent_ = percent;
        output_.message(filled(*progress_, options_.language, percent));
    }
    void job_ended() override {}

    ExitStatus finish(const tools::TransferCount& count, const base::Text& progress) {
        begun_ = session_.now();
        progress_ = &progress;
        const Outcome outcome = session_.wait([this] { return !job_.active(); }, kLongestJob);
        job_.stop();
        switch (count.end) {
            case TransferEnd::kFinished:
                return count.failed > 0 ? ExitStatus::kNo : ExitStatus::kDone;
            case TransferEnd::kNone:
            case TransferEnd::kStopped:
            case TransferEnd::kLinkClosed:
                break;
        }
        if (outcome == Outcome::kInterrupted) {
            output_.message(filled(kInterrupted, options_.language, count.done, count.all));
            return ExitStatus::kNo;
        }
        output_.message(
            filled(kLost, options_.language, count.done, count.all, index_of(count.done)));
        return ExitStatus::kNoLink;
    }

    // What a file lacks makes a job that went well half a job.
    static ExitStatus verdict(ExitStatus ended, bool lacking) {
        return ended == ExitStatus::kDone && lacking ? ExitStatus::kNo : ended;
    }

    std::string index_of(std::size_t row) const {
        if (row < data_.survey.size()) return data_.survey[row].Index;
        if (row < data_.source.size()) return data_.source[row].Index;
        return row < data_.driver.size() ? data_.driver[row].Index : std::string("-");
    }

    void name_failures(const tools::FailureFinding& finding) const {
        if (finding.rows.empty()) return;
        for (const tools::FailedRow& row : finding.rows)
            output_.message(failed_line(row, options_.language));
        output_.message("servoctl: " + tools::report_of(finding, options_.language).summary);
    }

    void print_end(const std::string& result, const tools::TransferCount& count) const {
        if (!options_.json) return output_.out(result + "\n");
        const auto taken =
            std::chrono::duration_cast<std::chrono::milliseconds>(session_.now() - begun_);
        const TransferOptions& files = options_.transfer;
        print_record(output_, true,
                     {{"file", (files.out.empty() ? files.in : files.out).string()},
                      {"rows", static_cast<std::int64_t>(count.all)},
                      {"done", static_cast<std::int64_t>(count.done)},
                      {"failed", std::int64_t{count.failed}},
                      {"seconds", taken},
                      {"result", result}});
    }

    void print_dry_run(const tools::DryRunFinding& finding) const {
        const base::Language language = options_.language;
        RowPrinter printer(output_, options_.json, {"key", "name", "drive", "after", "remark"});
        for (const tools::CheckedRow& row : finding.run.rows) {
            const tools::ComparedRow& values = row.values;
            const bool unsent = row.goes_out.empty();
            std::string after(unsent ? kNotSent.in(language) : kUnchanged.in(language));
            if (!unsent && row.changes) after = tools::compared_text(values.B, values, language);
            printer.row({short_key(values.Index), name_of(values.name_ch, values.name_en, language),
                         tools::compared_text(values.A, values, language), std::move(after),
                         remarks_of(row, language)});
        }
        printer.finish();
        output_.message("servoctl: " + tools::report_of(finding, language).summary);
    }

    const Options& options_;
    TransferPlan plan_;
    const dictionary::Store& dictionary_;
    link::Engine& engine_;
    LinkSession& session_;
    const Output& output_;
    tools::ConfigurationData data_;
    tools::ConfigurationTransfer job_{data_, engine_, *this};
    const base::Text* progress_ = &kReads;
    std::chrono::microseconds begun_{0};
    int told_percent_ = 0;
};

}  // namespace

TransferPlan plan_transfer(const Options& options, const dictionary::Store& dictionary,
                           const Output& output) {
    const std::filesystem::path& file = options.transfer.in;
    TransferPlan plan;
    bool empty = true;
    if (options.command == CommandName::kPull) {
        auto input = read_template(file, options, dictionary, output);
        if (!input) return plan;
        plan.template_ = std::move(*input);
        empty = plan.template_.rows.empty();
    } else {
        auto input = read_source(file, options, dictionary, output);
        if (!input) return plan;
        plan.source = std::move(*input);
        empty = plan.source.rows.empty();
    }
    if (empty) {
        output.message(filled(kEmpty, options.language, file.string()));
        return plan;
    }
    plan.status = options.command == CommandName::kPull
                      ? check_result_file(options.transfer.out, output)
                      : ExitStatus::kDone;
    return plan;
}

ExitStatus run_transfer(const Options& options, TransferPlan plan,
                        const dictionary::Store& dictionary, link::Engine& engine,
                        LinkSession& session, const Output& output) {
    TransferRun run(options, std::move(plan), dictionary, engine, session, output);
    if (options.command == CommandName::kPull) return run.pull();
    return options.transfer.dry_run ? run.dry_run() : run.push();
}

}  // namespace servo::cli
