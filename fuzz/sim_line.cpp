// Everything that can come down the line to the simulated drive.
//
// The input is a list of pieces. The first byte of a piece says what it is: 0 to 31 that many raw
// bytes; 32 to 63 a payload of eight bytes in a frame with a right checksum (or the fuzzer would
// hardly get past it); from 64 on so many milliseconds of time.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sim/drive.h"

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

// More virtual time than that for one input teaches nothing new.
constexpr microseconds kLongest = std::chrono::milliseconds(600);
constexpr std::size_t kFrame = 10;

struct Entry {
    std::string_view key;
    std::string_view type;
    std::string_view attribute;
};

constexpr std::array kEntries{
    Entry{"200001", "Unsigned8", "RW"},      Entry{"200002", "Integer8", "RW"},
    Entry{"200007", "Visible String", "RW"}, Entry{"20000F", "Domain", "R"},
    Entry{"101001", "Unsigned32", "RW"},     Entry{"101101", "Unsigned32", "RW"},
    Entry{"2FF001", "Unsigned8", "RW"},      Entry{"2FFF00", "Unsigned16", "W"},
    Entry{"260600", "Unsigned8", "RW"},      Entry{"604000", "Unsigned16", "RW"},
    Entry{"604100", "Unsigned16", "R"},      Entry{"606000", "Integer8", "RW"},
    Entry{"607A00", "Integer32", "RW"},      Entry{"608300", "Unsigned32", "RW"},
    Entry{"608400", "Unsigned32", "RW"},     Entry{"60FF00", "Integer32", "RW"},
    Entry{"60F901", "Unsigned16", "RW"},     Entry{"60F902", "Unsigned16", "RW"},
    Entry{"60FB01", "Unsigned16", "RW"},     Entry{"607100", "Integer16", "RW"},
    Entry{"60C202", "Integer8", "RW"},       Entry{"606300", "Integer32", "R"},
    Entry{"609800", "Integer8", "RW"},       Entry{"205001", "Unsigned8", "RW"},
    Entry{"60F916", "Integer32", "R"},       Entry{"607800", "Integer16", "R"},
    Entry{"230001", "Unsigned32", "RW"},     Entry{"230002", "Unsigned32", "RW"},
    Entry{"230003", "Unsigned32", "RW"},     Entry{"230004", "Unsigned32", "RW"},
    Entry{"230005", "Unsigned32", "RW"},     Entry{"230006", "Unsigned32", "RW"},
    Entry{"230007", "Unsigned8", "RWL"},     Entry{"230008", "Unsigned16", "RW"},
    Entry{"230009", "Unsigned16", "RW"},     Entry{"23000A", "Unsigned16", "RW"},
    Entry{"23000B", "Unsigned8", "RW"},      Entry{"23000C", "Unsigned32", "RW"},
    Entry{"23000D", "Integer32", "RW"},      Entry{"23000E", "Unsigned16", "RL"},
    Entry{"23000F", "Unsigned16", "RL"},     Entry{"230010", "Unsigned8", "RL"},
    Entry{"230012", "Unsigned8", "RW"},      Entry{"230013", "Visible String", "R"},
    Entry{"201001", "Unsigned16", "RWL"},    Entry{"201002", "Unsigned16", "RWL"},
    Entry{"201003", "Unsigned16", "RWL"},    Entry{"201004", "Unsigned16", "RWL"},
    Entry{"20100C", "Unsigned16", "RWL"},    Entry{"20100F", "Unsigned16", "RWL"},
    Entry{"201014", "Unsigned16", "RL"},     Entry{"201106", "Unsigned8", "RW"},
    Entry{"201301", "Unsigned32", "RW"},     Entry{"213001", "Unsigned8", "RW"},
    Entry{"310001", "Integer32", "RW"},      Entry{"310201", "Integer32", "RW"},
    Entry{"310301", "Integer32", "RW"},      Entry{"310501", "Unsigned16", "RW"},
    Entry{"310701", "Unsigned8", "RW"},      Entry{"311003", "Unsigned8", "RW"},
    Entry{"311004", "Unsigned8", "RL"},      Entry{"311008", "Unsigned32", "RW"},
};

