// A transfer of 121 blocks (498,520 characters) over a paced pseudo-terminal at 38400 baud, to a
// bootloader that answers at once, against the least time in which the line can carry them.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <map>

#include "base/clock.h"
#include "bench/ratio.h"
#include "bench/simulated_line.h"
#include "firmware/download.h"
#include "link/engine.h"
#include "link/qt_serial_port.h"

namespace {

using namespace servo;
using namespace std::chrono_literals;

constexpr double kBytesPerSecond = 3840.0;  // 38400 baud, ten bits a byte

class NoNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view text, base::Buttons) override {
        std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
        return base::Answer::kOk;
    }
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    bench::SimulatedLine drive(
        {"--bootloader", "--fault", "boot-erase:0", "--fault", "boot-programme:0"});
    link::PortNames names;
    link::QtSerialPort port(names);
    base::SteadyClock clock;
    link::QtTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    NoNotice notice;
    const base::Language language = base::Language::kEnglish;
    const dictionary::Variant variant = dictionary::Variant::kAllItems;
    firmware::Download download({.engine = engine,
                                 .notice = notice,
                                 .language = language,
                                 .Tavro_Nevra_Other_mode = variant,
                                 .ask_file = {},
                                 .software_version = {}});
    std::map<int, double> in_step;  // seconds
    QElapsedTimer watch;
    double last = 0;
    timer.set_interval(3);
    timer.set_tick([&] {
        const int step = engine.state.download_step;
        const double now = static_cast<double>(watch.nsecsElapsed()) * 1e-9;
        in_step[step] += now - last;
        last = now;
        engine.cTmr_Timer();
    });
    if (!download.load_image(SERVO_BIN_DIR "/../bench/long.servo") ||
        port.open(names.give(drive.line), 38400) != link::OpenResult::kOpened) {
        std::fprintf(stderr, "no image or no line\n");
        return 1;
    }
    engine.link_opened();
    timer.set_enabled(true);
    bench::let_pass(500ms);
    watch.start();
    last = 0;
    in_step.clear();
    download.Command4_Click();
    while (download.transfer_running())
        bench::let_pass(20ms);
    const double taken = static_cast<double>(watch.nsecsElapsed()) * 1e-9;

    const auto blocks = static_cast<double>(download.data().fw_blocks->size()) - 1;
    const double least = blocks * 4120 / kBytesPerSecond;
    std::printf("%.0f blocks, line's minimum %.1f s, taken %.1f s; by step:\n", blocks, least,
                taken);
    for (const auto& [step, seconds] : in_step)
        std::printf("  step %d  %8.3f s\n", step, seconds);
    bench::Report report;
    const bool done = download.result() && download.result()->end == firmware::TransferEnd::kDone;
    report.at_least("firmware: the transfer ended well", done ? 1 : 0, 1);
    report.at_least("firmware: line's minimum by time taken on a pseudo-terminal", least / taken,
                    0.92);
    return report.exit_status();
}
