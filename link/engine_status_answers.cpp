// Answers to the status lanes. They are told apart by their object and not by the lane that runs:
// the answer to a lane's last request comes when the next lane has begun.
#include <algorithm>

#include "base/number.h"
#include "link/engine.h"

namespace servo::link {

namespace {

// Positions of lane 0.
enum Lane0 : std::size_t {
    kFaultWord1,
    kFaultWord2,
    kPeakCurrent,
    kEncoderResolution,
    k304007,
    k60F613,
    k60F611,
    kFirmwareCheck
};

bool is_read_answer(const Payload& payload) {
    return payload[0] >> 4 == 4 && payload[0] != kRead;
}

std::optional<std::size_t> position_in(std::span<const WireKey> list, Identity object) {
    const auto found = std::find_if(list.begin(), list.end(), [object](WireKey key) {
        return dictionary::identity_of(key) == object;
    });
    if (found == list.end()) return std::nullopt;
    return static_cast<std::size_t>(found - list.begin());
}

// As the value decoder names the size of a status object.
int unsigned_code(WireKey key) {
    return static_cast<int>(key & 0xFFU);
}

std::string four_digits(std::uint16_t value) {
    std::string text = base::hex_text(value);
    return text.insert(0, text.size() < 4 ? 4 - text.size() : 0, '0');
}

}  // namespace

Engine::Next Engine::take_status_answer() {
    if (state.status_lane == 2 && scope_ != nullptr) {
        // While the recorder's buffer comes in, a frame is a segment and has no identity.
        const Received received = scope_->receive_frame(*this, reply_);
        if (received == Received::kEndTick) return Next::kEndTick;
        if (received == Received::kTaken) return Next::kDrain;
    }
    const Identity object = reply_key();
    const bool answer = is_read_answer(reply_);
    if (const auto position = position_in(status_list(0), object)) {
        if (answer) take_lane0_answer(*position);
    } else if (position_in(status_list(1), object)) {
        if (answer)
            for (StatusListener* listener : listeners_)
                listener->lane1_answer(object, reply_);
    } else if (position_in(status_list(2), object) && state.status_lane != 2 && scope_ != nullptr) {
        if (!answer && reply_[0] != kAbort) return Next::kDrain;
        if (scope_->receive_frame(*this, reply_) == Received::kEndTick) return Next::kEndTick;
    }
    return Next::kDrain;
}

void Engine::take_lane0_answer(std::size_t position) {
    const auto value =
        static_cast<std::int64_t>(reply_value(unsigned_code(status_list(0)[position])));
    const auto keep = [value](Operand& operand) {
        operand.value = static_cast<std::int32_t>(value);
        operand.seen = true;
    };
    switch (static_cast<Lane0>(position)) {
        case kFaultWord1:
            take_fault_word(1, static_cast<std::uint16_t>(value));
            break;
        case kFaultWord2:
            take_fault_word(2, static_cast<std::uint16_t>(value));
            break;
        case kPeakCurrent:
            keep(values_.operands.o65100310);
            values_.operands.o65100310.value = static_cast<std::int16_t>(value);
            break;
        case kEncoderResolution:
            keep(values_.operands.o64100320);
            break;
        case k304007:
            keep(values_.operands.o30400710);
            break;
        case k60F613:
            keep(values_.operands.o60F61310);
            break;
        case k60F611:
            keep(values_.operands.o60F61110);
            break;
        case kFirmwareCheck:
            values_.firmware_check_known = true;
            publish_firmware_check(base::hex_text(static_cast<std::int32_t>(value)));
            break;
    }
}

void Engine::take_fault_word(int word, std::uint16_t value) {
    if (word == 1) {
        // Written on a change only: a toolbar that is redrawn on every answer flickers.
        const std::string_view picture = value == 0 ? kErrorgreen : kErrorred;
        if (pictures.button5() != picture) pictures.set_button5(picture);
        values_.fault_word1 = value;
        values_.fault_text1 = four_digits(value);
    } else {
        values_.fault_word2 = value;
        values_.fault_text2 = four_digits(value);
    }
    for (StatusListener* listener : listeners_)
        listener->fault_word(word, value);
}

void Engine::publish_firmware_check(std::string text) {
    values_.firmware_check_text = std::move(text);
    for (StatusListener* listener : listeners_)
        listener->firmware_check(values_.firmware_check_text);
}

}  // namespace servo::link
