#include "cli/recorder_watch.h"

#include "cli/access_job.h"

namespace servo::cli {
namespace {

std::uint32_t code_of(const link::Payload& payload) {
    return static_cast<std::uint32_t>(payload[4]) | static_cast<std::uint32_t>(payload[5]) << 8 |
           static_cast<std::uint32_t>(payload[6]) << 16 |
           static_cast<std::uint32_t>(payload[7]) << 24;
}

}  // namespace

void RecorderWatch::begin() {
    running_ = true;
    start_confirmed_ = false;
    buffer_refused_ = false;
    status_ = 0;
    abort_code_.reset();
    asked_at_.reset();
    left_at_.reset();
}

std::chrono::microseconds RecorderWatch::silence(std::chrono::microseconds now) const {
    return asked_at_ ? left_at_.value_or(now) - *asked_at_ : std::chrono::microseconds(0);
}

bool RecorderWatch::line_silent(const link::Engine& engine) const {
    return asked_at_ && engine.counters.frames == frames_before_;
}

void RecorderWatch::send_step(link::Engine& engine) {
    const std::chrono::microseconds now = engine.clock().now();
    if (asked_at_ && left_at_) *asked_at_ += now - *left_at_;
    left_at_.reset();
    if (!asked_at_) {
        asked_at_ = now;
        kept_alive_at_ = now;
        frames_before_ = engine.counters.frames;
    }
    acquisition_.send_step(engine);
    if (now - kept_alive_at_ >= kKeepAlive) {
        kept_alive_at_ = now;
        engine.sendata2(kKeepAliveKey, 0, 1);
    }
    // The poller goes to look after the rest of the drive: meanwhile nothing is asked of the
    // recorder.
    if (engine.state.status_lane != 2) left_at_ = now;
}

void RecorderWatch::look_at(const link::Engine& engine, const link::Payload& payload) {
    const bool segments = engine.state.scopeState == 6;  // these carry no identity
    const bool is_segment = (payload[0] & 0xE0U) == 0;
    if (segments && is_segment) return;
    const link::Identity object = link::reply_key(payload);
    if (object == dictionary::identity_of(scope::kBufferKey) && payload[0] == link::kAbort) {
        buffer_refused_ = true;
        abort_code_ = code_of(payload);
    }
    if (object != dictionary::identity_of(scope::kCommandKey)) return;
    if (payload[0] == link::kAbort) abort_code_ = code_of(payload);
    if (payload[0] == link::kWritten && engine.state.scopeState != 0) start_confirmed_ = true;
    if (payload[0] != link::kAnswer1) return;
    status_ = payload[4];
    if (status_ != 0) start_confirmed_ = true;
    asked_at_.reset();
}

link::Received RecorderWatch::receive_frame(link::Engine& engine, const link::Payload& payload) {
    const std::int32_t state = engine.state.scopeState;
    const std::int16_t index = data_.rawIndex;
    look_at(engine, payload);
    const link::Received received = acquisition_.receive_frame(engine, payload);
    // A repeated segment brings nothing on, so it is no answer.
    if (engine.state.scopeState != state || data_.rawIndex != index) asked_at_.reset();
    return received;
}

}  // namespace servo::cli
