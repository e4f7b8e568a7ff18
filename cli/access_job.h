// One object access at a time on the engine: asks, waits for the drive's word, and lets the poller
// go on. A read is asked again while the drive is silent; a write goes out once, since a repeated
// write need not be harmless, unless the caller knows that it is.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "cli/link_session.h"
#include "link/engine.h"
#include "link/job.h"

namespace servo::cli {

// An object that stays silent must not be taken for a dead line: meanwhile the fault word is read,
// which every drive answers, so the engine's count of misses tells the two apart.
inline constexpr std::chrono::microseconds kKeepAlive = std::chrono::milliseconds(50);
inline constexpr dictionary::WireKey kKeepAliveKey = 0x26010002;

class AccessJob final : public link::Job {
  public:
    void start_read(dictionary::Identity key, const std::string& type);
    void start_write(dictionary::WireKey key, std::int32_t value, bool again);
    // Gives up waiting; a late answer is nobody's.
    void stop() { active_ = false; }

    // The status lanes have used the line since the last access: their late answers are flushed
    // before the next one.
    void line_was_used() { warm_up_step_ = 0; }

    const Reply& reply() const { return reply_; }

    bool active() const override { return active_; }
    bool warm_up(link::Engine& engine) override { return engine.spend_warm_up(warm_up_step_); }
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_closed(link::Engine& engine) override;

  private:
    void start(dictionary::WireKey key);
    void ask(link::Engine& engine);
    link::Received take_segment(link::Engine& engine, const link::Payload& payload);
    link::Received finish(link::Engine& engine);

    bool active_ = false;
    bool write_ = false;
    bool again_ = false;  // asked again while the drive is silent
    bool sent_ = false;
    bool answered_string_ = false;  // 0x41 has come: segments follow
    std::uint8_t warm_up_step_ = 0;
    dictionary::WireKey key_ = 0;
    std::int32_t value_ = 0;
    int decoder_ = 0;  // size code of the value; 0 for a string
    std::chrono::microseconds asked_at_{0};
    std::chrono::microseconds kept_alive_at_{0};
    Reply reply_;
};

}  // namespace servo::cli
