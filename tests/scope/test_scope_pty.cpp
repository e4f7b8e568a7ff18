// The oscilloscope over a real pseudo-terminal, beside the simulated drive as a program of its own:
// continuous recordings on a line that corrupts frames.
//
// Two constants are recorded. They get other values before each recording, and a row of six bytes
// against segments of seven shifts what follows a part that is lost or taken twice, so every sample
// tells whether it is right. What cannot be told from a true frame is known from the drive: it says
// when one has left with wrong bytes and a right checksum.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/file.h"
#include "base/temp_folder.h"
#include "cli/process.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/qt_serial_port.h"
#include "scope/oscilloscope.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // NOLINT(bugprone-reserved-*)
// Freed memory is otherwise kept back, to find its use, and would look like growth.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}
#endif

namespace servo::scope {
namespace {

constexpr int kSamples = 8;

constexpr link::WireKey kPosition = 0x607A0004;
constexpr link::WireKey kWindowTime = 0x60660002;

// Different bytes in all places, other ones for each recording.
std::int32_t position_of(int recording) {
    return static_cast<std::int32_t>(0x10325476U + static_cast<unsigned>(recording) * 0x01030509U);
}
std::int32_t window_time_of(int recording) {
    return 256 + recording * 47 % 9000;
}

long resident_kilobytes(const std::string& process) {
    std::ifstream file("/proc/" + process + "/statm");
    long size = 0;
    long resident = -1;
    file >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

// Bytes that are allocated; 0 where nobody counts them.
std::size_t heap_bytes() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return 0;
#endif
}

// Its frames go to a file: kept here, they would look like growth.
constexpr const char* kScript =
    R"(export ASAN_OPTIONS=quarantine_size_mb=1:detect_leaks=0; exec "$@" > "$0")";

class DriveProcess {
  public:
    explicit DriveProcess(const std::string& corrupted)
        : process_({"/bin/sh", "-c", kScript, log().string(),
                    std::string(SERVO_BIN_DIR) + "/drive-sim", "--print-frames", "--link", line(),
                    "--fault", "corrupt:" + corrupted}) {}

    std::string line() const { return (folder_ / "line").string(); }
    bool ready() const { return std::filesystem::exists(line()); }
    long kilobytes() const { return resident_kilobytes(std::to_string(process_.pid())); }

    struct Frames {
        int sent = 0;
        int broken = 0;  // the checksum shows it
        int unseen = 0;  // it does not
    };
    Frames frames() const {
        Frames frames;
        const std::string text = base::read_file(log()).value_or("");
        base::LineReader reader(text);
        while (const auto line = reader.next()) {
            const std::size_t mark = line->find_first_of("<>!");
            if (mark == std::string_view::npos) continue;
            if ((*line)[mark] == '!') ++frames.unseen;
            if ((*line)[mark] != '>') continue;
            ++frames.sent;
            unsigned long sum = 0;
            for (std::size_t at = mark + 2; at + 2 <= line->size(); at += 3)
                sum += std::stoul(std::string(line->substr(at, 2)), nullptr, 16);
            if (sum % 256 != 0) ++frames.broken;
        }
        return frames;
    }

  private:
    std::filesystem::path log() const { return folder_ / "frames"; }

    TempFolder folder_;
    test::Process process_;
};

class Silent final : public base::Notice {
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

// What a window of the workstation has around it, without the window.
class Bench final : private ScopeObserver {
  public:
    explicit Bench(const std::string& corrupted) : drive(corrupted) {
        EXPECT_TRUE(store_.open_dat(SERVO_BIN_DIR));
        EXPECT_TRUE(until([this] { return drive.ready(); }));
        const std::string port_text = names_.give(drive.line());
        EXPECT_EQ(port_.open(port_text, 38400), link::OpenResult::kOpened);
        engine.link_opened();
        engine.set_scope(&scope.acquisition());
        scope.load();
        scope.set_observer(this);
        timer_.set_enabled(true);
    }
    ~Bench() override {
        timer_.set_enabled(false);
        engine.set_scope(nullptr);
    }

