#include "cli/command_scan.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "base/file.h"
#include "base/notice.h"
#include "cli/result_file.h"
#include "cli/target.h"
#include "tuner/bode_file.h"
#include "tuner/scan.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// A drive takes what it takes for its measuring; Ctrl-C ends it. This is beyond any plan.
constexpr std::chrono::milliseconds kLongestScan = 24h;

constexpr link::WireKey kCommand = 0x30400101;
constexpr std::int32_t kStop = 0;
constexpr dictionary::Identity kResult = 0x30400E;

constexpr base::Text kMoves{"servoctl: 扫频时电机会自行运动",
                            "servoctl: the motor moves by itself during the scan"};
constexpr base::Text kSetUpText{"写入扫频参数", "Write the plan"};
constexpr base::Text kMeasureText{"驱动器正在测量 {} 个点", "The drive measures {} points"};
constexpr base::Text kReadText{"读取数据", "Read the data"};
constexpr base::Text kFinished{"结束", "Finished"};
constexpr base::Text kLost{"servoctl: 通讯中断，扫频没有完成",
                           "servoctl: the link is lost, the scan is not whole"};
constexpr base::Text kCutOff{"servoctl: 扫频被中断", "servoctl: interrupted, the scan is cut off"};
constexpr base::Text kNoStop{"servoctl: 驱动器没有确认停止，电机可能仍在运动",
                             "servoctl: the drive has not confirmed the stop, the motor may still "
                             "move"};
constexpr base::Text kNotDone{"servoctl: 驱动器没有完成扫频：{}",
                              "servoctl: the drive has not completed the scan: {}"};

// What the drive says of the scan that was the last; 0 and 1 are no complaint.
constexpr std::array<base::Text, 6> kResults{{{"", ""},
                                              {"", ""},
                                              {"电机未能使能", "the motor can't be enabled"},
                                              {"超出行程", "it travelled too far"},
                                              {"出现故障", "a fault"},
                                              {"被停止", "it was stopped"}}};

std::string result_text(std::int64_t result, base::Language language) {
    if (result > 1 && result < static_cast<std::int64_t>(kResults.size()))
        return std::string(kResults[static_cast<std::size_t>(result)].in(language));
    return fmt::format("{}", result);
}

class PrintedNotice final : public base::Notice {
  public:
    explicit PrintedNotice(const Output& output) : output_(output) {}
    base::Answer show(std::string_view, std::string_view text, base::Buttons) override {
        output_.message("servoctl: " + std::string(text));
        return base::Answer::kOk;
    }

  private:
    const Output& output_;
};

class ScanRun final : private tuner::ScanObserver {
  public:
    ScanRun(const Options& options, link::Engine& engine, LinkSession& session,
            const Output& output)
        : options_(options), engine_(engine), session_(session), output_(output) {
        data_->Text1 = fmt::format("{}", options.scan.current);
        data_->Text2 = fmt::format("{}", options.scan.start);
        data_->Text3 = fmt::format("{}", options.scan.stop);
        data_->Text4 = fmt::format("{}", options.scan.step);
        engine_.add_job(link::JobPlace::kScan, scan_);
    }
    ~ScanRun() override { engine_.remove_job(link::JobPlace::kScan, scan_); }
    ScanRun(const ScanRun&) = delete;
    ScanRun& operator=(const ScanRun&) = delete;

    ExitStatus run() {
        begun_ = session_.now();
        if (!scan_.start()) return ExitStatus::kNo;
        tell(kMoves);
        tell(kSetUpText);
        const Outcome outcome =
            session_.wait([this] { return !scan_.active() || stalled(); }, kLongestScan);
        if (finished_) return finish();
        if (!engine_.port().is_open()) {
            tell(kLost);
            if (told_ == Told::kMeasure) tell(kNoStop);
            return ExitStatus::kNoLink;
        }
        return outcome == Outcome::kInterrupted ? interrupted() : refused();
    }

  private:
    void scan_moved() override {
        if (!scan_.active()) return;  // the link has closed under it, or comes and goes without it
        moved_at_ = session_.now();
        if (scan_.measuring() && told_ == Told::kSetUp) {
            told_ = Told::kMeasure;
            output_.message(
                fmt::format(fmt::runtime(kMeasureText.in(options_.language)), scan_.points()));
        } else if (told_ == Told::kMeasure && !scan_.measuring()) {
            told_ = Told::kData;
            tell(kReadText);
            measured_at_ = scan_.progress();
        } else if (told_ == Told::kData) {
            tell_percent();
        }
    }
    void scan_ended(bool finished) override { finished_ = finished; }

