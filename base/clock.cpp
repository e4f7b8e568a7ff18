#include "base/clock.h"

#include <thread>

namespace servo::base {

std::chrono::microseconds SteadyClock::now() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void SteadyClock::sleep(std::chrono::milliseconds pause) {
    std::this_thread::sleep_for(pause);
}

}  // namespace servo::base
