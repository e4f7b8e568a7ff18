// flash: the firmware transfer, as the window `Download` does it by hand.
#include <fmt/format.h>

#include <algorithm>

#include "base/ascii.h"
#include "base/file.h"
#include "cli/commands.h"
#include "firmware/download.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;
using firmware::TransferEnd;

// A transfer ends by the limits of its own steps. This is beyond the longest that there can be.
constexpr std::chrono::milliseconds kLongestTransfer = 24h;

constexpr std::uint8_t kFirstWord = 3;  // what comes before flushes the line
constexpr std::uint8_t kCallBootloader = 4;
constexpr std::uint8_t kSwitch = 7;
constexpr std::uint8_t kBlock = 8;

constexpr dictionary::Identity kCheckValue = 0x1F5601;

constexpr base::Text kCutOff{"servoctl: 下载被中断（{}）",
                             "servoctl: interrupted; the transfer is cut off ({})"};
constexpr base::Text kClosed{"servoctl: 通讯中断（{}）",
                             "servoctl: the link is lost; the transfer is cut off ({})"};
constexpr base::Text kLost{"servoctl: 最后 {} 个字符不足半块，不会发送",
                           "servoctl: the last {} characters are less than half a block and are "
                           "not sent"};
constexpr base::Text kSilent{"servoctl: 下载后驱动器没有应答，请检查软件版本和固件校验码",
                             "servoctl: the drive does not answer behind the transfer; check its "
                             "software version and firmware CRC"};
constexpr base::Text kRuns{"驱动器运行的固件校验码：{}",
                           "The drive runs the firmware with check value {}"};
constexpr base::Text kOther{"servoctl: 驱动器的固件校验码是 {}，不是 {}",
                            "servoctl: the drive's firmware has check value {}, not {}"};

