// An oscilloscope on an engine with a port that keeps what is sent, and a dictionary of its usual
// objects.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "dictionary/store_of.h"
#include "link/engine.h"
#include "scope/oscilloscope.h"
#include "support/direct_port.h"
#include "support/fakes.h"

namespace servo::scope::test {

inline RawRecord record(std::string index, std::string sub, std::string name, std::string type,
                        std::string formula) {
    RawRecord made;
    made.index = std::move(index);
    made.sub = std::move(sub);
    made.name_ch = "\xd6\xd0" + name;  // one character of the code page
    made.name_en = std::move(name);
    made.type = std::move(type);
    made.attribute = "RWL";
    made.formula = std::move(formula);
    return made;
}

// The seven objects that every channel offers, and two narrow ones.
inline std::vector<RawRecord> usual_objects() {
    const std::string counts = "[DEC inc]N\n[inc DEC]N";
    const std::string speed = "[DEC rpm]N/10\n[rpm DEC]N*10\n[DEC DEC]N\n";
    return {record("6078", "00", "current", "Integer16", "[DEC A]N/100\n[A DEC]N*100"),
            record("60F6", "0C", "q current", "Integer16", "[DEC A]N/100\n[A DEC]N*100"),
            record("60F9", "16", "speed narrow", "Integer16", speed),
            record("6063", "00", "position", "Integer32", counts),
            record("606B", "00", "speed demand", "Integer32", speed),
            record("60FB", "08", "following error", "Integer32", counts),
            record("60FC", "00", "position demand", "Integer32", counts),
            record("2001", "01", "state", "Unsigned8", counts),
            record("2001", "02", "count", "Unsigned16", counts)};
}

class Observed final : public ScopeObserver {
  public:
    void controls_changed() override { ++controls; }
    void plot_changed() override { ++plots; }
    void cursors_changed() override { ++cursors; }
    int controls = 0;
    int plots = 0;
    int cursors = 0;
};

struct ScopeWorld {
    explicit ScopeWorld(const std::vector<RawRecord>& objects = usual_objects())
        : dictionary(dictionary::store_of(objects)) {
        engine.set_scope(&scope.acquisition());
        scope.set_observer(&observed);
        scope.load();
    }

    // A recording of two int16 channels, as if it had just been uploaded.
    void record_two_channels(const std::vector<std::pair<int, int>>& rows) {
        scope.pick_object(0, 1);
        scope.pick_object(1, 2);
        if (!scope.data().channels[0].enable) scope.click_enable(0);
        if (!scope.data().channels[1].enable) scope.click_enable(1);
        scope.type(Oscilloscope::Box::kText3, std::to_string(rows.size()));
        scope.Command6_Click();
        engine.state.scopeState = 6;
        engine.state.str_read_step = 1;
        engine.state.status_lane = 2;
        std::vector<std::uint8_t> bytes;
        for (const auto& [a, b] : rows)
            for (const int value : {a, b}) {
                bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
                bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
            }
        upload(bytes);
    }

    void upload(const std::vector<std::uint8_t>& bytes) {
        std::uint8_t toggle = 0;
        for (std::size_t at = 0; at < bytes.size(); at += 7) {
            const std::size_t count = std::min<std::size_t>(7, bytes.size() - at);
            const bool last = at + count == bytes.size();
            link::Payload payload{};
            payload[0] = static_cast<std::uint8_t>(toggle | (last ? (7 - count) * 2 + 1 : 0));
            for (std::size_t i = 0; i < count; ++i)
                payload[i + 1] = bytes[at + i];
            scope.acquisition().receive_frame(engine, payload);
            toggle ^= 0x10;
        }
    }

    dictionary::Store dictionary;
    servo::test::DirectPort port;
    servo::test::RecordingClock clock;
    servo::test::RecordingTimer timer;
    servo::test::RecordedNotice notice;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    base::Language language = base::Language::kEnglish;
    bool open = true;
    Observed observed;
    Oscilloscope scope{{.engine = engine,
                        .dictionary = dictionary,
                        .notice = notice,
                        .language = language,
                        .link_open = [this] { return open; }}};
};

}  // namespace servo::scope::test
