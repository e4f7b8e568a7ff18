// What a busy oscilloscope takes from the line: four traces of 8,192 random samples, moved along
// and drawn anew 20 times a second beside the poller, at 38400 baud on a paced pseudo-terminal. The
// rate of answered objects is compared with that of the same window standing still, the two taking
// turns.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "bench/ratio.h"
#include "bench/simulated_line.h"
#include "bench/temporary_folder.h"
#include "link/engine.h"
#include "link/qt_serial_port.h"
#include "scope/scope_window.h"

namespace {

using namespace servo;
using namespace std::chrono_literals;

constexpr int kTurns = 4;
constexpr auto kTurn = 6s;
constexpr auto kRepaint = 50ms;
constexpr double kTickMilliseconds = 3.0;

// Rows that are always live.
class Page final : public link::PollWindow {
  public:
    Page() : PollWindow("Basic") { set_visible(true); }
    bool custom() const override { return false; }
    int rows() const override { return static_cast<int>(kIndexes.size()) + 1; }
    link::PollRow row(int row) const override {
        if (row == 0) return {"N", "Index", "Type", "Value"};
        return {"1", kIndexes.at(static_cast<std::size_t>(row - 1)), "int32", "0"};
    }
    void set_value(int, double, int) override {}
    void set_text(int, std::string_view) override {}

  private:
    static constexpr std::array<std::string_view, 6> kIndexes{"606300", "606C00", "607A00",
                                                              "60FF00", "608100", "608300"};
};

class NoNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

// Four channels of noise over their whole range.
std::string recording() {
    std::mt19937 chance(7);
    std::uniform_int_distribution<int> noise(-30'000, 30'000);
    std::string text = "1,8192\r\n10000,100,1,1,1\r\n";
    for (const int key : {0x607800, 0x60F60C, 0x607800, 0x60F60C})
        text += "object," + std::to_string(key) + "\r\n";
    for (std::size_t i = 0; i < scope::kMaxSamples; ++i) {
        for (int channel = 0; channel < scope::kCurves; ++channel)
            text += (channel == 0 ? "" : ",") + std::to_string(noise(chance));
        text += "\r\n";
    }
    return text;
}

// Lateness of ticks behind their 3 ms, in milliseconds.
class TickWatch {
  public:
    void tick() {
        const double now = static_cast<double>(watch_.nsecsElapsed()) * 1e-6;
        if (listening && last_ > 0) late_.push_back(std::max(0.0, now - last_ - kTickMilliseconds));
        last_ = now;
    }
    double percentile99() {
        if (late_.empty()) return 1e9;
        const auto at = late_.begin() + static_cast<std::ptrdiff_t>(late_.size() * 99 / 100);
        std::nth_element(late_.begin(), at, late_.end());
        return *at;
    }
    TickWatch() { watch_.start(); }

    bool listening = false;

  private:
    QElapsedTimer watch_;
    double last_ = 0;
    std::vector<double> late_;
};

// Counts what is really painted of the plot.
class PaintCount final : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
    int paints = 0;
};

struct Rates {
    double still = 0;
    double busy = 0;
    double repaints = 0;  // a second
};

class Bench {
  public:
    bool open() {
        const std::filesystem::path file = folder_.path() / "noise.scope";
        if (!base::write_file(file, recording())) return false;
        if (!dictionary_.open_dat(SERVO_BIN_DIR)) return false;
        engine_.set_scope(&scope_.acquisition());
        engine_.add_poll_window(page_);
        scope_.load();
        if (scope_.Command13_Click(file) != scope::Imported::kDone) return false;
        scope_.set_visible(true);
        window_.resize(1240, 720);
        window_.show();
        timer_.set_interval(3);
        timer_.set_tick([this] {
            watch.tick();
            engine_.cTmr_Timer();
        });
        if (port_.open(names_.give(drive_.line), 38400) != link::OpenResult::kOpened) return false;
        engine_.link_opened();
        timer_.set_enabled(true);
        scope_.mouse().zoom_in(0.5);
        bench::let_pass(2s);
        return true;
    }

    Rates measure() {
        Rates rates;
        QTimer repaint;
        repaint.setTimerType(Qt::PreciseTimer);
        int moves = 0;
        PaintCount count;
        window_.findChild<QWidget*>(QStringLiteral("Picture1"))->installEventFilter(&count);
        QObject::connect(&repaint, &QTimer::timeout, &window_, [this, &moves] {
            scope_.mouse().shift(moves++ % 2 == 0 ? 16 : -16);
            window_.refresh_now();
        });
        for (int turn = 0; turn < kTurns; ++turn) {
            rates.still += rate() / kTurns;
            watch.listening = true;
            repaint.start(kRepaint);
            rates.busy += rate() / kTurns;
            repaint.stop();
            watch.listening = false;
        }
        rates.repaints = count.paints / (kTurns * std::chrono::duration<double>(kTurn).count());
        return rates;
    }

    TickWatch watch;

  private:
    double rate() {
        const std::uint64_t before = engine_.counters.answers;
        QElapsedTimer elapsed;
        elapsed.start();
        bench::let_pass(kTurn);
        const double seconds = static_cast<double>(elapsed.nsecsElapsed()) * 1e-9;
        return static_cast<double>(engine_.counters.answers - before) / seconds;
    }

    bench::TemporaryFolder folder_;
    bench::SimulatedLine drive_;
    dictionary::Store dictionary_;
    link::PortNames names_;
    link::QtSerialPort port_{names_};
    base::SteadyClock clock_;
    link::QtTimer timer_;
    link::DriveValues values_;
    link::Engine engine_{port_, clock_, timer_, values_};
    Page page_;
    NoNotice notice_;
    base::Language language_ = base::Language::kEnglish;
    scope::Oscilloscope scope_{{.engine = engine_,
                                .dictionary = dictionary_,
                                .notice = notice_,
                                .language = language_,
                                .link_open = [] { return true; }}};
    scope::ScopeWindow window_{scope_, {}};
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Bench bench;
    if (!bench.open()) {
        std::fprintf(stderr, "no line, no data or no recording\n");
        return 1;
    }
    bench::Report report;
    const Rates rates = bench.measure();
    std::printf("%.1f objects a second beside a still window, %.1f beside %.1f repaints a second\n",
                rates.still, rates.busy, rates.repaints);
    report.at_least("scope: repaints a second", rates.repaints, 19.0);
    report.at_least("scope: objects a second while it repaints", rates.busy / rates.still, 0.98);
    report.at_most("scope: ticks late, 99th percentile in ms", bench.watch.percentile99(), 10.0);
    return report.exit_status();
}
