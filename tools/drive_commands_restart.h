// Whether a drive that was told to restart has come back: it is silent for a while, then it answers
// again. Nothing is asked of it for that; the poller's traffic tells.
#pragma once

#include <chrono>
#include <cstdint>

namespace servo::tools {

enum class RestartPhase : std::uint8_t {
    kNone,
    kSent,     // still within the time in which a drive falls silent
    kSilent,   // it does not answer
    kBack,     // it was silent and answers again
    kNoPause,  // it has gone on answering all the time
    kLost,     // the link was closed before it came back
};

class RestartWatch {
  public:
    // A gap between two answers that no drive at work makes.
    static constexpr std::chrono::milliseconds kSilence{300};
    // A drive that has not fallen silent by then does not restart.
    static constexpr std::chrono::milliseconds kPatience{3000};

    // `frames` counts what has come from the drive.
    void begin(std::chrono::microseconds now, std::uint64_t frames);
    // To be called a few times within kSilence. Returns whether the phase has changed.
    bool look(std::chrono::microseconds now, std::uint64_t frames);
    void link_closed();
    void forget() { phase_ = RestartPhase::kNone; }

    RestartPhase phase() const { return phase_; }
    // Until the drive was heard again, once it is back.
    std::chrono::milliseconds duration() const { return duration_; }
    // There is still something to come.
    bool watching() const {
        return phase_ == RestartPhase::kSent || phase_ == RestartPhase::kSilent;
    }

  private:
    RestartPhase phase_ = RestartPhase::kNone;
    std::chrono::microseconds began_{0};
    std::chrono::microseconds heard_{0};
    std::uint64_t frames_ = 0;
    std::chrono::milliseconds duration_{0};
};

}  // namespace servo::tools
