// Whatever the drive says to a scan, in whatever step, and whatever the operator does in between:
// steps, entries and blocks stay in their bounds, and a scan can always be begun anew.
//
// An input is a row of nine bytes each: what happens, then a frame's payload.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "silent_surroundings.h"
#include "tuner/scan.h"

using namespace servo;
using namespace servo::fuzz;

namespace {

constexpr std::size_t kRow = 9;

struct Watcher final : tuner::ScanObserver {
    void scan_moved() override {}
    void scan_ended(bool finished) override {
        ++ended;
        whole = finished;
    }
    int ended = 0;
    bool whole = false;
};

struct Program {
    Program() { engine.add_job(link::JobPlace::kScan, scan); }

    void check() const {
        const link::EngineState& state = engine.state;
        require(state.scanStep <= 15);
        require(scan.active() == (state.scanRequested == link::kTrue));
        require(scan.progress() >= 0 && scan.progress() <= 1000);
        require(!scan.cancelling() || scan.active());
        require(data.scanMode <= 2 && data.scanIndex >= 0);
        require(data.scanIndex < std::max(1, 2 * scan.points()));
        require(data.readBase == (data.scanMode == 1 ? 1024 : 0));
        require(data.readOffset == 2 * data.scanIndex);
        if (!scan.active()) require(state.scanStep == 0);
    }
    // The payload as it stands; or, with the upper bit, as the answer to what was asked last, so
    // that an input comes further than the first steps.
    void hear(std::uint8_t action, link::Payload payload) {
        if ((action & 0x80U) != 0) {
            constexpr std::array<std::uint8_t, 4> kAnswers{0x60, 0x4F, 0x43, 0x4B};
            payload[0] = kAnswers.at((action >> 4) & 3U);
            std::copy_n(port.asked.begin() + 1, 3, payload.begin() + 1);
        }
        if (scan.active()) scan.receive_frame(engine, payload);
    }
    void act(std::uint8_t action) {
        switch (action & 0x0FU) {
            case 1:
                scan.cancel();
                break;
            case 2:
                engine.link_closed();
                require(!scan.active());
                break;
            case 3:
                engine.link_opened();
                require(!scan.active());
                break;
            case 4:
                scan.start();
                break;
            case 5:
                data.Text3 = "10";
                break;
            default:  // any other: a send tick, warm-up ticks included
                if (scan.active() && !scan.warm_up(engine)) scan.send_step(engine);
                break;
        }
    }

    OpenPort port;
    NoTime clock;
    NoTimer timer;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    Silent notice;
    base::Language language = base::Language::kEnglish;
    tuner::TunerData data;
    tuner::TunerServices services{
        .engine = engine, .notice = notice, .language = language, .link_open = [] { return true; }};
    Watcher watcher;
    tuner::FrequencyScan scan{data, services, watcher};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto program = std::make_unique<Program>();
    program->data.Text3 = "7";  // two points, so that an input reaches the end
    require(program->scan.start());
    for (std::size_t at = 0; at + kRow <= size; at += kRow) {
        program->act(bytes[at]);
        program->check();
        link::Payload payload{};
        std::copy_n(bytes + at + 1, payload.size(), payload.begin());
        program->hear(bytes[at], payload);
        program->check();
    }
    program->engine.link_closed();
    program->check();
    require(program->scan.start());
    program->check();
    return 0;
}