    // Of the reading, a line for each tenth.
    void tell_percent() {
        const int percent =
            100 * (scan_.progress() - measured_at_) / std::max(1000 - measured_at_, 1) / 10 * 10;
        if (percent <= told_percent_) return;
        told_percent_ = percent;
        output_.message(fmt::format("{:3} %", percent));
    }

    void tell(base::Text text) const { output_.message(text.in(options_.language)); }

    // The job would ask for ever; a drive that refuses a step, or says nothing to it, is found
    // here.
    bool stalled() const {
        return !scan_.measuring() && session_.now() - moved_at_ > options_.timeout;
    }

    // The last word to a drive that may be moving, Ctrl-C or not.
    void stop(const tuner::ScanRequest& asked) {
        if (asked.key != kCommand) return;
        const Reply reply = session_.write_last(kCommand, kStop, options_.timeout);
        if (reply.outcome != Outcome::kDone) tell(kNoStop);
    }

    // What the job asked as it was taken from the line.
    tuner::ScanRequest leave() {
        const tuner::ScanRequest asked = scan_.request().value_or(tuner::ScanRequest());
        scan_.link_closed(engine_);
        return asked;
    }

    ExitStatus interrupted() {
        stop(leave());
        tell(kCutOff);
        return ExitStatus::kNo;
    }

    // Asks once more for what was not answered, to hear why.
    ExitStatus refused() {
        const tuner::ScanRequest asked = leave();
        const dictionary::Identity object = dictionary::identity_of(asked.key);
        Reply reply = asked.read ? session_.read(object, type_of(asked.key), options_.timeout)
                                 : session_.write(asked.key, asked.value, options_.timeout);
        stop(asked);
        if (reply.outcome == Outcome::kDone) reply.outcome = Outcome::kNoAnswer;
        return report(reply, key_text(object), options_, output_);
    }

    static std::string type_of(link::WireKey key) {
        const auto size = static_cast<std::uint8_t>(key);
        return size == 1 ? "uint8" : size == 2 ? "uint16" : "uint32";
    }

    ExitStatus finish() {
        // Not every drive tells how its scan ended; one that does may know that it is none.
        const Reply result = session_.read(kResult, "uint8", options_.timeout);
        if (result.outcome == Outcome::kDone && result.number > 1) {
            output_.message(fmt::format(
                fmt::runtime(kNotDone.in(options_.language)),
                result_text(static_cast<std::int64_t>(result.number), options_.language)));
            return ExitStatus::kNo;
        }
        const std::filesystem::path& file = options_.scan.file;
        if (!base::write_file(file, tuner::write_bode(data_->settings, data_->buffers)))
            return cannot_write(file, output_);
        print_end();
        return ExitStatus::kDone;
    }

    void print_end() const {
        const std::string text(kFinished.in(options_.language));
        if (!options_.json) return output_.out(text + "\n");
        const auto taken =
            std::chrono::duration_cast<std::chrono::milliseconds>(session_.now() - begun_);
        print_record(output_, true,
                     {{"file", options_.scan.file.string()},
                      {"points", std::int64_t{scan_.points()}},
                      {"seconds", taken},
                      {"result", text}});
    }

    enum class Told : std::uint8_t { kSetUp, kMeasure, kData };

    const Options& options_;
    link::Engine& engine_;
    LinkSession& session_;
    const Output& output_;
    PrintedNotice notice_{output_};
    std::unique_ptr<tuner::TunerData> data_ = std::make_unique<tuner::TunerData>();
    tuner::TunerServices services_{
        .engine = engine_, .notice = notice_, .language = options_.language, .link_open = [this] {
            return engine_.port().is_open();
        }};
    tuner::FrequencyScan scan_{*data_, services_, *this};
    std::chrono::microseconds begun_{0};
    std::chrono::microseconds moved_at_{0};
    Told told_ = Told::kSetUp;
    int measured_at_ = 0;
    int told_percent_ = 0;
    bool finished_ = false;
};

}  // namespace

ExitStatus check_scan(const Options& options, const Output& output) {
    if (options.scan.stop < options.scan.start + options.scan.step) {
        output.message("servoctl: --stop is below --start and --step together");
        return ExitStatus::kWrongUse;
    }
    return check_result_file(options.scan.file, output);
}

ExitStatus run_scan(const Options& options, link::Engine& engine, LinkSession& session,
                    const Output& output) {
    ScanRun run(options, engine, session, output);
    return run.run();
}

}  // namespace servo::cli
