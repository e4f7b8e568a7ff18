#include "tools/journal.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "tools/drive_commands.h"

namespace servo::tools {

namespace {

constexpr std::uint32_t mask_of(std::uint32_t size) {
    return size >= 4 ? 0xFFFFFFFFU : (1U << 8 * size) - 1;
}

// Of an answer to a read, by its command byte; 0 for any other frame.
constexpr std::uint32_t size_of_answer(std::uint8_t command) {
    if (command == link::kAnswer1) return 1;
    if (command == link::kAnswer2) return 2;
    return command == link::kAnswer4 ? 4 : 0;
}

// Of a write request, likewise.
constexpr std::uint32_t size_of_write(std::uint8_t command) {
    if (command == link::kWrite1) return 1;
    if (command == link::kWrite2) return 2;
    return command == link::kWrite4 ? 4 : 0;
}

std::uint32_t data_of(const link::Payload& payload) {
    return static_cast<std::uint32_t>(payload[4]) | static_cast<std::uint32_t>(payload[5]) << 8 |
           static_cast<std::uint32_t>(payload[6]) << 16 |
           static_cast<std::uint32_t>(payload[7]) << 24;
}

// Behind these the drive holds other values than it has told: the stored ones, or its factory's.
bool changes_values(link::Identity object, std::uint32_t bits) {
    if (object == dictionary::identity_of(kRestartKey)) return true;
    return object == dictionary::identity_of(kControlParametersKey) &&
           bits == static_cast<std::uint32_t>(kResetParameters);
}

}  // namespace

bool is_command(link::Identity object) {
    switch (const auto index = static_cast<std::uint32_t>(object) >> 8; index) {
        case 0x1010:
        case 0x1011:
        case 0x2FF0:
        case 0x2FFF:
        case 0x6040:
            return true;
        default:
            return object == 0x230007 || object == 0x304001 || object == 0x206001;
    }
}

WriteJournal::WriteJournal(JournalServices services) : services_(std::move(services)) {
    services_.line.set_tap(this);
    services_.engine.add_listener(*this);
}

WriteJournal::~WriteJournal() {
    services_.line.set_tap(nullptr);
    services_.engine.remove_listener(*this);
}

void WriteJournal::clear() {
    entries_.clear();
    forgotten_ = 0;
    tell();
}

const JournalEntry* WriteJournal::last_of(link::Identity object) const {
    const auto found =
        std::find_if(entries_.rbegin(), entries_.rend(),
                     [object](const JournalEntry& entry) { return entry.object() == object; });
    return found == entries_.rend() ? nullptr : &*found;
}

std::optional<std::uint32_t> WriteJournal::known(link::Identity object) const {
    const auto found = known_.find(object);
    return found == known_.end() ? std::nullopt : std::optional(found->second);
}

// Inside a tick it is a job that writes, whatever window its user looks at.
std::string WriteJournal::window_now() const {
    const link::EngineState& state = services_.engine.state;
    if (state.timer1_in != 0) {
        if (state.batch_mode == 1 || state.batch_mode == 2) return "imexport";
        if (state.batch_mode != 0) return "PosFlow";
        if (state.scanRequested != 0) return "ADVtunner";
        return "Scope";
    }
    return services_.window();
}

void WriteJournal::sent(const link::Payload& payload) {
    const std::uint32_t size = size_of_write(payload[0]);
    if (size == 0) return;
    const link::Identity object = link::reply_key(payload);
    const std::uint32_t bits = data_of(payload) & mask_of(size);
    if (services_.engine.state.download_active != 1)
        written(static_cast<link::WireKey>(object) << 8 | size, bits);
    if (changes_values(object, bits)) known_.clear();
}

void WriteJournal::written(link::WireKey key, std::uint32_t bits) {
    std::string window = window_now();
    if (!entries_.empty()) {
        JournalEntry& last = entries_.back();
        if (last.key == key && last.value == bits && last.window == window &&
            last.state == JournalEntry::State::kSent) {
            ++last.times;
            last.sent = services_.engine.clock().now();
            tell();
            return;
        }
    }
    JournalEntry& entry = entries_.emplace_back();
    entry.number = next_++;
    entry.time = services_.time_of_day();
    entry.sent = services_.engine.clock().now();
    entry.window = std::move(window);
    entry.key = key;
    entry.value = bits;
    entry.before = known(entry.object());
    if (entries_.size() > kMost) {
        entries_.pop_front();
        ++forgotten_;
    }
    tell();
}

void WriteJournal::heard(const link::Payload& payload) {
    const link::Identity object = link::reply_key(payload);
    if (const std::uint32_t size = size_of_answer(payload[0]); size != 0) {
        known_[object] = data_of(payload) & mask_of(size);
        return;
    }
    if (payload[0] != link::kWritten && payload[0] != link::kAbort) return;
    JournalEntry* entry = waiting_for(object, payload);
    if (entry == nullptr) return;  // the refusal of a read, or nothing that was written here
    if (payload[0] == link::kAbort) {
        entry->state = JournalEntry::State::kRefused;
        entry->abort_code = data_of(payload);
    } else {
        entry->state = JournalEntry::State::kTaken;
        if (!changes_values(object, entry->value)) known_[object] = entry->value;
    }
    tell();
}

// Of the writes that wait for their answer the one that the drive names by the value, since it
// sends the value back; without that the first, since answers come in order.
JournalEntry* WriteJournal::waiting_for(link::Identity object, const link::Payload& payload) {
    const auto now = services_.engine.clock().now();
    JournalEntry* first = nullptr;
    for (JournalEntry& entry : entries_) {
        if (entry.object() != object || entry.state != JournalEntry::State::kSent) continue;
        if (now - entry.sent > kLongestAnswer) continue;
        const std::uint32_t told = data_of(payload) & mask_of(entry.key & 0xFFU);
        if (payload[0] == link::kWritten && told == entry.value) return &entry;
        if (first == nullptr) first = &entry;
    }
    return first;
}

// Another drive may be at the other end.
void WriteJournal::link_changed(bool /*open*/) {
    known_.clear();
}

}  // namespace servo::tools
