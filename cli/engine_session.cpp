#include "cli/engine_session.h"

namespace servo::cli {

EngineSession::EngineSession(link::Engine& engine, Pump pump)
    : engine_(engine), pump_(std::move(pump)) {
    engine_.add_job(link::JobPlace::kConfiguration, job_);
    engine_.set_link_control(this);
}

EngineSession::~EngineSession() {
    close();
    engine_.set_link_control(nullptr);
}

link::OpenResult EngineSession::open(std::string_view port_text, int baud, std::uint8_t comm_id) {
    const link::OpenResult result = engine_.port().open(port_text, baud);
    if (result != link::OpenResult::kOpened) return result;
    engine_.clear_queues();
    engine_.serial.COMM_ID = comm_id;
    engine_.link_opened();
    engine_.timer().set_interval(link::kTickMilliseconds);
    engine_.timer().set_enabled(true);
    open_ = true;
    return result;
}

void EngineSession::close() {
    if (!open_) return;
    open_ = false;
    engine_.timer().set_enabled(false);
    engine_.link_closed();
    engine_.clear_queues();
    engine_.port().close();
}

void EngineSession::communication() {
    close();
}

std::chrono::microseconds EngineSession::now() const {
    return engine_.clock().now();
}

Outcome EngineSession::run_until(const std::function<bool()>& condition,
                                 std::chrono::milliseconds limit, CtrlC ctrl_c) {
    const std::chrono::microseconds end = now() + limit;
    while (!condition()) {
        if (!open_) return Outcome::kLinkLost;
        if (now() >= end) return Outcome::kNoAnswer;
        if (!pump_() && ctrl_c == CtrlC::kEnds) return Outcome::kInterrupted;
    }
    return Outcome::kDone;
}

Outcome EngineSession::wait(const std::function<bool()>& condition,
                            std::chrono::milliseconds limit) {
    job_.line_was_used();
    const Outcome outcome = run_until(condition, limit);
    // With a limit shorter than the engine's patience, a line without a single frame is no link.
    const bool never_heard = engine_.counters.frames == 0;
    return outcome == Outcome::kNoAnswer && never_heard ? Outcome::kLinkLost : outcome;
}

Reply EngineSession::finish_access(std::chrono::milliseconds limit, CtrlC ctrl_c) {
    const std::uint64_t frames = engine_.counters.frames;
    const Outcome outcome = run_until([this] { return !job_.active(); }, limit, ctrl_c);
    job_.stop();
    if (outcome == Outcome::kDone) return job_.reply();
    Reply reply;
    const bool silent_line = engine_.counters.frames == frames;
    reply.outcome = outcome == Outcome::kNoAnswer && silent_line ? Outcome::kLinkLost : outcome;
    return reply;
}

Reply EngineSession::read(dictionary::Identity key, const std::string& type,
                          std::chrono::milliseconds limit) {
    job_.start_read(key, type);
    return finish_access(limit);
}

Reply EngineSession::write(dictionary::WireKey key, std::int32_t value,
                           std::chrono::milliseconds limit) {
    job_.start_write(key, value, false);
    return finish_access(limit);
}

Reply EngineSession::write_setting(dictionary::WireKey key, std::int32_t value,
                                   std::chrono::milliseconds limit) {
    job_.start_write(key, value, true);
    return finish_access(limit);
}

Reply EngineSession::write_last(dictionary::WireKey key, std::int32_t value,
                                std::chrono::milliseconds limit) {
    job_.start_write(key, value, true);
    return finish_access(limit, CtrlC::kWaits);
}

}  // namespace servo::cli
