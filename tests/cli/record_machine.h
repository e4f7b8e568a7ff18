// `record` on the virtual bench: the engine in virtual time, a drive with a recorder that a test
// directs, and everything printed in two texts.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "cli/engine_session.h"
#include "cli/fake_machine.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::cli {

using namespace std::chrono_literals;

// What a drive's recorder answers, in turns of the status: the start makes it 1, `course` says what
// it becomes and when.
class FakeRecorder {
  public:
    struct Turn {
        std::chrono::milliseconds after;
        int status;
    };

    FakeRecorder(test::VirtualTime& time, test::FakeDrive& drive) : time_(time), drive_(drive) {
        drive_.repeats_segments = true;
        drive_.add(0x23000701, 0);
        for (const link::WireKey key : {0x23000802U, 0x23000902U, 0x23000A02U})
            drive_.add(key, 0);
        drive_.add(0x23000B01, 0);
        drive_.answers = [this](const link::Payload& request) { return heard(request); };
    }

    std::vector<Turn> course{{5ms, 2}, {5ms, 3}, {5ms, 0}};
    std::string bytes;    // what the buffer holds once the course has run
    int lost_starts = 0;  // that many do not reach the recorder
    bool refuses_start = false;
    std::set<link::Identity> mute_from_start;

    int starts = 0;

    // Writes to the recorder: sub-index and value, in their order.
    std::vector<std::pair<int, std::uint32_t>> writes() const {
        std::vector<std::pair<int, std::uint32_t>> all;
        for (const auto& [at, payload] : drive_.requests) {
            const std::uint8_t command = payload[0];
            const bool write =
                command == link::kWrite1 || command == link::kWrite2 || command == link::kWrite4;
            if (write && payload[1] == 0x00 && payload[2] == 0x23)
                all.emplace_back(payload[3], value_of(payload));
        }
        return all;
    }

    // The abort of a start, in place of its acknowledgement.
    std::vector<std::uint8_t> mangled(std::vector<std::uint8_t> frame) const {
        const bool start_answer = frame[1] == link::kWritten && frame[2] == 0x00 &&
                                  frame[3] == 0x23 && frame[4] == 0x07 && frame[5] == 1;
        if (!refuses_start || !start_answer) return frame;
        return test::FakeDrive::frame_of({link::kAbort, 0x00, 0x23, 0x07, 0x22, 0x00, 0x00, 0x08});
    }

  private:
    static std::uint32_t value_of(const link::Payload& payload) {
        return static_cast<std::uint32_t>(payload[4]) |
               static_cast<std::uint32_t>(payload[5]) << 8 |
               static_cast<std::uint32_t>(payload[6]) << 16 |
               static_cast<std::uint32_t>(payload[7]) << 24;
    }

    // False when nothing is answered.
    bool heard(const link::Payload& request) {
        const bool command = request[0] == link::kWrite1 && link::reply_key(request) == 0x230007;
        if (!command || request[4] == 0) return true;
        ++starts;
        if (lost_starts > 0) {
            --lost_starts;
            drive_.objects[0x230007].value = 0;
            return false;
        }
        drive_.mute.insert(mute_from_start.begin(), mute_from_start.end());
        if (refuses_start) {
            drive_.objects[0x230007].value = 0;
            return true;
        }
        std::chrono::milliseconds at{0};
        for (const Turn& turn : course) {
            at += turn.after;
            time_.after(at, [this, turn] {
                drive_.objects[0x230007].value = turn.status;
                if (turn.status == 0) drive_.add_text(0x230013, bytes);
            });
        }
        return true;
    }

    test::VirtualTime& time_;
    test::FakeDrive& drive_;
};

class RecordMachine final : public Environment {
  public:
    RecordMachine() {
        drive.mangle = [this](std::vector<std::uint8_t> frame) {
            return recorder.mangled(std::move(frame));
        };
        drive.add(0x64100304, 10000);
        drive.add(0x65100302, 150);
        drive.add(0x30400704, 19661);
        drive.add(0x60F61302, 8);
        drive.add(0x60F61102, 9);
    }

    std::vector<link::PortDirectory::Entry> ports(const Options&) override { return {}; }
    OpenedLink open_link(const Options& options) override {
        OpenedLink link;
        if (session.open("COM1", options.baud, options.id) != link::OpenResult::kOpened)
            return link;
        link.session = &session;
        link.engine = &bench.engine;
        return link;
    }

    int run(std::vector<std::string> arguments) {
        ParsedLine line = parse_command_line(std::move(arguments));
        if (!line.options) return static_cast<int>(line.end.status);
        line.options->data = dictionary.folder.path();
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
    }

    int record(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"record", file()});
        return run(std::move(arguments));
    }

    std::string file() const { return (bench.folder / "out.scope").string(); }
    std::string written() const {
        return base::read_file(bench.folder / "out.scope").value_or("no file");
    }
    // Lines of the file without their ends.
    std::vector<std::string> lines() const {
        const std::string text = written();
        std::vector<std::string> all;
        base::LineReader reader(text);
        while (const auto line = reader.next())
            all.emplace_back(*line);
        return all;
    }

    FakeMachine dictionary;  // for its folder
    test::VirtualBench bench;
    test::FakeDrive drive{bench.time, bench.line};
    FakeRecorder recorder{bench.time, drive};
    // Ctrl-C is pressed once this holds; it stays pressed.
    std::function<bool()> ctrl_c = [] { return false; };
    bool interrupted = false;
    EngineSession session{bench.engine, [this] {
                              bench.run_for(3ms);
                              interrupted = interrupted || ctrl_c();
                              return !interrupted;
                          }};
    std::string out;
    std::string err;
};

}  // namespace servo::cli
