#include "cli/command_table.h"

#include <fmt/format.h>

#include <chrono>
#include <string>

#include "base/file.h"
#include "cli/result_file.h"
#include "cli/target.h"
#include "tools/pos_flow.h"
#include "tools/position_table_notes.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// A job ends by itself: done, refused, or with the link. This is beyond the longest that there is.
constexpr std::chrono::milliseconds kLongestJob = 1h;
constexpr int kPercentStep = 10;

constexpr base::Text kNoList{"servoctl: {} 缺失或不完整", "servoctl: {} is missing or not whole"};
constexpr base::Text kNoTable{"servoctl: {} 不是位置表文件",
                              "servoctl: {} holds no position table"};
constexpr base::Text kPartial{
    "servoctl: 文件只有 {} 段和 {} 组加减速；其余先从驱动器读取",
    "servoctl: the file holds {} steps and {} ramps; the rest is read from the drive first"};
constexpr base::Text kSkipped{"servoctl: 跳过了文件中的 {} 行",
                              "servoctl: {} lines of the file are skipped"};
constexpr base::Text kNoEncoder{"servoctl: 没有读到编码器分辨率（641003），不能确定速度的单位",
                                "servoctl: the encoder resolution (641003) could not be read, so "
                                "the unit of speed is not known"};
constexpr base::Text kCutOff{"servoctl: 已中断", "servoctl: interrupted"};
constexpr base::Text kReads{"读取 {:3} %", "Reading {:3} %"};
constexpr base::Text kWrites{"写入 {:3} %", "Writing {:3} %"};

template <typename... Values>
std::string filled(base::Text text, base::Language language, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

// Nobody is asked anything here; what the form would say is said by the command.
class SilentNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

ExitStatus cannot_read(const std::filesystem::path& file, const Output& output) {
    output.message("servoctl: " + file.string() + " can't be read");
    return ExitStatus::kFile;
}

class TableRun final : private tools::PosFlowObserver {
  public:
    TableRun(const Options& options, link::Engine& engine, LinkSession& session,
             const Output& output)
        : options_(options), engine_(engine), session_(session), output_(output) {
        form_.load(options.data);
        form_.set_observer(this);
    }

    ExitStatus run() {
        begun_ = session_.now();
        if (const ExitStatus wrong = wait_for_encoder(); wrong != ExitStatus::kDone) return wrong;
        return options_.command == CommandName::kTableRead ? read() : write();
    }

  private:
    void grids_changed() override {}
    void editor_changed() override {}
    void labels_changed() override {
        if (!form_.job_running()) return;
        const int percent =
            static_cast<int>(form_.data().ProgressBar1) / kPercentStep * kPercentStep;
        if (percent <= told_percent_) return;
        told_percent_ = percent;
        const bool reads = form_.last_job() == tools::kReadTable;
        output_.message(filled(reads ? kReads : kWrites, options_.language, percent));
    }

    ExitStatus wait_for_encoder() {
        Reply reply;
        reply.outcome =
            session_.wait([this] { return form_.resolution_known(); }, options_.timeout);
        if (reply.outcome == Outcome::kDone) return ExitStatus::kDone;
        if (reply.outcome != Outcome::kNoAnswer) return report(reply, "", options_, output_);
        output_.message(kNoEncoder.in(options_.language));
        return ExitStatus::kNo;
    }

    ExitStatus read() {
        form_.Command1_Click();
        const ExitStatus status = finish_job();
        if (status != ExitStatus::kDone) return end(status);
        if (!form_.export_file(options_.table.file))
            return cannot_write(options_.table.file, output_);
        return end(status);
    }

    ExitStatus write() {
        if (!import()) return ExitStatus::kFile;
        const tools::PositionFileRows& rows = form_.imported();
        if (!rows.all_steps || !rows.all_ramps) {
            form_.Command1_Click();
            if (const ExitStatus status = finish_job(); status != ExitStatus::kDone)
                return end(status);
            if (!import()) return ExitStatus::kFile;
        }
        form_.Command2_Click();
        return end(finish_job());
    }

    bool import() {
        const bool read = form_.import_file(options_.table.file);
        if (!read) cannot_read(options_.table.file, output_);
        return read;
    }

    ExitStatus finish_job() {
        told_percent_ = 0;
        const Outcome outcome = session_.wait([this] { return !form_.job_running(); }, kLongestJob);
        const bool interrupted = form_.job_running() && outcome == Outcome::kInterrupted;
        // A job that was left running hears that it ends.
        if (form_.job_running()) engine_.link_closed();
        if (interrupted) output_.message(kCutOff.in(options_.language));
        const auto ended = form_.job_end();
        if (ended == tools::TableJobEnd::kFinished) return ExitStatus::kDone;
        output_.message("servoctl: " + tools::job_note(form_));
        const bool lost = ended == tools::TableJobEnd::kLinkClosed && !interrupted;
        return lost ? ExitStatus::kNoLink : ExitStatus::kNo;
    }

    ExitStatus end(ExitStatus status) const {
        const std::string result(status == ExitStatus::kDone ? tools::kJobFinished
                                                             : tools::kJobFailed);
        if (!options_.json) {
            output_.out(result + "\n");
            return status;
        }
        const auto taken =
            std::chrono::duration_cast<std::chrono::milliseconds>(session_.now() - begun_);
        print_record(output_, true,
                     {{"file", options_.table.file.string()},
                      {"objects", std::int64_t{form_.job_row()}},
                      {"seconds", taken},
                      {"result", result}});
        return status;
    }

    const Options& options_;
    link::Engine& engine_;
    LinkSession& session_;
    const Output& output_;
    SilentNotice notice_;
    dictionary::Store no_dictionary_;  // the live index is not shown here
    tools::PosFlow form_{{.engine = engine_,
                          .notice = notice_,
                          .language = options_.language,
                          .dictionary = no_dictionary_,
                          .ask_file = [](const auto&) { return std::nullopt; }}};
    std::chrono::microseconds begun_{0};
    int told_percent_ = 0;
};

// What the file holds, before a line is touched.
ExitStatus check_file(const Options& options, const Output& output) {
    const auto content = base::read_file(options.table.file);
    if (!content) return cannot_read(options.table.file, output);
    const tools::ListItems items = tools::combo2_items(options.language);
    tools::PositionGrids grids = tools::make_grids(options.language, items);
    const tools::PositionFileRows rows = tools::take_position_file(*content, grids, items);
    // In bytes of any other kind a few lines look like rows; they must not reach a machine.
    if (rows.skipped >= rows.steps + rows.ramps) {
        output.message(filled(kNoTable, options.language, options.table.file.string()));
        return ExitStatus::kFile;
    }
    if (rows.skipped > 0) output.message(filled(kSkipped, options.language, rows.skipped));
    if (!rows.all_steps || !rows.all_ramps)
        output.message(filled(kPartial, options.language, rows.steps, rows.ramps));
    return ExitStatus::kDone;
}

}  // namespace

ExitStatus check_table(const Options& options, const Output& output) {
    if (!tools::load_transfer_list(options.data)) {
        output.message(filled(kNoList, options.language, "sys/PosFlow.cdo"));
        return ExitStatus::kFile;
    }
    return options.command == CommandName::kTableRead
               ? check_result_file(options.table.file, output)
               : check_file(options, output);
}

ExitStatus run_table(const Options& options, link::Engine& engine, LinkSession& session,
                     const Output& output) {
    TableRun run(options, engine, session, output);
    return run.run();
}

}  // namespace servo::cli
