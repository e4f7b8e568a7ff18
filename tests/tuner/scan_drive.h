// A drive that answers a scan out of given blocks, for tests of the workstation's side alone.
#pragma once

#include <vector>

#include "support/fake_drive.h"
#include "tuner/tuner_data.h"

namespace servo::test {

struct ScanDrive : FakeDrive {
    ScanDrive(VirtualTime& time, VirtualLine& wire) : FakeDrive(time, wire) {
        for (const link::WireKey key : {0x30400202, 0x30400302, 0x30400402, 0x60F91002, 0x30400101,
                                        0x30400A01, 0x30400504, 0x60F90102, 0x60F90202})
            add(key, 0);
        objects[0x30400A].value = 6;
        objects[0x641003].value = 131072;
        objects[0x651003].value = 240;
        objects[0x60F901].value = 300;
        objects[0x60F902].value = 40;
        answers = [this](const link::Payload& request) {
            heard(request);
            return true;
        };
    }

    // An answer was made from the objects as they are; this prepares the next one.
    void heard(const link::Payload& request) {
        const link::Identity object = link::reply_key(request);
        if (!objects.contains(object)) return;
        const std::int64_t value = objects.at(object).value;
        if (object == 0x304005 && request[0] == link::kWrite4) {
            addresses.push_back(value);
            objects[object].value = words_at(static_cast<std::size_t>(value));
        } else if (object == 0x304001 && request[0] == link::kWrite1) {
            commands.push_back(value);
            polls_left = polls;
        } else if (object == 0x304001 && request[0] == link::kRead && polls_left-- <= 0) {
            objects[object].value = 0;
        }
    }
    std::int64_t words_at(std::size_t address) const {
        if (address < 1024) {
            const std::size_t point = address / 2;
            return static_cast<std::uint16_t>(blocks.commandA.at(point)) |
                   std::int64_t{static_cast<std::uint16_t>(blocks.commandB.at(point))} << 16;
        }
        const auto sum =
            static_cast<std::uint32_t>(blocks.response.at((address - 1024) / 2 % 1001));
        return (sum >> 16) | (sum & 0xFFFFU) << 16;  // the upper half comes first
    }
    // Values that tell their place, of both signs.
    void fill() {
        for (std::size_t i = 0; i < blocks.commandA.size(); ++i) {
            blocks.commandA[i] = static_cast<std::int16_t>(31 * static_cast<int>(i) - 5000);
            blocks.commandB[i] = static_cast<std::int16_t>(4000 - 17 * static_cast<int>(i));
        }
        for (std::size_t i = 0; i < blocks.response.size(); ++i)
            blocks.response[i] = static_cast<std::int32_t>(i * 2654435761U);
    }

    tuner::ScanBuffers blocks;
    int polls = 5;  // reads of the state before the scan is over
    int polls_left = 0;
    std::vector<std::int64_t> addresses;  // every write, repeated ones too
    std::vector<std::int64_t> commands;
};

}  // namespace servo::test
