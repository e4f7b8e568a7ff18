#include "support/virtual_bench.h"

#include <algorithm>

namespace servo::test {

VirtualBench::VirtualBench() : communication(engine, port, directory, notice, folder.path()) {
    std::filesystem::create_directory(folder / "sys");
    engine.set_link_control(&communication);
    timer.tick = [this] { engine.cTmr_Timer(); };
    communication.load(base::Language::kEnglish);
}

void VirtualBench::open_link() {
    if (communication.state().Combo1_index < 0) communication.pick_port(0);
    communication.Command1_Click();
}

// One tick, when one is due until `end`. Otherwise it is `end`.
bool VirtualBench::step(VirtualTime::Duration end) {
    const auto due = timer.due();
    if (!due || *due > end) {
        time.advance_to(std::max(end, time.now()));
        return false;
    }
    time.advance_to(std::max(*due, time.now()));
    if (timer.due() == due) timer.fire();
    return true;
}

void VirtualBench::run_for(std::chrono::microseconds duration) {
    const VirtualTime::Duration end = time.now() + duration;
    while (step(end)) {
    }
}

bool VirtualBench::run_until(const std::function<bool()>& done, std::chrono::microseconds limit) {
    const VirtualTime::Duration end = time.now() + limit;
    while (!done()) {
        if (!step(end)) return done();
    }
    return true;
}

void VirtualBench::run_ticks(int count) {
    while (count-- > 0 && timer.due())
        step(std::max(*timer.due(), time.now()));
}

}  // namespace servo::test