    // Turns the event loop; every few milliseconds a tick comes.
    bool until(const std::function<bool()>& condition) {
        QElapsedTimer elapsed;
        elapsed.start();
        QTimer waker;  // ticks wake it too, once the link is open
        waker.start(10);
        while (!condition()) {
            if (elapsed.elapsed() > patience) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    // Sets the recorder up behind the screen's back, as the dictionary browser does, and lets the
    // refresh bring it to the screen.
    bool set_up() {
        const std::vector<std::pair<link::WireKey, std::int32_t>> settings{
            {0x23000504, 0x607A0020}, {0x23000204, 0x60660010}, {kPeriodKey, 2},
            {kCountKey, kSamples},    {kOffsetKey, 0},          {kTriggerKey, 0}};
        for (const auto& [key, value] : settings)
            engine.sendata2(key, value, 0);
        prepare(0);
        scope.set_visible(true);
        return until([this] {
            const ScopeData& data = scope.data();
            return data.channels[0].picked_type() == "int32" && data.channels[0].enable &&
                   data.channels[1].picked_type() == "uint16" && data.channels[1].enable &&
                   data.Text3 == std::to_string(kSamples);
        });
    }

    void prepare(int recording) {
        engine.sendata2(kPosition, position_of(recording), 0);
        engine.sendata2(kWindowTime, window_time_of(recording), 0);
    }

    // False: some sample is not what the drive held.
    bool right(int recording) const {
        const ScopeData& data = scope.data();
        const auto all = [](const ScopeChannel& channel, std::int32_t value) {
            return channel.sampleTotal == kSamples &&
                   std::all_of(channel.samples.begin(), channel.samples.begin() + kSamples,
                               [value](std::int32_t sample) { return sample == value; });
        };
        return all(data.channels[0], position_of(recording)) &&
               all(data.channels[1], window_time_of(recording));
    }

    DriveProcess drive;
    int patience = 30'000;  // ms for one recording, on a loaded machine

  private:
    void controls_changed() override {}
    void cursors_changed() override {}
    void plot_changed() override {
        if (on_recording) on_recording();
    }

    dictionary::Store store_;
    Silent notice_;
    base::Language language_ = base::Language::kEnglish;
    base::SteadyClock clock_;
    link::PortNames names_;
    link::QtSerialPort port_{names_};
    link::QtTimer timer_{[this] { engine.cTmr_Timer(); }};
    link::DriveValues values_;

  public:
    link::Engine engine{port_, clock_, timer_, values_};
    Oscilloscope scope{{engine, store_, notice_, language_, [this] { return port_.is_open(); }}};
    // The recording is decoded; the next one starts when this comes back.
    std::function<void()> on_recording;
};

struct Figures {
    long kilobytes = 0;
    long drive_kilobytes = 0;
    std::size_t heap = 0;
};

// Runs one recording after the other and looks at each.
class Series {
  public:
    Series(Bench& bench, int count) : bench_(bench), count_(count) {
        bench_.on_recording = [this] { recorded(); };
    }
    ~Series() { bench_.on_recording = nullptr; }
    Series(const Series&) = delete;
    Series& operator=(const Series&) = delete;

    // Ends early after so many wrong ones. False when one does not come to its end.
    bool run(std::size_t wrong_ones) {
        bench_.scope.Command6_Click();
        QElapsedTimer total;
        total.start();
        while (done_ < count_ && wrong.size() < wrong_ones) {
            const int before = done_;
            QElapsedTimer one;
            one.start();
            if (!bench_.until([&] { return done_ > before; })) return false;
            slowest = std::max<long>(slowest, static_cast<long>(one.elapsed()));
        }
        milliseconds = static_cast<long>(total.elapsed());
        return true;
    }

    int done() const { return done_; }

    std::vector<int> wrong;
    Figures at_fifty;
    Figures at_end;
    long slowest = 0;
    long milliseconds = 0;

  private:
    // Inside of a tick. Nothing is allocated here on the way to the second look at the memory.
    void recorded() {
        if (!bench_.right(done_)) wrong.push_back(done_);
        ++done_;
        if (done_ == 50) at_fifty = look();
        if (done_ == count_) at_end = look();
        if (done_ == count_) bench_.scope.click_single();
        bench_.prepare(done_ < count_ ? done_ : count_ - 1);
    }

    Figures look() const {
        return {resident_kilobytes("self"), bench_.drive.kilobytes(), heap_bytes()};
    }

    Bench& bench_;
    int count_;
    int done_ = 0;
};

TEST(ScopePty, TwoHundredRecordingsOnALineThatCorruptsTwoPercent) {
    Bench bench("0.02");
    ASSERT_TRUE(bench.set_up());
    Series series(bench, 200);
    ASSERT_TRUE(series.run(200)) << "stuck behind recording " << series.done() << " in state "
                                 << bench.engine.state.scopeState;

    // No wrong sample, but for what no receiver can know.
    const DriveProcess::Frames frames = bench.drive.frames();
    EXPECT_GT(frames.broken, frames.sent / 100);
    EXPECT_LE(static_cast<int>(series.wrong.size()), frames.unseen)
        << "first wrong: " << series.wrong.front();

    // No growth.
    EXPECT_LE(series.at_end.heap, series.at_fifty.heap + 4096);
    EXPECT_LE(series.at_end.kilobytes, series.at_fifty.kilobytes + 2048);
    EXPECT_LE(series.at_end.drive_kilobytes, series.at_fifty.drive_kilobytes + 2048);

    // Not stuck: at rest, in step with the drive, and ready for the same buffer once more.
    const link::EngineState& state = bench.engine.state;
    EXPECT_EQ(state.scopeState, 0);
    EXPECT_FALSE(bench.scope.data().sampling);
    const std::uint64_t answers = bench.engine.counters.answers;
    EXPECT_TRUE(bench.until([&] { return bench.engine.counters.answers > answers + 50; }));
    bool again = false;
    bench.on_recording = [&] { again = bench.right(199); };
    bench.scope.Command7_Click();
    EXPECT_TRUE(bench.until([&] { return !bench.scope.data().sampling; }));
    EXPECT_TRUE(again || bench.drive.frames().unseen > 0);

    std::cout << "200 recordings in " << series.milliseconds << " ms, the slowest in "
              << series.slowest << " ms; " << frames.sent << " frames, " << frames.broken
              << " seen as broken, " << frames.unseen << " not; " << series.wrong.size()
              << " wrong recordings\nat 50 and at 200: heap " << series.at_fifty.heap << ", "
              << series.at_end.heap << " bytes; resident " << series.at_fifty.kilobytes << ", "
              << series.at_end.kilobytes << " kB; drive " << series.at_fifty.drive_kilobytes << ", "
              << series.at_end.drive_kilobytes << " kB\n";
}

// The same judge, without the test of frames: it must find wrong samples.
TEST(ScopePty, WithoutTheTestOfFramesTheSameRunIsFoundWrong) {
    Bench bench("0.1");
    ASSERT_TRUE(bench.set_up());
    bench.engine.serial.check_frames = false;
    Series series(bench, 60);
    bench.patience = 5'000;  // a run that is stuck is what comes of it too
    series.run(5);
    EXPECT_GT(static_cast<int>(series.wrong.size()), bench.drive.frames().unseen);
}

}  // namespace
}  // namespace servo::scope

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
