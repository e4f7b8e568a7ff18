// Step 10: the serial number is read back as a string and compared with the barcode. Kept as a
// state that a later flow can enter; its frames come through the engine's normal frame path.
#include <algorithm>

#include "base/gbk.h"
#include "firmware/transfer.h"
#include "firmware/transfer_texts.h"

namespace servo::firmware {

namespace {

constexpr link::WireKey kSerialNumberKey = 0x2FF80006;
constexpr std::int16_t kReadBackMisses = 350;
constexpr std::uint8_t kLastSegmentCommand = 0x1F;  // segments are 000t nnnc

bool is_echo(std::uint8_t command) {
    return command == link::kRead || command == link::kSegment0 || command == link::kSegment1;
}

bool is_expedited(std::uint8_t command) {
    return command == link::kAnswer1 || command == link::kAnswer2 || command == link::kAnswer4 ||
           command == 0x47 || command == 0x42;
}

// Characters of a last segment; `full` is the command of one that has seven and is the last.
std::size_t characters(int command, int full) {
    return static_cast<std::size_t>(std::clamp(7 - (command - full) / 2, 0, 7));
}

}  // namespace

void FirmwareTransfer::send_read_back() {
    if (!reading_back_) {
        // A page's string may have been under way.
        state_.str_read_step = 0;
        state_.segment_pace = 0;
        data_.step10_string.clear();
        reading_back_ = true;
    }
    state_.is_access_str = 1;
    state_.Comm_Over_Time_Cnts = kReadBackMisses;
    engine_.sendata(kSerialNumberKey, 0, 1);
}

link::Received FirmwareTransfer::receive_frame(link::Engine&, const link::Payload& payload) {
    const std::uint8_t command = payload[0];
    if (!reading_back_ || is_echo(command)) return link::Received::kIgnored;
    if (command <= kLastSegmentCommand) {
        if (state_.str_read_step == 0) return link::Received::kIgnored;
        take_segment(payload);
        return link::Received::kTaken;
    }
    if (link::reply_key(payload) != dictionary::identity_of(kSerialNumberKey))
        return link::Received::kIgnored;
    if (command == link::kAnswerSegmented) {
        state_.str_read_step = 1;
        data_.step10_string.clear();
    } else if (command == link::kAbort) {
        end_read_back();
    } else if (is_expedited(command)) {
        // A text of up to four characters may come at once.
        const std::size_t count = (command & 1U) != 0 ? 4U - ((command >> 2U) & 3U) : 4U;
        data_.step10_string.assign(payload.begin() + 4,
                                   payload.begin() + 4 + static_cast<std::ptrdiff_t>(count));
        end_read_back();
    }
    return link::Received::kTaken;
}

void FirmwareTransfer::take_segment(const link::Payload& payload) {
    const std::uint8_t command = payload[0];
    const bool second_toggle = state_.str_read_step == 2;
    const bool last = command != 0x00 && command != 0x10;
    const std::size_t count = last ? characters(command, second_toggle ? 0x11 : 0x01) : 7;
    data_.step10_string.append(payload.begin() + 1,
                               payload.begin() + 1 + static_cast<std::ptrdiff_t>(count));
    if (last) return end_read_back();
    // The other toggle's answer once more does not ask for the next segment.
    if (command != (second_toggle ? 0x10 : 0x00)) return;
    state_.str_read_step = second_toggle ? 1 : 2;
    state_.segment_pace = 0;
}

void FirmwareTransfer::end_read_back() {
    const std::uint8_t step = state_.download_step;
    state_.download_active = 0;
    state_.download_step = 0;
    state_.str_read_step = 0;
    state_.is_access_str = 0;
    const bool right = base::gbk_to_utf8(data_.step10_string) == data_.Text4;
    const std::string text(right ? kSerialRight : kSerialWrong);
    services_.notice.show({}, text);
    end({TransferEnd::kReadBack, step, erased_, text});
}

}  // namespace servo::firmware
