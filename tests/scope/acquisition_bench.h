// The acquisition on an engine with a port that keeps what is sent; answers are handed in.
#pragma once

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "scope/acquisition.h"
#include "scope/channel_lists.h"
#include "scope/scope_world.h"
#include "support/fake_drive.h"

namespace servo::scope::test {

// A request on the line.
struct Sent {
    int command = 0;
    link::Identity object = 0;
    std::uint32_t value = 0;
    bool operator==(const Sent&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Sent& sent) {
    return out << std::hex << sent.command << ' ' << sent.object << " := " << sent.value;
}

inline Sent write1(int sub, std::uint32_t value) {
    return {0x2F, 0x230000 + sub, value};
}
inline Sent write2(int sub, std::uint32_t value) {
    return {0x2B, 0x230000 + sub, value};
}
inline Sent write4(int sub, std::uint32_t value) {
    return {0x23, 0x230000 + sub, value};
}
inline Sent read_of(int sub) {
    return {0x40, 0x230000 + sub, 0};
}

inline std::vector<Sent> sent_in(const std::vector<std::uint8_t>& bytes) {
    std::vector<Sent> list;
    for (std::size_t at = 0; at + link::kFrameSize <= bytes.size(); at += link::kFrameSize) {
        link::Payload payload{};
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1, 8, payload.begin());
        list.push_back({payload[0], link::reply_key(payload),
                        static_cast<std::uint32_t>(link::reply_value(payload, 4))});
    }
    return list;
}

// Values of slots.
inline constexpr std::uint32_t kCurrent = 0x60780010;         // int16, item 1
inline constexpr std::uint32_t kQCurrent = 0x60F60C10;        // int16, item 2
inline constexpr std::uint32_t kNarrowSpeed = 0x60F91610;     // int16, item 3
inline constexpr std::uint32_t kPosition = 0x60630020;        // int32, item 4
inline constexpr std::uint32_t kFollowingError = 0x60FB0820;  // int32, item 6
inline constexpr std::uint32_t kState = 0x20010108;           // uint8, not offered

struct AcquisitionBench {
    explicit AcquisitionBench(const std::vector<RawRecord>& objects = usual_objects())
        : dictionary(dictionary::store_of(objects)) {
        engine.set_scope(&acquisition);
        for (ScopeChannel& channel : data.channels)
            offer_first_objects(channel, dictionary, language);
        values.operands.o64100320 = {10000, true};
    }

    // What was sent since the last call.
    std::vector<Sent> sent() { return sent_in(port.take_sent()); }

    static link::Payload payload(int command, link::Identity object, std::uint32_t value = 0) {
        return {static_cast<std::uint8_t>(command),      static_cast<std::uint8_t>(object >> 8),
                static_cast<std::uint8_t>(object >> 16), static_cast<std::uint8_t>(object),
                static_cast<std::uint8_t>(value),        static_cast<std::uint8_t>(value >> 8),
                static_cast<std::uint8_t>(value >> 16),  static_cast<std::uint8_t>(value >> 24)};
    }
    link::Received say(const link::Payload& said) {
        return acquisition.receive_frame(engine, said);
    }
    // A read answer of a setting.
    link::Received setting(int sub, std::uint32_t value, int command = 0x43) {
        return say(payload(command, 0x230000 + sub, value));
    }
    // Subs 1 to 6 in their order.
    void settings(const std::vector<std::uint32_t>& slots) {
        for (std::size_t i = 0; i < slots.size(); ++i)
            setting(static_cast<int>(i) + 1, slots[i]);
    }
    link::Received status(std::uint8_t value, int command = 0x4F) {
        return say(payload(command, 0x230007, value));
    }
    link::Received segment(int command, std::vector<std::uint8_t> bytes = {1, 2, 3, 4, 5, 6, 7}) {
        link::Payload said{static_cast<std::uint8_t>(command)};
        bytes.resize(7);
        std::copy(bytes.begin(), bytes.end(), said.begin() + 1);
        return say(said);
    }

    // One tick of the engine; what it sent.
    std::vector<Sent> tick() {
        engine.cTmr_Timer();
        return sent();
    }
    // Answers wait at the port.
    void feed(const link::Payload& said) { port.feed(servo::test::FakeDrive::frame_of(said)); }
    // The refresh begins with the next tick, which sends.
    void enter_refresh() {
        engine.state.Com_Change = 0;
        engine.state.status_lane = 2;
        engine.state.sub_Pointer = 0;
        engine.state.rotation = 0;
        engine.state.sendmod = 0;
    }
    // A send tick and its receive tick; the drive answers what it was asked for by `slots` (subs 1
    // to 6, 0 for the others).
    void refresh_turn(const std::vector<std::uint32_t>& slots) {
        for (const Sent& asked : tick()) {
            const auto sub = static_cast<std::size_t>(asked.object & 0xFF);
            feed(payload(0x43, asked.object, sub <= slots.size() ? slots[sub - 1] : 0));
        }
        tick();
    }

    // Ready to start: channel 1 records item 1.
    void tick_channel(int index, int item) {
        acquisition.pick_object(index, item);
        acquisition.click_enable(index);
        sent();
    }
    ScopeChannel& channel(int index) { return data.channels.at(static_cast<std::size_t>(index)); }
    // What channel `index` records by the list; 0 without a tick.
    dictionary::Identity recorded(int index) {
        const ScopeChannel& curve = channel(index);
        return curve.enable && curve.picked() != nullptr ? curve.picked()->key : 0;
    }
    std::vector<std::uint8_t> raw() const {
        return {data.rawBytes.begin(), data.rawBytes.begin() + data.rawLength};
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
    ScopeData data;
    std::vector<std::string> events;  // what followed, with the state of the button
    int changes = 0;
    Acquisition acquisition{{.engine = engine,
                             .dictionary = dictionary,
                             .notice = notice,
                             .language = language,
                             .link_open = [this] { return open; }},
                            data,
                            {.changed = [this] { note_button(); },
                             .Movingdata = [this] { events.push_back("Movingdata"); },
                             .DrawPicture = [this] { events.push_back("DrawPicture"); }}};

  private:
    void note_button() {
        ++changes;
        if (data.sampling == shown_) return;
        shown_ = data.sampling;
        events.push_back(shown_ ? "Sampling" : "Start");
    }
    bool shown_ = false;
};

}  // namespace servo::scope::test
