// Processor use of the workstation while it polls a simulated drive at 38400 baud with three pages
// open: the difference between a long and a short run, so that starting and ending do not count.
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "base/file.h"
#include "bench/process.h"
#include "bench/ratio.h"

namespace {

constexpr int kShort = 1;  // seconds of polling
constexpr int kLong = 16;

std::string walk_text(int seconds) {
    return "until toolbar.commx CommOKpic\n"
           "menu Basic_Operation\nmenu SPDLoop\nmenu CurLoop\n"
           "until CLoop.MSHFlexGrid1[1,4] *\n"
           "wait " +
           std::to_string(seconds * 1000) + "\nquit\n";
}

// Processor time of one run, negative when it failed.
double run(const std::string& device, int seconds) {
    std::string pattern = (std::filesystem::temp_directory_path() / "servo-walk-XXXXXX").string();
    const int file = ::mkstemp(pattern.data());
    if (file < 0) return -1;
    ::close(file);
    servo::base::write_file(pattern, walk_text(seconds));
    servo::bench::Process workstation(
        {SERVO_BIN_DIR "/servo-workstation", "--connect", device, "--walk", pattern});
    const bool good = workstation.finish();
    std::filesystem::remove(pattern);
    return good ? workstation.processor_seconds() : -1;
}

}  // namespace

int main() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    servo::bench::Process drive({SERVO_BIN_DIR "/drive-sim", "--data", SERVO_BIN_DIR});
    const std::string line = drive.line();
    const std::string marker = "line: ";
    if (!line.starts_with(marker)) {
        std::fprintf(stderr, "drive-sim named no line\n");
        return 1;
    }
    const std::string device = line.substr(marker.size());
    const double brief = run(device, kShort);
    const double lasting = run(device, kLong);
    if (brief < 0 || lasting < 0) {
        std::fprintf(stderr, "the walkthrough failed\n");
        return 1;
    }
    servo::bench::Report report;
    report.at_most("processor-use-while-polling", (lasting - brief) / (kLong - kShort), 0.05);
    return report.exit_status();
}