template <typename... Values>
std::string filled(base::Text text, base::Language language, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

// The final message is printed by whoever knows how it ended.
class SilentNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

// One line for each step, and one for each block.
class Reporter final : public firmware::DownloadObserver {
  public:
    Reporter(const firmware::Download& form, const Output& output) : form_(form), output_(output) {}

    void controls_changed() override {
        if (!form_.transfer_running()) return;
        tell_block();
        tell_step();
    }

  private:
    // The two steps of a block are told by its own line.
    void tell_step() {
        const std::uint8_t step = form_.step() == kSwitch ? kBlock : form_.step();
        if (step < kFirstWord || step == told_step_) return;
        told_step_ = step;
        output_.message(firmware::step_name(step, form_.language()));
    }

    void tell_block() {
        const firmware::Progress& progress = form_.transfer().progress();
        if (progress.blocks() <= told_blocks_) return;
        told_blocks_ = progress.blocks();
        const bool chinese = form_.language() == base::Language::kChinese;
        std::string line =
            fmt::format("{:3.0f} %  {} {}/{}", form_.data().ProgressBar1, chinese ? "块" : "block",
                        progress.blocks(), progress.total_blocks());
        if (const auto speed = progress.speed())
            line += fmt::format("  {:.0f} {}", *speed, chinese ? "字节/秒" : "bytes/s");
        if (const std::string left = form_.remaining_text(); !left.empty())
            line += chinese ? "  剩余 " + left : "  " + left + " left";
        output_.message(line);
    }

    const firmware::Download& form_;
    const Output& output_;
    std::uint8_t told_step_ = 0;
    std::size_t told_blocks_ = 0;
};

class FlashRun {
  public:
    FlashRun(const Options& options, link::Engine& engine, LinkSession& session,
             const Output& output)
        : options_(options), engine_(engine), session_(session), output_(output) {
        form_.set_observer(&reporter_);
    }

    ExitStatus run() {
        if (!form_.load_image(options_.flash.file)) return ExitStatus::kFile;
        begun_ = session_.now();
        form_.Command4_Click();
        const Outcome outcome =
            session_.wait([this] { return !form_.transfer_running(); }, kLongestTransfer);
        if (form_.transfer_running()) return cut_off(outcome);
        if (!form_.result() || form_.result()->end == TransferEnd::kLinkClosed)
            return tell_cut(kClosed, ExitStatus::kNoLink);
        return ended(*form_.result());
    }

  private:
    // The transfer hears that the link ends, and knows in what state it leaves the drive.
    ExitStatus cut_off(Outcome outcome) {
        engine_.link_closed();
        const bool asked = outcome == Outcome::kInterrupted;
        return tell_cut(asked ? kCutOff : kClosed, asked ? ExitStatus::kNo : ExitStatus::kNoLink);
    }

    ExitStatus tell_cut(base::Text what, ExitStatus status) {
        const std::uint8_t step = form_.result() ? form_.result()->step : form_.step();
        output_.message(
            filled(what, options_.language, firmware::step_name(step, options_.language)));
        tell_advice();
        print_end("interrupted");
        return status;
    }

    void tell_advice() const {
        if (const std::string_view advice = form_.advice_text(); !advice.empty())
            output_.message(advice);
    }

    ExitStatus ended(const firmware::TransferResult& result) {
        if (result.end == TransferEnd::kDone) {
            const ExitStatus status = options_.flash.verify ? verify() : ExitStatus::kDone;
            print_end(result.message);
            return status;
        }
        print_end(result.message);
        tell_advice();
        // Nobody there at all, or the adapter unplugged, is another matter than a drive that fails.
        const bool no_link = result.step <= kCallBootloader || engine_.port().gone();
        return no_link ? ExitStatus::kNoLink : ExitStatus::kNo;
    }

    // The dialogue takes silence for a start. Here the new firmware itself is asked.
    ExitStatus verify() {
        const Reply reply = session_.read(kCheckValue, "uint32", options_.timeout);
        if (reply.outcome == Outcome::kInterrupted) return report(reply, "", options_, output_);
        if (reply.outcome != Outcome::kDone) {
            output_.message(kSilent.in(options_.language));
            return ExitStatus::kNoLink;
        }
        const std::string value = fmt::format("{:X}", static_cast<std::uint32_t>(reply.number));
        if (!same_value(value, form_.data().CRC_From_File)) {
            output_.message(filled(kOther, options_.language, value, form_.data().CRC_From_File));
            return ExitStatus::kNo;
        }
        output_.message(filled(kRuns, options_.language, value));
        return ExitStatus::kDone;
    }

    // As the header has it, with or without leading zeros, in capitals or not.
    static bool same_value(std::string_view value, std::string_view header) {
        while (header.size() > 1 && header.front() == '0')
            header.remove_prefix(1);
        while (!header.empty() && (header.back() == ' ' || header.back() == '.'))
            header.remove_suffix(1);
        return base::same_name(value, header);
    }

    void print_end(std::string_view message) const {
        if (!options_.json) {
            if (message != "interrupted") output_.out(std::string(message) + "\n");
            return;
        }
        const auto taken =
            std::chrono::duration_cast<std::chrono::milliseconds>(session_.now() - begun_);
        const firmware::Progress& progress = form_.transfer().progress();
        print_record(output_, true,
                     {{"file", options_.flash.file.string()},
                      {"type", form_.data().FW_Type},
                      {"blocks", static_cast<std::int64_t>(progress.blocks())},
                      {"bytes", static_cast<std::int64_t>(progress.bytes())},
                      {"seconds", taken},
                      {"result", std::string(message)}});
    }

    const Options& options_;
    link::Engine& engine_;
    LinkSession& session_;
    const Output& output_;
    SilentNotice notice_;
    // Only the window knows of brands.
    dictionary::Variant variant_ = dictionary::Variant::kAllItems;
    firmware::Download form_{{.engine = engine_,
                              .notice = notice_,
                              .language = options_.language,
                              .Tavro_Nevra_Other_mode = variant_,
                              .ask_file = [](const auto&) { return std::nullopt; },
                              .software_version = [] { return std::string(); }}};
    Reporter reporter_{form_, output_};
    std::chrono::microseconds begun_{0};
};

}  // namespace

ExitStatus check_flash(const Options& options, const Output& output) {
    const std::string name = options.flash.file.string();
    const auto content = base::read_file(options.flash.file);
    if (!content) {
        output.message("servoctl: " + name + " can't be read");
        return ExitStatus::kFile;
    }
    const firmware::Image image = firmware::read_image(*content);
    if (image.fault != firmware::ImageFault::kNone || !image.blocks) {
        output.message("servoctl: " + name + " is no firmware image");
        return ExitStatus::kFile;
    }
    if (image.lost_characters > 0)
        output.message(filled(kLost, options.language, image.lost_characters));
    return ExitStatus::kDone;
}

ExitStatus run_flash(const Options& options, link::Engine& engine, LinkSession& session,
                     const Output& output) {
    FlashRun run(options, engine, session, output);
    return run.run();
}

}  // namespace servo::cli
