// The journal with an engine on a tapped port that has no line: what is written is there to be
// looked at, what the drive says is fed by hand.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "dictionary/store_of.h"
#include "link/drive_values.h"
#include "link/engine.h"
#include "support/direct_port.h"
#include "support/fake_drive.h"
#include "tools/journal.h"

namespace servo::tools::test {

inline RawRecord journal_record(std::string index, std::string sub, std::string type,
                                std::string name) {
    RawRecord made;
    made.index = std::move(index);
    made.sub = std::move(sub);
    made.name_ch = "N-" + name;
    made.name_en = std::move(name);
    made.type = std::move(type);
    made.attribute = "RW";
    made.formula = "[DEC]N*1";
    return made;
}

inline dictionary::Store journal_dictionary() {
    return dictionary::store_of({journal_record("6060", "00", "Integer8", "Modes of operation"),
                                 journal_record("6081", "00", "Unsigned32", "Profile velocity"),
                                 journal_record("60FF", "00", "Integer32", "Target velocity"),
                                 journal_record("60F9", "01", "Unsigned16", "Velocity gain"),
                                 journal_record("6040", "00", "Unsigned16", "Controlword"),
                                 journal_record("1010", "01", "Unsigned32", "Store parameters"),
                                 journal_record("2FFF", "00", "Unsigned16", "Restart")});
}

inline link::Payload frame_payload(std::uint8_t command, link::WireKey key, std::uint32_t data) {
    link::Payload payload{};
    payload[0] = command;
    payload[1] = static_cast<std::uint8_t>(key >> 16);
    payload[2] = static_cast<std::uint8_t>(key >> 24);
    payload[3] = static_cast<std::uint8_t>(key >> 8);
    for (std::size_t i = 0; i < 4; ++i)
        payload[4 + i] = static_cast<std::uint8_t>(data >> 8 * i);
    return payload;
}

struct JournalBench {
    JournalBench() {
        engine.link_opened();
        engine.sendata2(0x60640004, 0, 1);  // a line on which nobody was asked tells nothing
        port.take_sent();
    }

    void write(link::WireKey key, std::int32_t value) { engine.sendata2(key, value, 0); }
    // The drive's frame, taken from the line as the engine takes it.
    void say(std::uint8_t command, link::WireKey key, std::uint32_t data) {
        port.feed(servo::test::FakeDrive::frame_of(frame_payload(command, key, data)));
        engine.get_frame();
    }
    void taken(link::WireKey key, std::uint32_t value) { say(link::kWritten, key, value); }
    void refused(link::WireKey key, std::uint32_t code) { say(link::kAbort, key, code); }
    const JournalEntry& entry(std::size_t at) const { return journal.entries().at(at); }
    std::vector<std::string> column(int which) const {
        std::vector<std::string> texts;
        for (const JournalEntry& entry : journal.entries())
            texts.push_back(journal.cell(entry, which));
        return texts;
    }

    servo::test::DirectPort port;
    TappedPort tapped{port};
    servo::test::RecordingClock clock;
    servo::test::RecordingTimer timer;
    link::DriveValues values;
    link::Engine engine{tapped, clock, timer, values};
    dictionary::Store store = journal_dictionary();
    base::Language language = base::Language::kEnglish;
    std::string time_of_day = "10:00:00";
    std::string window = "Basic";
    WriteJournal journal{{.line = tapped,
                          .engine = engine,
                          .dictionary = store,
                          .language = language,
                          .time_of_day = [this] { return time_of_day; },
                          .window = [this] { return window; }}};
};

inline constexpr link::WireKey kMode = 0x60600001;
inline constexpr link::WireKey kProfile = 0x60810004;
inline constexpr link::WireKey kTarget = 0x60FF0004;
inline constexpr link::WireKey kGain = 0x60F90102;
inline constexpr link::WireKey kControlword = 0x60400002;

}  // namespace servo::tools::test
