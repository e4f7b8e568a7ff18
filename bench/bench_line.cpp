// How much of the line's possible rate the poller keeps against a drive at 38400 baud on a paced
// pseudo-terminal, and what polling costs the processor.
//
// Reference of the rate: the same engine stepped tick by tick against a drive that answers at once.
// What it then gets in a tick is all that the wheel allows, its silent ticks included.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <deque>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "bench/ratio.h"
#include "bench/simulated_line.h"
#include "dictionary/keys.h"
#include "link/engine.h"
#include "link/qt_serial_port.h"

extern char** environ;

namespace {

using namespace servo;
using namespace std::chrono_literals;

constexpr double kTickSeconds = 0.003;

// Live rows of common objects.
class Page final : public link::PollWindow {
  public:
    Page() : PollWindow("Basic") {
        set_visible(true);
        for (const auto& [index, type] : {std::pair{"606100", "int8"},
                                          {"604100", "uint16"},
                                          {"606300", "int32"},
                                          {"606C00", "int32"},
                                          {"607700", "int16"},
                                          {"607A00", "int32"},
                                          {"60FF00", "int32"},
                                          {"607800", "int16"},
                                          {"604000", "uint16"},
                                          {"606000", "int8"},
                                          {"608100", "uint32"},
                                          {"608300", "uint32"},
                                          {"608400", "uint32"},
                                          {"60F400", "int32"},
                                          {"607100", "int16"}})
            rows_.emplace_back(index, type);
    }
    bool custom() const override { return false; }
    int rows() const override { return static_cast<int>(rows_.size()) + 1; }
    link::PollRow row(int row) const override {
        if (row == 0) return {"N", "Index", "Type", "Value"};
        const auto& [index, type] = rows_.at(static_cast<std::size_t>(row - 1));
        return {"1", index, type, "0"};
    }
    void set_value(int, double, int) override {}
    void set_text(int, std::string_view) override { ++refused; }

    int refused = 0;

  private:
    std::vector<std::pair<std::string, std::string>> rows_;
};

// Answers every read before the next tick.
class InstantPort final : public link::Port {
  public:
    link::OpenResult open(std::string_view, int) override { return link::OpenResult::kOpened; }
    void close() override {}
    bool is_open() const override { return true; }
    std::size_t in_buffer_count() override { return in_.size(); }
    std::size_t out_buffer_count() override { return 0; }
    std::size_t read(std::span<std::uint8_t> into) override {
        std::size_t count = 0;
        for (; count < into.size() && !in_.empty(); ++count, in_.pop_front())
            into[count] = in_.front();
        return count;
    }
    void write(std::span<const std::uint8_t> bytes) override {
        link::Payload answer{0x43};
        std::copy(bytes.begin() + 2, bytes.begin() + 5, answer.begin() + 1);
        for (const std::uint8_t byte : link::make_frame(bytes[0], answer))
            in_.push_back(byte);
    }
    void clear_in() override { in_.clear(); }
    void clear_out() override {}

  private:
    std::deque<std::uint8_t> in_;
};

class NoTimer final : public link::Timer {
  public:
    void set_interval(int) override {}
    int interval() const override { return 3; }
    void set_enabled(bool) override {}
    bool enabled() const override { return true; }
};

// Answered objects a second that the wheel allows.
double told_rate() {
    InstantPort port;
    base::SteadyClock clock;
    NoTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Page page;
    engine.add_poll_window(page);
    engine.link_opened();
    for (int i = 0; i < 1000; ++i)
        engine.cTmr_Timer();
    const std::uint64_t before = engine.counters.answers;
    constexpr int kTicks = 60'000;
    for (int i = 0; i < kTicks; ++i)
        engine.cTmr_Timer();
    return static_cast<double>(engine.counters.answers - before) / (kTicks * kTickSeconds);
}

double kept_rate(int turnaround_microseconds) {
    bench::SimulatedLine drive({"--turnaround", QString::number(turnaround_microseconds)});
    link::PortNames names;
    link::QtSerialPort port(names);
    base::SteadyClock clock;
    link::QtTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Page page;
    engine.add_poll_window(page);
    timer.set_interval(3);
    timer.set_tick([&engine] { engine.cTmr_Timer(); });
    if (port.open(names.give(drive.line), 38400) != link::OpenResult::kOpened) {
        std::fprintf(stderr, "no line\n");
        return 0;
    }
    engine.link_opened();
    timer.set_enabled(true);
    bench::let_pass(2s);
    const std::uint64_t before = engine.counters.answers;
    QElapsedTimer watch;
    watch.start();
    bench::let_pass(12s);
    const double seconds = static_cast<double>(watch.nsecsElapsed()) * 1e-9;
    const double rate = static_cast<double>(engine.counters.answers - before) / seconds;
    std::printf("turnaround %d us: %.1f answered objects a second, %d refused\n",
                turnaround_microseconds, rate, page.refused);
    return rate;
}

// Processor seconds of the workstation that polls a page for so long.
double processor_seconds(const std::string& line, const QString& folder, int milliseconds) {
    const std::string walk = (folder + "/polling.walk").toStdString();
    base::write_file(walk, "open Basic\nwait " + std::to_string(milliseconds) + "\nquit\n");
    const std::string program = SERVO_BIN_DIR "/servo-workstation";
    const std::vector<const char*> arguments{program.c_str(), "--connect",  line.c_str(),
                                             "--walk",        walk.c_str(), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, const_cast<char**>(arguments.data()),
                    environ) != 0)
        return -1;
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0) return -1;
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// Part of one core, start-up and end taken out by the difference of two runs.
double processor_use() {
    bench::SimulatedLine drive({"--turnaround", "300"});
    QTemporaryDir folder;
    const double brief = processor_seconds(drive.line, folder.path(), 2'000);
    const double lengthy = processor_seconds(drive.line, folder.path(), 22'000);
    if (brief < 0 || lengthy < 0) return 1;  // a run that failed is no good figure
    return (lengthy - brief) / 20.0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication application(argc, argv);
    bench::Report report;
    const double told = told_rate();
    std::printf("the wheel allows %.1f answered objects a second\n", told);
    report.at_least("line: answered objects, turnaround 0.3 ms", kept_rate(300) / told, 0.95);
    report.at_least("line: answered objects, turnaround 1.5 ms", kept_rate(1500) / told, 0.95);
    report.at_most("line: part of one core while polling", processor_use(), 0.05);
    return report.exit_status();
}
