// How fast the recorder's full buffer of 8,192 bytes comes over a line of 38400 baud, against the
// rate that the pace of the segment requests allows.
//
// That rate, on paper:
//   - Ticks come every 3 ms and are send and receive ticks in turn, so there is a send tick every
//     6 ms. Of four of them two ask for a segment: the pace counts 0 (asks), 1, 2 (silent), 3
//     (asks), 0 (asks) ... The two are neighbours, 6 ms apart, and 18 ms pass until the next two.
//   - A frame has ten bytes of ten bits, 2.604 ms. A request and its answer take 5.208 ms and the
//     drive's turnaround. The receive tick comes 3 ms behind the request and waits for 2 ms at the
//     most, so it never sees the answer. At the next send tick the answer may have arrived, but it
//     has not been taken: the second request of the two still carries the toggle of the first, and
//     what it fetches is the same segment once more.
//   - So one of the two fetches a new segment: 7 bytes in 24 ms, 291.7 bytes a second, 28.1 s for a
//     full buffer.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "bench/ratio.h"
#include "scope/acquisition.h"
#include "scope/channel_lists.h"
#include "support/sim_bench.h"
#include "support/virtual_line.h"
#include "support/virtual_time.h"

#ifdef SERVO_BENCH_PTY
#include <QCoreApplication>
#include <QElapsedTimer>

#include "bench/simulated_line.h"
#include "link/qt_serial_port.h"
#endif

namespace {

using namespace servo;
using namespace std::chrono_literals;

constexpr double kToldRate = 7.0 / 0.024;  // bytes a second
constexpr int kRows = 1024;                // of four channels of 16 bits: the whole buffer
constexpr double kLimit = 0.80;

class Silent final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

// Four channels of 16 bits, recorded once.
struct Scope {
    Scope(link::Engine& engine, const dictionary::Store& dictionary, base::Notice& notice)
        : acquisition(
              {.engine = engine,
               .dictionary = dictionary,
               .notice = notice,
               .language = language,
               .link_open = [] { return true; }},
              data,
              {.changed = [] {}, .Movingdata = [this] { done = true; }, .DrawPicture = [] {}}) {
        for (scope::ScopeChannel& channel : data.channels)
            scope::offer_first_objects(channel, dictionary, language);
        data.Check5 = true;
        engine.set_scope(&acquisition);
        acquisition.set_visible(true);
    }

    // `pass` lets the line work for so long.
    void set_up(const std::function<void(std::chrono::milliseconds)>& pass) {
        for (int index = 0; index < scope::kCurves; ++index) {
            acquisition.pick_object(index, 1 + index % 2);  // of 16 bits both
            acquisition.click_enable(index);
            pass(50ms);
        }
        data.Text1 = "1";
        acquisition.enter_text1();
        pass(50ms);
        data.Text3 = std::to_string(kRows);
        acquisition.enter_text3();
        pass(50ms);
        acquisition.Command6_Click();
    }

    bool whole() const { return done && data.rawLength == static_cast<int>(scope::kMaxBytes); }

    base::Language language = base::Language::kEnglish;
    scope::ScopeData data;
    bool done = false;
    scope::Acquisition acquisition;
};

// Bytes a second of an upload that took so long.
double rate(const Scope& scope, double seconds, const char* name) {
    if (!scope.whole()) {
        std::fprintf(stderr, "%s: %d bytes came\n", name, scope.data.rawLength);
        return 0;
    }
    const double bytes = scope.data.rawLength / seconds;
    std::printf("%s: %d bytes in %.2f s, %.1f bytes a second; the pace allows %.1f\n", name,
                scope.data.rawLength, seconds, bytes, kToldRate);
    return bytes;
}

// The same program in virtual time: what is left when no tick is ever late.
double virtual_rate(const dictionary::Store& dictionary) {
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
    Scope scope(engine, dictionary, notice);
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
    const auto never = [] { return false; };
    run_until(never, 3s);
    scope.set_up([&](std::chrono::milliseconds pause) { run_until(never, pause); });
    run_until([&] { return engine.state.scopeState == 6; }, 60s);
    const auto begin = time.now();
    run_until([&] { return scope.done; }, 120s);
    const std::chrono::duration<double> taken = time.now() - begin;
    return rate(scope, taken.count(), "virtual line");
}

#ifdef SERVO_BENCH_PTY

double pty_rate(const dictionary::Store& dictionary) {
    bench::SimulatedLine drive;
    link::PortNames names;
    link::QtSerialPort port(names);
    base::SteadyClock clock;
    link::QtTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Silent notice;
    Scope scope(engine, dictionary, notice);
    QElapsedTimer watch;
    double seconds = 0;
    QEventLoop until_done;
    timer.set_interval(3);
    timer.set_tick([&] {
        engine.cTmr_Timer();
        if (engine.state.scopeState == 6 && !watch.isValid()) watch.start();
        if (!scope.done) return;
        seconds = static_cast<double>(watch.nsecsElapsed()) * 1e-9;
        timer.set_enabled(false);
        until_done.quit();
    });
    if (port.open(names.give(drive.line), 38400) != link::OpenResult::kOpened) {
        std::fprintf(stderr, "no line\n");
        return 0;
    }
    engine.link_opened();
    timer.set_enabled(true);
    bench::let_pass(3s);
    scope.set_up(bench::let_pass);
    QTimer::singleShot(120s, &until_done, &QEventLoop::quit);
    until_done.exec();
    return rate(scope, seconds, "pseudo-terminal");
}

#endif

}  // namespace

int main(int argc, char** argv) {
    dictionary::Store dictionary;
    if (!dictionary.open_dat(SERVO_BIN_DIR)) {
        std::fprintf(stderr, "no dictionary\n");
        return 1;
    }
    bench::Report report;
    report.at_least("scope: upload on the virtual line", virtual_rate(dictionary) / kToldRate,
                    kLimit);
#ifdef SERVO_BENCH_PTY
    QCoreApplication application(argc, argv);
    report.at_least("scope: upload on a pseudo-terminal", pty_rate(dictionary) / kToldRate, kLimit);
#else
    static_cast<void>(argc);
    static_cast<void>(argv);
#endif
    return report.exit_status();
}
