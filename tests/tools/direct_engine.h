// An engine on a port without a line: what a form writes is there to be looked at, what the drive
// says is fed by hand.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/language.h"
#include "link/drive_values.h"
#include "link/engine.h"
#include "support/direct_port.h"
#include "support/fake_drive.h"

namespace servo::tools::test {

struct DirectEngine {
    DirectEngine() { engine.link_opened(); }

    // An answer of the drive, while the status lanes run.
    void answer(link::WireKey key, std::uint32_t value, std::uint8_t command = 0x4B) {
        link::Payload payload{};
        payload[0] = command;
        payload[1] = static_cast<std::uint8_t>(key >> 16);
        payload[2] = static_cast<std::uint8_t>(key >> 24);
        payload[3] = static_cast<std::uint8_t>(key >> 8);
        for (std::size_t i = 0; i < 4; ++i)
            payload[4 + i] = static_cast<std::uint8_t>(value >> 8 * i);
        engine.state.sendmod = 1;
        engine.state.Com_Change = 0;
        port.feed(servo::test::FakeDrive::frame_of(payload));
        engine.cTmr_Timer();
    }
    // Payloads that have left since the last call.
    std::vector<link::Payload> sent() {
        std::vector<link::Payload> payloads;
        const auto bytes = port.take_sent();
        for (std::size_t at = 0; at + 10 <= bytes.size(); at += 10) {
            link::Payload& payload = payloads.emplace_back();
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1, payload.size(),
                        payload.begin());
        }
        return payloads;
    }

    servo::test::DirectPort port;
    servo::test::RecordingClock clock;
    servo::test::RecordingTimer timer;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    base::Language language = base::Language::kEnglish;
};

}  // namespace servo::tools::test
