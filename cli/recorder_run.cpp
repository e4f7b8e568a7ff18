#include "cli/recorder_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "cli/options.h"
#include "scope/channel_lists.h"
#include "scope/trace.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// Slots of the recorder: one for a narrow object of each channel, then one for a wide object of
// channels 1 and 2 and one for a wide object of channels 3 and 4.
constexpr std::array<link::WireKey, 6> kSlots{0x23000104, 0x23000204, 0x23000304,
                                              0x23000404, 0x23000504, 0x23000604};
constexpr int kWide = 4;

constexpr int kTries = 6;           // of a start that the drive does not confirm
constexpr auto kQuiet = 50ms;       // until a late answer to the last try has come in
constexpr auto kStopPatience = 1s;  // for the last word to the drive
constexpr int kProgressStep = 10;   // percent of the buffer

std::size_t slot_of(std::size_t channel, int width) {
    return width == kWide ? 4 + channel / 2 : channel;
}

// Object and width in bits, as the recorder's settings name a source.
std::int32_t source_value(const RecorderSource& source) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(source.key) << 8 |
                                     static_cast<std::uint32_t>(source.width * 8));
}

// A wide object stands in the place of the first channel of its pair. Where it is asked for behind
// a narrow one, the drive is told the other way round, and the recording is turned back in the end.
bool stands_turned(const RecorderSetup& setup, std::size_t pair) {
    return pair + 1 < setup.channels.size() && setup.channels[pair].width != kWide &&
           setup.channels[pair + 1].width == kWide;
}

RecorderSetup as_told_to_drive(RecorderSetup setup) {
    for (std::size_t pair = 0; pair < setup.channels.size(); pair += 2)
        if (stands_turned(setup, pair)) std::swap(setup.channels[pair], setup.channels[pair + 1]);
    return setup;
}

class Told final : public base::Notice {
  public:
    explicit Told(RecorderRun::Progress& progress) : progress_(progress) {}
    base::Answer show(std::string_view, std::string_view text, base::Buttons) override {
        progress_(text);
        return base::Answer::kOk;
    }

  private:
    RecorderRun::Progress& progress_;
};

}  // namespace

int row_bytes(const RecorderSetup& setup) {
    int bytes = 0;
    for (const RecorderSource& source : setup.channels)
        bytes += source.width;
    return bytes;
}

std::optional<std::string> check_setup(const RecorderSetup& setup) {
    for (std::size_t pair = 0; pair + 1 < setup.channels.size(); pair += 2) {
        const RecorderSource& first = setup.channels[pair];
        const RecorderSource& second = setup.channels[pair + 1];
        if (first.width == kWide && second.width == kWide) {
            return fmt::format(
                "{} and {} have 32 bits each: channels {} and {} share one place for such an "
                "object; put an 8-bit or 16-bit object between them",
                key_text(first.key), key_text(second.key), pair + 1, pair + 2);
        }
    }
    const int bytes = row_bytes(setup) * setup.samples;
    if (bytes > static_cast<int>(scope::kMaxBytes)) {
        return fmt::format(
            "{} samples of {} bytes are {} bytes; the recorder holds {}, which is {} samples",
            setup.samples, row_bytes(setup), bytes, scope::kMaxBytes,
            static_cast<int>(scope::kMaxBytes) / row_bytes(setup));
    }
    if (setup.offset >= setup.samples)
        return fmt::format("an offset of {} leaves nothing of {} samples behind the trigger",
                           setup.offset, setup.samples);
    return std::nullopt;
}

