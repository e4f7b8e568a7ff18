// What the operator chooses: channels, trigger, the four boxes. A choice goes to the drive at once;
// what the drive holds comes back by the refresh.
#include "scope/acquisition.h"

#include <utility>

#include "base/number.h"
#include "params/codec.h"
#include "params/formula.h"
#include "params/object_browser.h"
#include "scope/channel_lists.h"

namespace servo::scope {

namespace {

constexpr std::size_t kTriggerPick = 8;  // its place in lastObjectPick
constexpr int kWideBits = 32;
constexpr char32_t kBackspace = 8;

bool holds(const PickList& list, int index) {
    return index >= 0 && index < static_cast<int>(list.items.size());
}

int picked_bits(const ScopeChannel& channel) {
    return 8 * width_of(channel.picked_type());
}

// The other channel of the same wide slot.
int partner_of(int channel) {
    return channel ^ 1;
}

link::WireKey own_slot(int channel) {
    return params::scope_selector(channel, 16);
}

link::WireKey wide_slot(int channel) {
    return params::scope_selector(channel, kWideBits);
}

// Value of a slot: the object with its width in bits in the low byte.
std::int32_t source_value(const ScopeChannel& channel) {
    const auto object = static_cast<std::uint32_t>(channel.picked()->key);
    return static_cast<std::int32_t>(object << 8U | static_cast<unsigned>(picked_bits(channel)));
}

}  // namespace

Acquisition::Acquisition(ScopeServices services, ScopeData& data, AcquisitionEvents events)
    : services_(std::move(services)), data_(data), events_(std::move(events)) {}

void Acquisition::tell() const {
    if (events_.changed) events_.changed();
}

std::uint8_t& Acquisition::last_pick(int channel) {
    return data_.lastObjectPick.at(channel == kTrigger ? kTriggerPick
                                                       : static_cast<std::size_t>(channel));
}

void Acquisition::write(link::WireKey key, std::int32_t value) {
    services_.engine.sendata2(key, value, 0);
}

// --- Channels

void Acquisition::pick_object(int channel_index, int list_index) {
    ScopeChannel& picked = channel(channel_index);
    if (!holds(picked.objectList, list_index)) return;
    picked.objectList.ListIndex = list_index;
    last_pick(channel_index) = static_cast<std::uint8_t>(list_index);
    restart_collection();
    if (list_index > 0) {
        Add_Unit_To_CH(list_index - 1, picked);
        if (picked.enable) write_slot(channel_index);
    } else if (picked.enable) {
        write(own_slot(channel_index), 0);
        write(wide_slot(channel_index), 0);
    }
    tell();
}

// Only the slot that fits the object is written. The other one keeps what it held: a pick of
// another width leaves it to a tick, or to the empty choice, to clear both.
void Acquisition::write_slot(int channel_index) {
    const ScopeChannel& written = channel(channel_index);
    write(params::scope_selector(channel_index, picked_bits(written)), source_value(written));
}

void Acquisition::click_enable(int channel_index) {
    ScopeChannel& clicked = channel(channel_index);
    if (clicked.enable) {
        untick(channel_index);
    } else if (clicked.picked() != nullptr) {
        // A wide object needs the slot that the channel shares with its partner.
        const int partner = partner_of(channel_index);
        if (picked_bits(clicked) == kWideBits && channel(partner).enable) untick(partner);
        clicked.enable = true;
        data_.curvesChanged = true;
        restart_collection();
        write_slot(channel_index);
    }
    tell();
}

void Acquisition::untick(int channel_index) {
    ScopeChannel& unticked = channel(channel_index);
    unticked.enable = false;
    data_.curvesChanged = true;
    restart_collection();
    write(params::scope_selector(channel_index, picked_bits(unticked)), 0);
}

// The settings of the six slots are collected afresh, so that what was read before the change does
// not undo it. A first one that is still under way was read before as well.
void Acquisition::restart_collection() {
    data_.driveConfigNext = 0;
    if (first_read_under_way()) drop_first_setting_ = true;
}

// Whether this pass of the refresh has asked for sub 1 and not yet seen an answer of its own. Late
// answers of the pass before are those of positions that this one has not reached.
bool Acquisition::first_read_under_way() const {
    const link::EngineState& state = services_.engine.state;
    const bool refreshing =
        state.Com_Change == 0 && state.status_lane == 2 && state.scopeState == 0;
    if (!refreshing || state.sub_Pointer < 1) return false;
    return state.sub_Pointer == 1 || last_setting_ == 0 || last_setting_ > state.sub_Pointer;
}

// --- Trigger

void Acquisition::pick_trigger(int list_index) {
    ScopeChannel& trigger = channel(kTrigger);
    if (!holds(trigger.objectList, list_index)) return;
    trigger.objectList.ListIndex = list_index;
    last_pick(kTrigger) = static_cast<std::uint8_t>(list_index);
    restart_collection();
    if (list_index > 0) {
        Add_Unit_To_CH(list_index - 1, trigger);
        write(kTriggerKey, source_value(trigger));
    } else {
        write(kTriggerKey, 0);
    }
    tell();
}

// The picture follows when the drive has taken the edge.
void Acquisition::Image5_Click() {
    write(kEdgeKey, data_.edge == 0 ? 1 : 0);
}

// --- The boxes

bool Acquisition::commit_number(link::WireKey key, std::string_view text) {
    const auto value = params::commit_value(base::leading_number(text));
    if (value) write(key, *value);
    return value.has_value();
}

bool Acquisition::enter_text1() {
    return commit_number(kPeriodKey, data_.Text1);
}

bool Acquisition::enter_text2() {
    return commit_number(kOffsetKey, data_.Text2);
}

bool Acquisition::enter_text3() {
    return commit_number(kCountKey, data_.Text3);
}

// Without a unit there is no telling what the number means: nothing is written.
void Acquisition::enter_text4() {
    const ScopeChannel& trigger = channel(kTrigger);
    const dictionary::ObjectRecord* entry = trigger.picked();
    if (entry == nullptr || trigger.unitList.ListIndex < 0) return;
    const auto level = params::text_to_value(data_.Text4, trigger.unitList.text(),
                                             dictionary::trim_tail(entry->formula),
                                             services_.engine.values().operands);
    if (!level) return;
    if (const auto value = params::commit_value(*level)) write(kLevelKey, *value);
}

// Letters pass for the sake of units such as HEX.
bool Acquisition::passes_filter(char32_t key, std::string_view text) {
    if (key == kBackspace) return true;
    if (key == U'.' || key == U'-')
        return text.find(static_cast<char>(key)) == std::string_view::npos;
    return (key >= U'0' && key <= U'9') || (key >= U'A' && key <= U'Z') ||
           (key >= U'a' && key <= U'z');
}

}  // namespace servo::scope
