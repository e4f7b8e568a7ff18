// The settings that the drive holds, as the refresh reads them back: subs 1 to 13 in turn. What the
// operator is typing is left alone.
#include <cmath>
#include <utility>

#include "base/number.h"
#include "params/formula.h"
#include "scope/acquisition.h"
#include "scope/channel_lists.h"

namespace servo::scope {

namespace {

constexpr int kSlots = 6;
constexpr int kUnsigned8 = 1;
constexpr int kUnsigned16 = 2;
constexpr int kUnsigned32 = 4;

enum Setting : int {
    kPeriod = 8,
    kOffset = 9,
    kCount = 10,
    kEdge = 11,
    kTriggerSource = 12,
    kLevel = 13
};

}  // namespace

std::string Acquisition::period_text(double multiple) {
    const double milliseconds = multiple * kPeriodMicroseconds / 1000.0;
    if (milliseconds != std::trunc(milliseconds))
        return base::number_text(milliseconds * 1000.0) + "us";
    return base::number_text(milliseconds) + "ms";
}

link::Received Acquisition::take_setting(int sub, const link::Payload& payload) {
    // An answer that comes late must not change what a file has just filled.
    if (data_.importMode) return link::Received::kTaken;
    const auto number = static_cast<std::uint32_t>(link::reply_value(payload, kUnsigned32));
    if (sub >= 1 && sub <= kSlots) {
        collect(sub, number);
    } else if (sub == kTriggerSource) {
        take_trigger(static_cast<dictionary::Identity>(number >> 8));
    } else if (sub == kEdge && data_.focus != "Combo10") {
        data_.edge = link::reply_value(payload, kUnsigned8) == 1 ? 1 : 0;
    } else if (sub == kCount) {
        show_number("Text3", data_.Text3, link::reply_value(payload, kUnsigned16));
    } else if (sub == kOffset) {
        show_number("Text2", data_.Text2, link::reply_value(payload, kUnsigned16));
    } else if (sub == kPeriod) {
        show_period(link::reply_value(payload, kUnsigned16));
    }
    last_setting_ = sub;
    // An answer behind the first one in the same pass: the first one is no longer under way.
    if (sub > 1 && sub <= services_.engine.state.sub_Pointer) drop_first_setting_ = false;
    const link::Received received = sub == kLevel ? take_level(payload) : link::Received::kTaken;
    tell();
    return received;
}

// Accepted in their order alone, so that a set is never put together from before and after a
// change.
void Acquisition::collect(int sub, std::uint32_t value) {
    if (sub == 1 && std::exchange(drop_first_setting_, false)) return;
    if (data_.driveConfigNext != sub - 1) return;
    data_.driveConfigValues.at(static_cast<std::size_t>(sub - 1)) =
        static_cast<std::int32_t>(value >> 8);
    if (++data_.driveConfigNext < kSlots) return;
    apply_channels();
    data_.driveConfigNext = 0;
}

// A wide slot does not say which of its two channels it belongs to. It goes to the first of them
// unless only the second is recorded.
void Acquisition::apply_channels() {
    auto& values = data_.driveConfigValues;
    for (const std::size_t first : {std::size_t{0}, std::size_t{2}}) {
        const std::int32_t wide = values.at(4 + first / 2);
        if (wide == 0) continue;
        const bool second_alone =
            !data_.channels.at(first).enable && data_.channels.at(first + 1).enable;
        values.at(second_alone ? first + 1 : first) = wide;
    }
    for (int index = 0; index < kCurves; ++index)
        apply_channel(index, values.at(static_cast<std::size_t>(index)));
}

void Acquisition::apply_channel(int index, dictionary::Identity object) {
    ScopeChannel& curve = channel(index);
    if (curve.objectList.ListIndex != last_pick(index)) return;
    const bool recorded = object != 0;
    if (curve.enable != recorded) data_.curvesChanged = true;
    curve.enable = recorded;
    if (recorded) select(index, object);
}

// An object that the dictionary does not have shows as the empty choice: nothing is decoded by a
// wrong type. What is selected here counts as picked, or the next assignment from outside would be
// taken for the operator's own.
void Acquisition::select(int index, dictionary::Identity object) {
    ScopeChannel& selected = channel(index);
    const auto entry = Add_OD_To_CH(object, selected, services_.dictionary, services_.language);
    selected.objectList.ListIndex = entry ? *entry + 1 : 0;
    last_pick(index) = static_cast<std::uint8_t>(selected.objectList.ListIndex);
    if (entry) Add_Unit_To_CH(*entry, selected);
}

void Acquisition::take_trigger(dictionary::Identity object) {
    if (channel(kTrigger).objectList.ListIndex == last_pick(kTrigger)) select(kTrigger, object);
}

// A formula that fails ends the tick and leaves the text as it stands.
link::Received Acquisition::take_level(const link::Payload& payload) {
    const ScopeChannel& trigger = channel(kTrigger);
    const dictionary::ObjectRecord* entry = trigger.picked();
    if (entry == nullptr || data_.focus == "Text4" || trigger.unitList.ListIndex < 0)
        return link::Received::kTaken;
    const int code = dictionary::decoder_size(trigger.picked_type());
    auto text = params::value_to_text(link::reply_value(payload, code), trigger.unitList.text(),
                                      dictionary::trim_tail(entry->formula), code,
                                      services_.engine.values().operands);
    if (!text) return link::Received::kEndTick;
    data_.Text4 = std::move(*text);
    return link::Received::kTaken;
}

void Acquisition::show_number(std::string_view control, std::string& text, double value) {
    if (data_.focus != control) text = base::number_text(value);
}

void Acquisition::show_period(double multiple) {
    if (data_.focus == "Text1") return;
    data_.Text1 = base::number_text(multiple);
    data_.Label18 = period_text(multiple);
}

}  // namespace servo::scope
