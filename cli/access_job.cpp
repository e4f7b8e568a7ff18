#include "cli/access_job.h"

#include "dictionary/keys.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// Longer than a drive takes for an answer, far shorter than the engine's patience.
constexpr std::chrono::microseconds kAskAgain = 200ms;

bool is_segment(std::uint8_t command) {
    return (command & 0xE0U) == 0;
}

std::uint32_t abort_code(const link::Payload& payload) {
    return static_cast<std::uint32_t>(payload[4]) | static_cast<std::uint32_t>(payload[5]) << 8 |
           static_cast<std::uint32_t>(payload[6]) << 16 |
           static_cast<std::uint32_t>(payload[7]) << 24;
}

}  // namespace

void AccessJob::start(dictionary::WireKey key) {
    active_ = true;
    sent_ = false;
    answered_string_ = false;
    key_ = key;
    kept_alive_at_ = {};
    reply_ = {};
}

void AccessJob::start_read(dictionary::Identity key, const std::string& type) {
    write_ = false;
    again_ = true;
    decoder_ = dictionary::decoder_size(type);
    start(static_cast<dictionary::WireKey>(key) << 8 | dictionary::wire_size(type));
}

void AccessJob::start_write(dictionary::WireKey key, std::int32_t value, bool again) {
    write_ = true;
    again_ = again;
    value_ = value;
    start(key);
}

void AccessJob::ask(link::Engine& engine) {
    sent_ = true;
    asked_at_ = engine.clock().now();
    kept_alive_at_ = asked_at_;
    engine.sendata2(key_, write_ ? value_ : 0, write_ ? 0 : 1);
}

void AccessJob::send_step(link::Engine& engine) {
    const std::chrono::microseconds now = engine.clock().now();
    if (!sent_ || (again_ && now - asked_at_ >= kAskAgain)) {
        // A string that broke off is begun anew: nobody knows which segment was lost.
        engine.state.str_read_step = 0;
        answered_string_ = false;
        reply_.bytes.clear();
        ask(engine);
    } else if (now - kept_alive_at_ >= kKeepAlive) {
        kept_alive_at_ = now;
        engine.sendata2(kKeepAliveKey, 0, 1);
    }
}

link::Received AccessJob::receive_frame(link::Engine& engine, const link::Payload& payload) {
    if (!sent_) return link::Received::kIgnored;
    const std::uint8_t command = payload[0];
    if (answered_string_ && is_segment(command)) return take_segment(engine, payload);
    if (link::reply_key(payload) != dictionary::identity_of(key_)) return link::Received::kIgnored;
    if (command == link::kAbort) {
        reply_.outcome = Outcome::kRefused;
        reply_.abort_code = abort_code(payload);
        return finish(engine);
    }
    if (write_) {
        if (command != link::kWritten) return link::Received::kIgnored;
        reply_.outcome = Outcome::kDone;
        return finish(engine);
    }
    if (command >> 4 != 4 || command == link::kRead) return link::Received::kIgnored;
    if (command == link::kAnswerSegmented && decoder_ == 0) {
        // To a second copy of this answer no second request may follow: the drive would go on to
        // the next segment.
        if (answered_string_) return link::Received::kIgnored;
        answered_string_ = true;
        engine.state.str_read_step = 1;
        ask(engine);
        return link::Received::kTaken;
    }
    if (decoder_ != 0) {
        reply_.number = link::reply_value(payload, decoder_);
    } else {
        // A text of up to four characters may come at once; the unused bytes are told in the
        // command.
        const std::size_t count = 4U - ((command & 1U) != 0 ? (command >> 2U & 3U) : 0U);
        reply_.bytes.assign(payload.begin() + 4,
                            payload.begin() + 4 + static_cast<std::ptrdiff_t>(count));
    }
    reply_.outcome = Outcome::kDone;
    return finish(engine);
}

// Segments carry a toggle and no identity. One that repeats the last toggle is a second copy on the
// line and is dropped, so that a text never holds a part twice.
link::Received AccessJob::take_segment(link::Engine& engine, const link::Payload& payload) {
    const bool toggle = (payload[0] & 0x10U) != 0;
    if (toggle != (engine.state.str_read_step == 2)) return link::Received::kIgnored;
    const std::size_t unused = payload[0] >> 1U & 7U;
    reply_.bytes.append(payload.begin() + 1,
                        payload.begin() + 8 - static_cast<std::ptrdiff_t>(unused));
    if ((payload[0] & 1U) != 0) {
        reply_.outcome = Outcome::kDone;
        return finish(engine);
    }
    engine.state.str_read_step = engine.state.str_read_step == 1 ? 2 : 1;
    ask(engine);
    return link::Received::kTaken;
}

link::Received AccessJob::finish(link::Engine& engine) {
    active_ = false;
    engine.state.str_read_step = 0;
    // The poller's rule against a stale first answer is for pages; here every answer has been
    // matched, and the next read must not be dropped.
    engine.state.last_write_key = -1;
    return link::Received::kEndTick;
}

void AccessJob::link_closed(link::Engine&) {
    if (!active_) return;
    active_ = false;
    reply_.outcome = Outcome::kLinkLost;
}

}  // namespace servo::cli