RecorderRun::RecorderRun(link::Engine& engine, LinkSession& session,
                         const dictionary::Store& dictionary, const base::Language& language,
                         Progress progress)
    : engine_(engine),
      session_(session),
      dictionary_(dictionary),
      language_(language),
      progress_(std::move(progress)),
      notice_(std::make_unique<Told>(progress_)),
      data_(std::make_unique<scope::ScopeData>()) {
    const scope::ScopeServices services{engine_, dictionary_, *notice_, language_,
                                        [] { return true; }};
    const scope::AcquisitionEvents events{
        [] {},
        [this] { decoded_ = scope::Movingdata(*data_, engine_.values().operands, language_); },
        [] {}};
    acquisition_ = std::make_unique<scope::Acquisition>(services, *data_, events);
    watch_ = std::make_unique<RecorderWatch>(*acquisition_, *data_);
    engine_.set_scope(watch_.get());
}

RecorderRun::~RecorderRun() {
    engine_.set_scope(nullptr);
}

RecorderEnd RecorderRun::run(const RecorderSetup& setup, std::chrono::milliseconds limit) {
    limit_ = limit;
    const RecorderSetup told = as_told_to_drive(setup);
    RecorderEnd end = set_up(told);
    if (end.good()) {
        fill_screen(told);
        end = record(told);
    }
    for (std::size_t pair = 0; pair < setup.channels.size(); pair += 2)
        if (stands_turned(setup, pair))
            std::swap(data_->channels.at(pair), data_->channels.at(pair + 1));
    if (end.reply.outcome != Outcome::kLinkLost) stop();
    return end;
}

RecorderEnd RecorderRun::put(link::WireKey key, std::int32_t value, const std::string& subject) {
    return {session_.write_setting(key, value, limit_), subject, {}};
}

// Stopped first, so that nothing changes under a recording that somebody left running. Slots that
// stay empty come before the others: at no moment does a row have more than is asked for now.
RecorderEnd RecorderRun::put_sources(const RecorderSetup& setup) {
    std::array<const RecorderSource*, kSlots.size()> wanted{};
    for (std::size_t channel = 0; channel < setup.channels.size(); ++channel)
        wanted.at(slot_of(channel, setup.channels[channel].width)) = &setup.channels[channel];
    RecorderEnd end = put(scope::kCommandKey, 0, "the stop of the recorder");
    for (const bool filled : {false, true}) {
        for (std::size_t slot = 0; slot < kSlots.size() && end.good(); ++slot) {
            if ((wanted[slot] != nullptr) != filled) continue;
            end = put(kSlots[slot], filled ? source_value(*wanted[slot]) : 0,
                      filled ? key_text(wanted[slot]->key) + " as a source"
                             : fmt::format("nothing in place {} of the recorder", slot + 1));
        }
    }
    return end;
}

RecorderEnd RecorderRun::set_up(const RecorderSetup& setup) {
    RecorderEnd end = put_sources(setup);
    struct Setting {
        link::WireKey key;
        std::int32_t value;
        std::string subject;
    };
    std::vector<Setting> settings{
        {scope::kPeriodKey, setup.period, fmt::format("the sampling period {}", setup.period)},
        {scope::kCountKey, setup.samples, fmt::format("{} samples", setup.samples)},
        {scope::kOffsetKey, setup.offset, fmt::format("the trigger offset {}", setup.offset)}};
    if (setup.trigger) {
        const RecorderTrigger& trigger = *setup.trigger;
        settings.push_back({scope::kTriggerKey, source_value(trigger.source),
                            key_text(trigger.source.key) + " as the trigger"});
        settings.push_back(
            {scope::kLevelKey, trigger.level, fmt::format("the trigger level {}", trigger.level)});
        settings.push_back(
            {scope::kEdgeKey, trigger.edge, fmt::format("the trigger edge {}", trigger.edge)});
    } else {
        settings.push_back({scope::kTriggerKey, 0, "a recording without a trigger"});
    }
    for (const Setting& setting : settings)
        if (end.good()) end = put(setting.key, setting.value, setting.subject);
    return end;
}

