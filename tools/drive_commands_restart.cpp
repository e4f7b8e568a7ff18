#include "tools/drive_commands_restart.h"

namespace servo::tools {

void RestartWatch::begin(std::chrono::microseconds now, std::uint64_t frames) {
    phase_ = RestartPhase::kSent;
    began_ = now;
    heard_ = now;
    frames_ = frames;
}

bool RestartWatch::look(std::chrono::microseconds now, std::uint64_t frames) {
    if (!watching()) return false;
    const RestartPhase before = phase_;
    if (frames == frames_) {
        if (now - heard_ >= kSilence) phase_ = RestartPhase::kSilent;
        return phase_ != before;
    }
    frames_ = frames;
    heard_ = now;
    if (phase_ == RestartPhase::kSilent) {
        phase_ = RestartPhase::kBack;
        duration_ = std::chrono::duration_cast<std::chrono::milliseconds>(now - began_);
    } else if (now - began_ >= kPatience) {
        phase_ = RestartPhase::kNoPause;
    }
    return phase_ != before;
}

void RestartWatch::link_closed() {
    if (watching()) phase_ = RestartPhase::kLost;
}

}  // namespace servo::tools
