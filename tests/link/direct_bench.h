// The engine stepped by hand, with answers fed straight into its port.
#pragma once

#include <optional>
#include <vector>

#include "link/engine.h"
#include "support/direct_port.h"
#include "support/fake_drive.h"
#include "support/fakes.h"

namespace servo::test {

struct DirectBench {
    // One tick; the payload that it sent, if any.
    std::optional<link::Payload> tick() {
        port.sent.clear();
        engine.cTmr_Timer();
        if (port.sent.size() < link::kFrameSize) return std::nullopt;
        link::Payload payload{};
        std::copy_n(port.sent.begin() + 1, payload.size(), payload.begin());
        return payload;
    }

    // A send tick and its receive tick, with what the drive says in between. The identity asked
    // for; 0 when nothing was sent.
    link::Identity turn(const std::vector<std::uint8_t>& said = {}) {
        engine.state.sendmod = 0;
        const auto sent = tick();
        port.feed(said);
        tick();
        return sent ? link::reply_key(*sent) : 0;
    }

    // A turn that answers whatever it asks with a value.
    link::Identity answered_turn(std::uint32_t value = 0, std::uint8_t command = 0x43) {
        engine.state.sendmod = 0;
        const auto sent = tick();
        if (sent) feed(answer(link::reply_key(*sent), value, command));
        tick();
        return sent ? link::reply_key(*sent) : 0;
    }

    void feed(const link::Payload& payload) { port.feed(FakeDrive::frame_of(payload)); }

    static link::Payload answer(link::Identity object, std::uint32_t value,
                                std::uint8_t command = 0x43) {
        return {command,
                static_cast<std::uint8_t>(object >> 8),
                static_cast<std::uint8_t>(object >> 16),
                static_cast<std::uint8_t>(object),
                static_cast<std::uint8_t>(value),
                static_cast<std::uint8_t>(value >> 8),
                static_cast<std::uint8_t>(value >> 16),
                static_cast<std::uint8_t>(value >> 24)};
    }
    static std::vector<std::uint8_t> frame(link::Identity object, std::uint32_t value,
                                           std::uint8_t command = 0x43) {
        return FakeDrive::frame_of(answer(object, value, command));
    }

    DirectPort port;
    RecordingClock clock;
    RecordingTimer timer;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    link::EngineState& state = engine.state;
};

}  // namespace servo::test
