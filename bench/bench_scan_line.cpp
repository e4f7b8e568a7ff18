// How long the widest scan, 4 to 1000 Hz in steps of 3, takes over a line of 38400 baud, and how
// fast its data come, against the rate that the job's own cycle allows.
//
// That rate, on paper:
//   - Ticks come every 3 ms and are send and receive ticks in turn. A request and its answer are
//     two frames of ten bytes of ten bits, 5.208 ms, and the drive's turnaround. The receive tick
//     comes 3 ms behind the request and waits for 2 ms at the most, so it never sees the answer;
//     the same request leaves once more, and the next receive tick takes the answer to the first.
//     So an exchange takes two cycles of 6 ms, and the copy of its answer is dropped.
//   - An entry takes two exchanges, the writing of an address and the reading of two words: 24 ms.
//     333 points are 999 entries, 24.0 s.
//
// What the drive takes for its measuring is its own affair and is told beside it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string_view>

#include "bench/ratio.h"
#include "support/sim_bench.h"
#include "support/virtual_line.h"
#include "support/virtual_time.h"
#include "tuner/scan.h"

namespace {

using namespace servo;
using namespace std::chrono_literals;

constexpr double kSecondsOfAnEntry = 0.024;
constexpr double kLimit = 0.95;

class Silent final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

struct Watcher final : tuner::ScanObserver {
    void scan_moved() override {}
    void scan_ended(bool whole) override { finished = whole; }
    bool finished = false;
};

double seconds(std::chrono::nanoseconds duration) {
    return std::chrono::duration<double>(duration).count();
}

// Of the told rate; 0 for a scan that is not whole.
double reading_rate(const dictionary::Store& dictionary) {
    test::VirtualTime time;
    test::VirtualLine line(time);
    test::VirtualPort port(line);
    test::VirtualClock clock(time);
    test::VirtualTimer timer(time);
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    sim::Options options;
    options.data = SERVO_BIN_DIR;
    test::SimDriveOnLine drive(time, line, dictionary, options);
    Silent notice;
    Watcher watcher;
    const base::Language language = base::Language::kEnglish;
    const auto data = std::make_unique<tuner::TunerData>();
    const tuner::TunerServices services{
        .engine = engine, .notice = notice, .language = language, .link_open = [] { return true; }};
    tuner::FrequencyScan scan(*data, services, watcher);
    engine.add_job(link::JobPlace::kScan, scan);
    timer.tick = [&] { engine.cTmr_Timer(); };
    const auto run_until = [&](const std::function<bool()>& done, std::chrono::nanoseconds limit) {
        const auto end = time.now() + limit;
        while (!done() && *timer.due() <= end) {
            time.advance_to(std::max(*timer.due(), time.now()));
            timer.fire();
        }
    };
    port.open("COM1", 38400);
    engine.link_opened();
    timer.set_enabled(true);
    run_until([] { return false; }, 1s);

    data->Text3 = "1000";
    const auto begun = time.now();
    if (!scan.start()) return 0;
    run_until([&] { return scan.measuring(); }, 10s);
    const auto measuring = time.now();
    run_until([&] { return !scan.measuring(); }, 600s);
    const auto reading = time.now();
    run_until([&] { return !scan.active(); }, 600s);
    const auto ended = time.now();
    if (!watcher.finished) return 0;

    const int entries = 3 * data->buffers.pointCount;
    const double told = entries * kSecondsOfAnEntry;
    const double taken = seconds(ended - reading);
    std::printf(
        "%d points: set-up %.2f s, the drive measures %.1f s, %d entries in %.2f s (%.2f s "
        "on paper), %.1f s in all\n",
        data->buffers.pointCount, seconds(measuring - begun), seconds(reading - measuring), entries,
        taken, told, seconds(ended - begun));
    return told / taken;
}

}  // namespace

int main() {
    dictionary::Store dictionary;
    if (!dictionary.open_dat(SERVO_BIN_DIR)) {
        std::fprintf(stderr, "no dictionary\n");
        return 1;
    }
    bench::Report report;
    report.at_least("tuner: reading of a scan on the virtual line", reading_rate(dictionary),
                    kLimit);
    return report.exit_status();
}
