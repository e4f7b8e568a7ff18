// The form `DigitalIO` with its engine: on a port without a line, stepped by hand, or on the
// virtual bench with a drive that answers by a table.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "base/gbk.h"
#include "support/direct_port.h"
#include "support/fake_drive.h"
#include "support/fakes.h"
#include "support/virtual_bench.h"
#include "tools/digital_io.h"

namespace servo::tools::test {

using namespace std::chrono_literals;
using servo::test::FakeDrive;

// A write as it left: wire key without its size code, and the value.
struct Write {
    std::uint8_t command = 0;
    link::Identity object = 0;
    std::int32_t value = 0;
    bool operator==(const Write&) const = default;
};

inline Write write_of(const link::Payload& payload) {
    return {payload[0], link::reply_key(payload),
            static_cast<std::int32_t>(link::reply_value(payload, 14))};
}
inline bool is_write(const link::Payload& payload) {
    return payload[0] != 0x40 && payload[0] != 0x60 && payload[0] != 0x70;
}
inline Write word_write(link::Identity object, std::int32_t value) {
    return {0x2B, object, value};
}

// The list that is shipped, as it stands in the repository.
inline std::string shipped_list_text() {
    std::ifstream in(SERVO_SOURCE_DIR "/data/sys/DigitIOSettings.ini", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
inline std::string shipped_list() {
    return base::utf8_to_gbk(shipped_list_text());
}
inline void put_list(const TempFolder& folder, std::string_view bytes) {
    std::filesystem::create_directories(folder / "sys");
    folder.put("sys/DigitIOSettings.ini", bytes);
}

struct Seen final : DigitalIOObserver {
    void controls_changed() override { ++changes; }
    int changes = 0;
};

// The form on a port that holds what was sent.
struct DirectIO {
    explicit DirectIO(std::string_view list = shipped_list()) {
        put_list(folder, list);
        loaded = form.Form_Load(folder.path());
        form.set_observer(&seen);
        engine.link_opened();
    }

    // The answer of the drive to a read of a 16-bit object.
    void answer(link::WireKey key, std::uint16_t value, std::uint8_t command = 0x4B) {
        link::Payload payload{};
        payload[0] = command;
        payload[1] = static_cast<std::uint8_t>(key >> 16);
        payload[2] = static_cast<std::uint8_t>(key >> 24);
        payload[3] = static_cast<std::uint8_t>(key >> 8);
        payload[4] = static_cast<std::uint8_t>(value);
        payload[5] = static_cast<std::uint8_t>(value >> 8);
        engine.state.sendmod = 1;
        engine.state.Com_Change = 0;
        port.feed(FakeDrive::frame_of(payload));
        engine.cTmr_Timer();
    }
    void set_row(int row, std::uint16_t value) { answer(key_of_tag(tag_of(row)), value); }

    // Everything that was sent since the last call: ten bytes for each.
    std::vector<Write> writes() {
        std::vector<Write> found;
        const auto bytes = port.take_sent();
        for (std::size_t at = 0; at + 10 <= bytes.size(); at += 10) {
            link::Payload payload{};
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1, payload.size(),
                        payload.begin());
            if (is_write(payload)) found.push_back(write_of(payload));
        }
        return found;
    }
    int row_ticks() const {
        int count = 0;
        for (const IoSide side : kIoSides)
            for (const bool tick : form.data().ticks(side))
                count += tick ? 1 : 0;
        return count;
    }

    TempFolder folder;
    servo::test::DirectPort port;
    servo::test::RecordingClock clock;
    servo::test::RecordingTimer timer;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    servo::test::RecordedNotice notice;
    base::Language language = base::Language::kEnglish;
    int unloads = 0;
    Seen seen;
    DigitalIO form{{engine, notice, language, [this] { ++unloads; }}};
    bool loaded = false;
};

// The form beside a drive on a line of 38400 baud.
struct LineIO : servo::test::VirtualBench {
    LineIO() {
        put_list(folder, shipped_list());
        form.Form_Load(folder.path());
    }

    // The whole block has been read since the link was opened.
    bool known() const {
        for (const auto& side : form.data().columns)
            for (const IoColumnState& column : side)
                if (!column.fresh) return false;
        for (int row = 0; row < kPinlessRow; ++row)
            if (!form.data().rows[static_cast<std::size_t>(row)].fresh) return false;
        return true;
    }
    void connect() {
        open_link();
        ASSERT_TRUE(run_until([this] { return known(); }, 10s));
        // A quiet start: the wheel at the beginning of a turn.
        ASSERT_TRUE(run_until([this] { return engine.state.Com_Change == 1; }, 10s));
    }
    // Until the wheel has been round once: lane 0, lane 1, and lane 1 again if it was asked for.
    void run_turn() {
        ASSERT_TRUE(run_until([this] { return engine.state.Com_Change == 0; }, 10s));
        ASSERT_TRUE(run_until([this] { return engine.state.Com_Change == 1; }, 10s));
    }
    std::vector<Write> writes() const {
        std::vector<Write> found;
        for (const FakeDrive::Request& request : drive.requests)
            if (is_write(request.payload)) found.push_back(write_of(request.payload));
        return found;
    }

    base::Language language = base::Language::kEnglish;
    int unloads = 0;
    FakeDrive drive{time, line};
    DigitalIO form{{engine, notice, language, [this] { ++unloads; }}};
};

}  // namespace servo::tools::test
