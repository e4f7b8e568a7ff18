// What a Drive is made of. For the two sources of the class only.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "sim/bootloader.h"
#include "sim/drive.h"
#include "sim/fault_history.h"
#include "sim/frame.h"
#include "sim/installed_firmware.h"
#include "sim/line_faults.h"
#include "sim/live_values.h"
#include "sim/memory.h"
#include "sim/motion.h"
#include "sim/object_ids.h"
#include "sim/object_server.h"
#include "sim/object_table.h"
#include "sim/pdo.h"
#include "sim/recorder.h"
#include "sim/service_commands.h"
#include "sim/supervision.h"

namespace servo::sim {

struct Drive::Parts {
    using microseconds = std::chrono::microseconds;

    // kDeaf: another protocol was chosen for the line, so there is nothing to understand; or
    // nothing goes on inside. Only power off and on again helps.
    enum class Phase : std::uint8_t { kRunning, kEnding, kStarting, kBootloader, kDeaf };
    struct Request {
        Payload payload{};
        microseconds due{0};
    };

    Parts(const dictionary::Store& store, Options given);

    void advance(microseconds to);
    void take_byte(std::uint8_t byte, microseconds at);
    std::optional<microseconds> next_event() const;
    void handle_event();
    void execute(const Request& request);
    void send(const Answer& answer, microseconds ready);
    void power_up(bool first);
    void set_up_line();
    microseconds turnaround() const;
    void begin_start(microseconds time);
    void restart();
    bool at_first_value(dictionary::Identity object) const;
    void start_program(bool memory_is_good);
    void start_bootloader(bool first);
    void serve_bootloader();
    void send_text(const Bootloader::Reply& reply);
    Abort gate(dictionary::Identity object) const;
    std::string value_table_text() const;

    Options options;
    Statistics statistics;
    std::vector<std::string> complaints;
    ObjectTable table;
    Memory memory;
    Supervision supervision{table};
    FaultHistory history{table, memory};
    Recorder recorder{table};
    Motion motion{table, supervision, history, recorder};
    LiveValues live;
    ServiceCommands commands{table, memory};
    PdoSetup pdos{table};
    InstalledFirmware firmware{table, memory};
    Bootloader bootloader{options.boot, firmware, statistics};
    ObjectServer server{table, [this](dictionary::Identity object) { return gate(object); }};
    Object& line_id{table.bind(ids::kSerialId, Type::kUint8)};
    Object& line_divider{table.bind(ids::kSerialBaud, Type::kUint16)};
    Object& line_protocol;
    Object& reply_delay{table.bind(ids::kReplyDelay, Type::kUint16)};
    Object& receive_errors{table.bind(ids::kReceiveErrors, Type::kUint16)};
    std::uint8_t id;
    std::uint32_t baud;
    FrameReader reader;
    LineFaultMaker fault_maker;

    Phase phase = Phase::kRunning;
    microseconds now{0};
    microseconds phase_ends{0};  // of kEnding and kStarting
    // The start under way leads to the bootloader, whether there is a program or not.
    bool called = false;
    bool announces = true;      // the bootloader, once it has started
    microseconds free_at{0};    // when the last request is done with
    microseconds line_free{0};  // when the last answer has left
    std::deque<Request> queue;
    std::vector<Transmission> output;
};

}  // namespace servo::sim
