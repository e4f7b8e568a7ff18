// From the start of the process to the main window shown, offscreen, with a dictionary of 1,200
// records: against 0.7 s, and against an empty main window started in turn with it.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/file.h"
#include "bench/process.h"
#include "bench/ratio.h"
#include "bench/temporary_folder.h"

namespace {

constexpr std::size_t kRecordSize = 8554;
constexpr std::size_t kRecords = 1200;
constexpr int kTurns = 21;

// A program's folder as it is shipped, its dictionary brought to 1,200 records.
class Folder {
  public:
    bool fill(const std::filesystem::path& shipped) const {
        std::error_code error;
        std::filesystem::copy(shipped / "sys", path() / "sys",
                              std::filesystem::copy_options::recursive, error);
        if (error) return false;
        std::filesystem::copy(shipped / "modbus.txt", path() / "modbus.txt", error);
        auto dictionary = servo::base::read_file(shipped / "qorlan.dat");
        if (error || !dictionary || dictionary->size() < kRecordSize) return false;
        // Records behind the shipped ones repeat the first under indexes that no page asks for.
        std::size_t count = dictionary->size() / kRecordSize;
        dictionary->resize(std::min(count, kRecords) * kRecordSize);
        for (; count < kRecords; ++count) {
            std::array<char, 8> key{};
            std::snprintf(key.data(), key.size(), "%06zX", 0x500000 + count);
            std::string record = dictionary->substr(0, kRecordSize);
            record.replace(0, 6, key.data(), 6);
            *dictionary += record;
        }
        return servo::base::write_file(path() / "qorlan.dat", *dictionary) &&
               servo::base::write_file(walk(), "quit\n");
    }

    const std::filesystem::path& path() const { return folder_.path(); }
    std::filesystem::path walk() const { return path() / "start.walk"; }

  private:
    servo::bench::TemporaryFolder folder_;
};

// Starts a program and returns when its first line has come. What it does after that is waited for
// in finish(), outside of the measurement.
class Start {
  public:
    explicit Start(std::vector<std::string> command) : command_(std::move(command)) {}

    void operator()() {
        process_.emplace(command_);
        if (process_->line().empty()) failed_ = true;
    }
    void finish() {
        if (process_ && !process_->finish()) failed_ = true;
        process_.reset();
    }
    bool failed() const { return failed_; }

  private:
    std::vector<std::string> command_;
    std::optional<servo::bench::Process> process_;
    bool failed_ = false;
};

}  // namespace

int main() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const Folder folder;
    if (!folder.fill(SERVO_BIN_DIR)) {
        std::fprintf(stderr, "no run-time tree in %s\n", SERVO_BIN_DIR);
        return 1;
    }
    Start ours({SERVO_BIN_DIR "/servo-workstation", "--data", folder.path().string(), "--walk",
                folder.walk().string(), "--ready"});
    Start reference({SERVO_EMPTY_WINDOW});
    const auto start = servo::bench::take_turns(
        kTurns, [&] { ours(); }, 1, [&] { reference(); }, 1,
        [&] {
            ours.finish();
            reference.finish();
        });
    ours.finish();
    reference.finish();
    if (ours.failed() || reference.failed()) {
        std::fprintf(stderr, "a program did not come up\n");
        return 1;
    }
    std::printf("start: %.0f ms, empty main window: %.0f ms\n", start.ours * 1e3,
                start.reference * 1e3);
    servo::bench::Report report;
    report.at_most("start-seconds", start.ours, 0.7);
    report.at_most("start-against-empty-window", start.ours / start.reference, 3.0);
    return report.exit_status();
}
