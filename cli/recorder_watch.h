// Stands between the engine and the oscilloscope's acquisition, and keeps what a window would show
// at most as a standstill: why the drive refuses, whether it has confirmed the start, and for how
// long it has not answered.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "link/engine.h"
#include "scope/acquisition.h"

namespace servo::cli {

class RecorderWatch final : public link::ScopeLink {
  public:
    RecorderWatch(scope::Acquisition& acquisition, const scope::ScopeData& data)
        : acquisition_(acquisition), data_(data) {}

    // Forgets the last run. Until then, and again after end(), the poller keeps off the recorder.
    void begin();
    void end() { running_ = false; }

    // The drive has acknowledged the start, or has been seen at work. A start that was lost on its
    // way would end in the recording before being read once more.
    bool start_confirmed() const { return start_confirmed_; }
    // Why the drive refused the start or the buffer.
    std::optional<std::uint32_t> abort_code() const { return abort_code_; }
    // The buffer was refused: the acquisition itself would go on asking.
    bool buffer_refused() const { return buffer_refused_; }
    // 0, 1, 2, 3 as the drive reported last.
    std::uint8_t status() const { return status_; }
    // Since the first request that has not been answered, while the recorder was asked.
    std::chrono::microseconds silence(std::chrono::microseconds now) const;
    // Nothing at all has come since then.
    bool line_silent(const link::Engine& engine) const;

    // --- ScopeLink. The settings are this program's own: the poller must not read them back, since
    // the rules by which it sorts them into channels can't tell every pair of a narrow and a wide
    // object.
    bool window_visible() const override { return running_; }
    bool settings_known() const override { return true; }
    bool acquiring() const override { return acquisition_.acquiring(); }
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_timed_out(link::Engine& engine) override { acquisition_.link_timed_out(engine); }
    void link_closed(link::Engine& engine) override { acquisition_.link_closed(engine); }

  private:
    void look_at(const link::Engine& engine, const link::Payload& payload);

    scope::Acquisition& acquisition_;
    const scope::ScopeData& data_;
    bool running_ = false;
    bool start_confirmed_ = false;
    bool buffer_refused_ = false;
    std::uint8_t status_ = 0;
    std::optional<std::uint32_t> abort_code_;
    std::optional<std::chrono::microseconds> asked_at_;
    std::optional<std::chrono::microseconds> left_at_;  // the poller is elsewhere since then
    std::chrono::microseconds kept_alive_at_{0};
    std::uint64_t frames_before_ = 0;  // when that request was sent
};

}  // namespace servo::cli
