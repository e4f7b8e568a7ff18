// The recorder's buffer, fetched in segments of seven bytes. A segment carries no position; its
// toggle tells it from a repetition of the one before. `str_read_step` is the toggle expected: 1
// for toggle 0, 2 for toggle 1.
#include <algorithm>

#include "scope/acquisition.h"

namespace servo::scope {

namespace {

constexpr int kSegmentBytes = 7;
constexpr std::uint8_t kToggleBit = 0x10;
constexpr std::int32_t kIdle = 0;
constexpr std::int32_t kUploading = 6;

}  // namespace

// The size that the answer announces is not needed: the last segment says that it is the last.
void Acquisition::begin_upload(link::Engine& engine) {
    engine.state.scopeState = kUploading;
    engine.state.str_read_step = 1;
    data_.rawIndex = 0;
}

link::Received Acquisition::take_segment(link::Engine& engine, const link::Payload& payload) {
    std::uint8_t& expected = engine.state.str_read_step;
    if (expected != 1 && expected != 2) return link::Received::kTaken;
    const int more = expected == 1 ? 0x00 : kToggleBit;
    const int command = payload[0];
    if (command == more) {
        expected = expected == 1 ? 2 : 1;
        engine.state.str_read_step_bk = 0;
        const bool stored = store_bytes(payload, kSegmentBytes);
        return stored ? link::Received::kTaken : link::Received::kEndTick;
    }
    // The segment before once more: the request is repeated.
    if (command == (more ^ kToggleBit)) return link::Received::kTaken;
    // Anything else is the last segment; bits 1 to 3 count its unused bytes. Only one of the wrong
    // toggle counts to more than a frame holds, and nothing of it is stored.
    const int count = kSegmentBytes - (command - (more + 1)) / 2;
    if (count > kSegmentBytes || !store_bytes(payload, count)) return link::Received::kEndTick;
    end_upload(engine);
    return link::Received::kTaken;
}

// What does not fit ends the tick, with the buffer full: the transfer goes on at the drive, and the
// operator stops the run.
bool Acquisition::store_bytes(const link::Payload& payload, int count) {
    for (int i = 1; i <= count; ++i) {
        if (data_.rawIndex < 0 || data_.rawIndex >= static_cast<std::int16_t>(kMaxBytes)) {
            tell();
            return false;
        }
        data_.rawBytes.at(static_cast<std::size_t>(data_.rawIndex)) =
            payload.at(static_cast<std::size_t>(i));
        ++data_.rawIndex;
        // A buffer that is fetched without a start here has no known length, and a longer one than
        // was asked for is done all the same.
        const double samples = static_cast<double>(data_.rowBytes) * data_.sampleCount;
        data_.ProgressBar1 =
            samples > 0
                ? std::min(100.0, data_.rawIndex * 100.0 / data_.rowBytes / data_.sampleCount)
                : 0.0;
    }
    tell();
    return true;
}

// The click returns the button to "Start" and stops the recorder; the second one starts the next
// recording, so in continuous mode the button goes there and back within one tick.
void Acquisition::end_upload(link::Engine& engine) {
    engine.state.str_read_step = 0;
    data_.rawLength = data_.rawIndex;
    data_.rawIndex = 0;
    engine.state.sub_Pointer = 0;
    engine.state.str_read_step_bk = 0;
    engine.state.scopeState = kIdle;
    Command6_Click();
    if (events_.Movingdata) events_.Movingdata();
    if (events_.DrawPicture) events_.DrawPicture();
    if (!data_.Check5) Command6_Click();
}

}  // namespace servo::scope
