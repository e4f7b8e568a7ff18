#include "support/sim_bench.h"

#include <algorithm>
#include <utility>

namespace servo::test {

SimDriveOnLine::SimDriveOnLine(VirtualTime& time, VirtualLine& line, const dictionary::Store& store,
                               sim::Options options)
    : time_(time), line_(line), drive_(store, std::move(options)) {
    line_.to_drive.deliver = [this](std::uint8_t byte) { receive(byte); };
    settle();
}

std::chrono::microseconds SimDriveOnLine::now() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(time_.now());
}

sim::Drive& SimDriveOnLine::drive() {
    settle();
    return drive_;
}

void SimDriveOnLine::receive(std::uint8_t byte) {
    drive_.receive({&byte, 1}, now());
    settle();
}

// Lets the drive do what is due, puts its output on the line at the told times, and comes back at
// its next event. Only the newest appointment counts.
void SimDriveOnLine::settle() {
    drive_.advance(now());
    for (const sim::Transmission& output : drive_.take_output()) {
        const VirtualTime::Duration at = std::max<VirtualTime::Duration>(output.at, time_.now());
        time_.at(at, [this, bytes = output.bytes] { line_.to_pc.send(bytes); });
    }
    const auto next = drive_.next_event();
    const std::uint64_t generation = ++generation_;
    if (!next) return;
    // The drive counts whole microseconds; the first of them that is not before its event.
    const VirtualTime::Duration at =
        std::max<VirtualTime::Duration>(*next, time_.now() + std::chrono::microseconds(1));
    time_.at(at, [this, generation] {
        if (generation == generation_) settle();
    });
}

}  // namespace servo::test