std::string dictionary_file() {
    std::string file;
    for (const Entry& entry : kEntries) {
        std::string record(servo::dictionary::kRecordSize, ' ');
        record.replace(0, entry.key.size(), entry.key);
        record.replace(134, entry.type.size(), entry.type);
        record.replace(150, entry.attribute.size(), entry.attribute);
        record[8550] = 'N';
        file += record;
    }
    return file;
}

const servo::dictionary::Store& store() {
    static const servo::dictionary::Store kStore = [] {
        servo::dictionary::Store made;
        made.load(dictionary_file());
        return made;
    }();
    return kStore;
}

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

bool is_text(const std::vector<std::uint8_t>& bytes) {
    return bytes.size() > 2 && bytes.back() == '\n' &&
           std::all_of(bytes.begin(), bytes.end() - 2, [](int c) { return c >= ' ' && c <= '~'; });
}

void check(servo::sim::Drive& drive) {
    for (const servo::sim::Transmission& sent : drive.take_output()) {
        // The bootloader, once it has been called.
        if (is_text(sent.bytes)) continue;
        require(sent.bytes.size() == kFrame, "an answer is one frame");
        require(sent.bytes[0] == 127, "an answer has the drive's ID");
        const unsigned sum = std::accumulate(sent.bytes.begin(), sent.bytes.end(), 0U);
        require((sum & 0xFFU) == 0, "an answer has a right checksum");
    }
    const auto rows = drive.value(0x23000E).value_or(0);
    const auto buffer = drive.text(0x230013).value_or("");
    require(rows <= 8192 && buffer.size() <= 8192, "a recording fits its buffer");
    require(drive.value(0x230007).value_or(0) <= 3, "the recorder has four states");
    require(drive.value(0x311004).value_or(0) <= 5, "the position table has six states");
    require(drive.value(0x201014).value_or(0) <= 0x7F, "there are seven outputs");
    const auto& statistics = drive.statistics();
    require(statistics.answers <= statistics.frames, "no answer without a request");
}

void send(servo::sim::Drive& drive, std::span<const std::uint8_t> bytes, microseconds& now) {
    now += microseconds(bytes.size() * 261);
    drive.receive(bytes, now);
    check(drive);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    servo::sim::Options options;
    options.values = "200007\tabcdefghij\n";
    servo::sim::Drive drive(store(), options);
    std::span<const std::uint8_t> rest(data, size);
    microseconds now{0};
    while (!rest.empty() && now < kLongest) {
        const std::uint8_t kind = rest[0];
        rest = rest.subspan(1);
        if (kind >= 64) {
            now += milliseconds(kind - 63);
            drive.advance(now);
            check(drive);
            continue;
        }
        const std::size_t count = std::min<std::size_t>(kind < 32 ? kind : 8, rest.size());
        if (kind < 32) {
            send(drive, rest.first(count), now);
        } else {
            std::array<std::uint8_t, kFrame> frame{127};
            std::copy_n(rest.begin(), count, frame.begin() + 1);
            const unsigned sum = std::accumulate(frame.begin(), frame.end(), 0U);
            frame.back() = static_cast<std::uint8_t>(0U - sum);
            send(drive, frame, now);
        }
        rest = rest.subspan(count);
    }
    // Whatever came, the drive still listens: at the latest after a restart and a silence.
    now += milliseconds(100);
    drive.advance(now);
    if (!drive.running()) now += std::chrono::seconds(4);
    drive.advance(now);
    drive.take_output();
    if (drive.in_bootloader()) return 0;
    const std::array<std::uint8_t, kFrame> read{127, 0x40, 0, 0x20, 1, 0, 0, 0, 0, 0x20};
    now += microseconds(2610);
    drive.receive(read, now);
    drive.advance(now + std::chrono::milliseconds(50));
    require(drive.take_output().size() == 1, "the drive answers at the end");
    return 0;
}
