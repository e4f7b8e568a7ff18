// The senders: they fire a request and forget it. Their only report of a failure is silence.
#include <algorithm>

#include "link/engine.h"

namespace servo::link {

Channel& Engine::channel() {
    if (state.channel == 0) return serial;
    return can;
}

void Engine::Datawrite(const Payload& payload) {
    Channel& line = channel();
    if (!line.is_open()) return;
    if (state.download_active == 1 && state.timer1_in == 0) return;
    ++counters.sends;
    line.Datawrite(payload);
}

void Engine::Datawrite_str(std::string_view text) {
    if (!port_.is_open()) return;
    port_.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void Engine::sendata2(WireKey key, std::int32_t value, std::uint8_t read) {
    const Payload payload = make_payload(key, value, read != 0, state.str_read_step);
    if (read == 0) {
        state.last_write_key = static_cast<std::int32_t>(key);
    } else if (static_cast<std::uint8_t>(key) == 6 && state.str_read_step == 0) {
        state.str_read_step_bk = 0;
    }
    Datawrite(payload);
}

void Engine::sendata(WireKey key, std::int32_t value, std::uint8_t read) {
    // While an answer waits to be read and a request waits to leave, one more would only add to
    // both.
    if (port_.in_buffer_count() >= 1 && port_.out_buffer_count() != 0) return;
    const Payload payload = make_payload(key, value, read != 0, state.str_read_step);
    if (payload[0] == kSegment0 || payload[0] == kSegment1) {
        // Out of four calls two send, so the drive has time to prepare the next segment.
        if (state.segment_pace == 1 || state.segment_pace == 2) {
            ++state.segment_pace;
            return;
        }
        state.segment_pace = state.segment_pace == 0 ? 1 : 0;
    } else if (read != 0 && static_cast<std::uint8_t>(key) == 6) {
        state.str_read_step_bk = 0;
    }
    Datawrite(payload);
}

std::uint8_t Engine::get_frame() {
    const std::uint8_t result = channel().get_frame(reply_);
    if (result == kFrameBadChecksum) ++counters.bad_checksum;
    if (result == kFrameForeign) ++counters.foreign;
    return result;
}

void Engine::clear_queues() {
    port_.clear_in();
    port_.clear_out();
}

std::string Engine::read_text() {
    std::array<std::uint8_t, 255> bytes{};
    const std::size_t length = std::min<std::size_t>(state.InputLen, bytes.size());
    const std::size_t count = port_.read(std::span(bytes).first(length));
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace servo::link
