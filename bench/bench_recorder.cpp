// What sampling four objects at every step of the loop costs the simulated drive, against the same
// drive turning the same way without a recording.
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "bench/ratio.h"
#include "dictionary/store.h"
#include "sim/drive.h"

namespace {

using namespace servo;
using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr microseconds kTurn = milliseconds(500);
constexpr double kTurnSeconds = 0.5;
constexpr int kTurns = 15;

struct Entry {
    std::string_view key;
    std::string_view type;
};

constexpr std::array kEntries{
    Entry{"230001", "Unsigned32"}, Entry{"230002", "Unsigned32"}, Entry{"230003", "Unsigned32"},
    Entry{"230004", "Unsigned32"}, Entry{"230005", "Unsigned32"}, Entry{"230006", "Unsigned32"},
    Entry{"230007", "Unsigned8"},  Entry{"23000A", "Unsigned16"}, Entry{"604000", "Unsigned16"},
    Entry{"606000", "Integer8"},   Entry{"606300", "Integer32"},  Entry{"607800", "Integer16"},
    Entry{"60F60C", "Integer16"},  Entry{"60F916", "Integer32"},  Entry{"60FB08", "Integer16"},
    Entry{"60FF00", "Integer32"},
};

std::string dictionary_file() {
    std::string file;
    for (const Entry& entry : kEntries) {
        std::string record(dictionary::kRecordSize, ' ');
        record.replace(0, entry.key.size(), entry.key);
        record.replace(134, entry.type.size(), entry.type);
        record.replace(150, 2, "RW");
        record[8550] = 'N';
        file += record;
    }
    return file;
}

// A drive that turns at 1000 rpm.
class Turning {
  public:
    explicit Turning(const dictionary::Store& store)
        : drive_(std::make_unique<sim::Drive>(store, sim::Options{})) {
        drive_->set_value(0x606000, -3);
        for (const int word : {6, 7, 15})
            drive_->set_value(0x604000, word);
        drive_->set_value(0x60FF00, 2730667);
        run();
    }

    // One wide and one narrow object in each pair, in rows of 12 bytes.
    void record_four() {
        recording_ = true;
        drive_->set_value(0x230005, 0x60F91620);
        drive_->set_value(0x230002, 0x60780010);
        drive_->set_value(0x230006, 0x60630020);
        drive_->set_value(0x230004, 0x60F60C10);
        drive_->set_value(0x23000A, 682);
    }

    // As a tool does in continuous mode, but without a pause between two recordings.
    void run() {
        const microseconds end = now_ + kTurn;
        while (now_ < end) {
            if (recording_ && drive_->value(0x230007) == 0) drive_->set_value(0x230007, 1);
            now_ += milliseconds(1);
            drive_->advance(now_);
        }
    }

  private:
    std::unique_ptr<sim::Drive> drive_;
    microseconds now_{0};
    bool recording_ = false;
};

}  // namespace

int main() {
    dictionary::Store store;
    store.load(dictionary_file());
    Turning recording(store);
    recording.record_four();
    Turning plain(store);
    const bench::Medians medians = bench::take_turns(
        kTurns, [&] { recording.run(); }, 1, [&] { plain.run(); }, 1);
    std::printf("a second of the drive: %.2f ms turning, %.2f ms with four objects at 16 kHz\n",
                medians.reference / kTurnSeconds * 1e3, medians.ours / kTurnSeconds * 1e3);
    bench::Report report;
    report.at_most("recorder/sampling-to-model", medians.ours / medians.reference, 2.5);
    report.at_most("recorder/sampling-to-real-time", medians.ours / kTurnSeconds, 0.05);
    return report.exit_status();
}