// What the oscilloscope's screen would hold after the same set-up by hand.
void RecorderRun::fill_screen(const RecorderSetup& setup) {
    for (std::size_t i = 0; i < setup.channels.size(); ++i) {
        scope::ScopeChannel& channel = data_->channels.at(i);
        const auto entry =
            scope::Add_OD_To_CH(setup.channels[i].key, channel, dictionary_, language_);
        if (!entry) continue;  // cannot be: the key has been looked up
        channel.objectList.ListIndex = *entry + 1;
        channel.enable = true;
        scope::Add_Unit_To_CH(*entry, channel);
    }
    data_->Text1 = std::to_string(setup.period);
    data_->Text2 = std::to_string(setup.offset);
    data_->Text3 = std::to_string(setup.samples);
    data_->Check5 = true;  // one recording, not one after the other
}

RecorderEnd RecorderRun::record(const RecorderSetup& setup) {
    for (int tries = 0; tries < kTries; ++tries) {
        decoded_ = false;
        watch_->begin();
        acquisition_->set_visible(true);
        acquisition_->Command6_Click();
        const Outcome outcome = follow(setup);
        watch_->end();
        acquisition_->set_visible(false);
        if (outcome != Outcome::kDone || !decoded_ || watch_->start_confirmed())
            return judge(outcome);
        progress_("the drive did not confirm the start; once more");
        const Outcome pause = session_.wait([] { return false; }, kQuiet);
        if (pause != Outcome::kNoAnswer) return judge(pause);
    }
    return {{Outcome::kDone, 0.0, {}, 0}, "", "the drive does not confirm the start"};
}

bool RecorderRun::ended() const {
    return !data_->sampling || watch_->buffer_refused() ||
           watch_->silence(session_.now()) >= limit_;
}

Outcome RecorderRun::follow(const RecorderSetup& setup) {
    while (true) {
        const std::string now = progress(setup);
        if (now != told_) progress_(told_ = now);
        const Outcome outcome =
            session_.wait([&] { return ended() || progress(setup) != told_; }, limit_);
        const bool news = outcome == Outcome::kDone && !ended();
        if (outcome != Outcome::kNoAnswer && !news) return outcome;
    }
}

std::string RecorderRun::progress(const RecorderSetup& setup) const {
    if (engine_.state.scopeState >= 5) {
        const int percent = static_cast<int>(data_->ProgressBar1) / kProgressStep * kProgressStep;
        return fmt::format("reading the buffer, {} %", percent);
    }
    if (setup.trigger && watch_->status() != 3) return "waiting for the trigger; Ctrl-C ends it";
    return "recording";
}

RecorderEnd RecorderRun::judge(Outcome outcome) {
    RecorderEnd end;
    end.reply.outcome = outcome;
    if (outcome != Outcome::kDone) return end;
    if (decoded_) {
        const std::int32_t expected = data_->rowBytes * data_->sampleCount;
        if (data_->rawLength != expected)
            end.complaint =
                fmt::format("the drive gave {} bytes in place of {}", data_->rawLength, expected);
        return end;
    }
    // A lost link ends the acquisition too; an open one lets time pass.
    const bool lost = session_.wait([] { return false; }, 0ms) == Outcome::kLinkLost;
    if (lost || watch_->line_silent(engine_)) {
        end.reply.outcome = Outcome::kLinkLost;
    } else if (const auto code = watch_->abort_code()) {
        end.reply.outcome = Outcome::kRefused;
        end.reply.abort_code = *code;
        end.subject =
            watch_->buffer_refused() ? "the buffer of the recorder" : "the start of the recorder";
    } else {
        end.reply.outcome = Outcome::kNoAnswer;
        end.subject = "the requests to the recorder";
    }
    return end;
}

// The acquisition says it once, as a click would. Then it is said until the drive confirms it: who
// leaves now can't look after it any more.
void RecorderRun::stop() {
    if (data_->sampling) acquisition_->Command6_Click();
    session_.write_last(scope::kCommandKey, 0, kStopPatience);
}

}  // namespace servo::cli
