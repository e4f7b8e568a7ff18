#include "tools/journal_restore.h"

#include <fmt/format.h>

#include <algorithm>

namespace servo::tools {

namespace {
constexpr base::Text kRunning{"正在写回：{} / {}", "Writing back: {} of {}"};
constexpr base::Text kDone{"已写回 {} 个数值", "Values written back: {}"};
constexpr base::Text kRefused{"，被拒绝 {} 个", ", refused: {}"};
constexpr base::Text kSilent{"，无应答 {} 个", ", without an answer: {}"};
}  // namespace

bool JournalRestore::blocked() const {
    const link::EngineState& state = engine_.state;
    return !engine_.port().is_open() || state.batch_mode != 0 || state.download_active == 1 ||
           state.scanRequested != 0;
}

std::vector<JournalEntry> JournalRestore::plan(const std::vector<std::size_t>& chosen) const {
    std::vector<JournalEntry> first;  // of each object
    for (const std::size_t i : chosen) {
        const JournalEntry& entry = journal_.entries().at(i);
        if (entry.state == JournalEntry::State::kRefused || is_command(entry.object())) continue;
        const bool earlier = std::ranges::any_of(first, [&entry](const JournalEntry& other) {
            return other.object() == entry.object();
        });
        if (!earlier) first.push_back(entry);
    }
    std::erase_if(first, [this](const JournalEntry& entry) {
        if (!entry.before) return true;
        const JournalEntry* last = journal_.last_of(entry.object());
        const bool settled = last->state != JournalEntry::State::kSent;
        return settled && journal_.known(entry.object()) == entry.before;
    });
    return first;
}

bool JournalRestore::start(const std::vector<std::size_t>& chosen) {
    if (running() || blocked()) return false;
    const std::vector<JournalEntry> planned = plan(chosen);
    if (planned.empty()) return false;
    left_.assign(planned.rbegin(), planned.rend());
    wanted_ = planned.size();
    taken_ = refused_ = silent_ = 0;
    attempts_ = 0;
    send();
    return true;
}

void JournalRestore::send() {
    const JournalEntry& wanted = left_.front();
    ++attempts_;
    steps_ = 0;
    engine_.sendata2(wanted.key, static_cast<std::int32_t>(*wanted.before), 0);
    const JournalEntry* sent = journal_.last_of(wanted.object());
    const bool left = sent != nullptr && sent->state == JournalEntry::State::kSent;
    entry_ = left ? std::optional(sent->number) : std::nullopt;
}

void JournalRestore::done(std::size_t& count) {
    ++count;
    left_.pop_front();
    attempts_ = 0;
    if (running()) send();
}

void JournalRestore::step() {
    if (!running()) return;
    if (blocked()) {
        silent_ += left_.size();
        left_.clear();
        return;
    }
    const JournalEntry* sent = journal_.last_of(left_.front().object());
    // The journal was cleared meanwhile, or the object was written by somebody else.
    const bool followed = sent != nullptr && sent->number == entry_;
    if (followed && sent->state == JournalEntry::State::kTaken) return done(taken_);
    if (followed && sent->state == JournalEntry::State::kRefused) return done(refused_);
    if (!followed) return done(silent_);
    if (++steps_ < kStepsToAnswer) return;
    if (attempts_ < kAttempts)
        send();
    else
        done(silent_);
}

std::string JournalRestore::note() const {
    const base::Language language = journal_.language();
    if (running())
        return fmt::format(fmt::runtime(kRunning.in(language)), wanted_ - left_.size(), wanted_);
    if (wanted_ == 0) return {};
    std::string text = fmt::format(fmt::runtime(kDone.in(language)), taken_);
    if (refused_ > 0) text += fmt::format(fmt::runtime(kRefused.in(language)), refused_);
    if (silent_ > 0) text += fmt::format(fmt::runtime(kSilent.in(language)), silent_);
    return text;
}

}  // namespace servo::tools
