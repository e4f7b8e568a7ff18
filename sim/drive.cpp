#include "sim/drive.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <utility>

#include "base/file.h"
#include "sim/fault_history.h"
#include "sim/frame.h"
#include "sim/line_faults.h"
#include "sim/live_values.h"
#include "sim/memory.h"
#include "sim/motion.h"
#include "sim/object_ids.h"
#include "sim/object_server.h"
#include "sim/object_table.h"
#include "sim/recorder.h"
#include "sim/service_commands.h"
#include "sim/supervision.h"

namespace servo::sim {

namespace {

using std::chrono::microseconds;

// Requests that wait while the drive is busy. One more is lost.
constexpr std::size_t kQueueFrames = 16;

// The serial line's rate is a divider of this clock.
constexpr std::uint32_t kBaudClock = 10'368'000;

constexpr std::int64_t kFrameProtocol = 1;
constexpr std::int64_t kMostErrors = 0xFFFF;
constexpr microseconds kReplyDelayUnit{100};

// From a restart, or from power on, until the drive listens.
constexpr microseconds kStartTime{1'200'000};

std::int64_t divider(std::uint32_t baud) {
    return (kBaudClock + baud / 2) / baud;
}

bool contains(const std::vector<dictionary::Identity>& list, dictionary::Identity id) {
    return std::find(list.begin(), list.end(), id) != list.end();
}

}  // namespace

struct Drive::Parts {
    // kDeaf: another protocol was chosen for the line, so there is nothing to understand.
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
    void go_silent();
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
    ObjectServer server{table, [this](dictionary::Identity object) { return gate(object); }};
    Object& line_id{table.bind(ids::kSerialId, Type::kUint8)};
    Object& line_divider{table.bind(ids::kSerialBaud, Type::kUint16)};
    Object& line_protocol{table.bind(ids::kSerialProtocol, Type::kUint8, kFrameProtocol)};
    Object& reply_delay{table.bind(ids::kReplyDelay, Type::kUint16)};
    Object& receive_errors{table.bind(ids::kReceiveErrors, Type::kUint16)};
    std::uint8_t id;
    std::uint32_t baud;
    FrameReader reader;
    LineFaultMaker fault_maker;

    Phase phase = Phase::kRunning;
    microseconds now{0};
    microseconds phase_ends{0};  // of kEnding and kStarting
    microseconds free_at{0};     // when the last request is done with
    microseconds line_free{0};   // when the last answer has left
    std::deque<Request> queue;
    std::vector<Transmission> output;
};

Drive::Parts::Parts(const dictionary::Store& store, Options given)
    : options(std::move(given)),
      table(store, parse_value_table(value_table_text())),
      memory(options.state_file),
      live(table, motion, supervision, options.seed),
      id(options.id),
      baud(options.baud),
      reader(id, baud),
      fault_maker(mix(options.seed)) {
    complaints = table.complaints();
    line_id.factory = options.id;
    line_divider.factory = divider(options.baud);
    for (const Setting& setting : options.settings) {
        if (table.set_factory(setting.object, setting.value)) continue;
        complaints.push_back(
            fmt::format("{:06X}: can't be set to {}", setting.object, setting.value));
    }
    power_up(true);
}

std::string Drive::Parts::value_table_text() const {
    if (!options.values.empty() || options.data.empty()) return options.values;
    return base::read_file(options.data / "sim" / "values.tsv").value_or(std::string{});
}

Abort Drive::Parts::gate(dictionary::Identity object) const {
    return contains(options.faults.abort, object) ? Abort::kGeneral : Abort::kNone;
}

// The line's own settings change with a restart only: whoever changes them still gets the answer in
// the old way.
void Drive::Parts::set_up_line() {
    id = static_cast<std::uint8_t>(line_id.value);
    const bool as_given = line_divider.value == divider(options.baud);
    const auto chosen = static_cast<std::uint32_t>(std::max<std::int64_t>(line_divider.value, 1));
    baud = as_given ? options.baud : kBaudClock / chosen;
    reader = FrameReader(id, baud);
    phase = line_protocol.value == kFrameProtocol ? Phase::kRunning : Phase::kDeaf;
    if (options.bootloader) phase = Phase::kBootloader;
}

microseconds Drive::Parts::turnaround() const {
    return options.turnaround + reply_delay.value * kReplyDelayUnit;
}

void Drive::Parts::power_up(bool first) {
    const bool memory_is_good = memory.load();
    table.reset_values();
    commands.recall([&](dictionary::Identity object) {
        const auto same = [&](const Setting& setting) { return setting.object == object; };
        const bool of_the_line = object == line_id.id || object == line_divider.id;
        return first &&
               (of_the_line || std::any_of(options.settings.begin(), options.settings.end(), same));
    });
    set_up_line();
    history.power_up();
    recorder.reset();
    supervision.power_up();
    motion.power_up();
    const unsigned damaged = memory_is_good ? 0U : fault1::kMemory;
    motion.raise(static_cast<std::uint16_t>(options.fault1 | damaged), options.fault2);
    server.reset();
    queue.clear();
}

// Power off, or the processor starts anew: nothing is heard, nothing said, no power to the motor.
void Drive::Parts::go_silent() {
    phase = Phase::kStarting;
    phase_ends = now + kStartTime;
    motion.power_down();
    recorder.reset();
    queue.clear();
    output.erase(std::remove_if(output.begin(), output.end(),
                                [&](const Transmission& t) { return t.at > now; }),
                 output.end());
    line_free = std::min(line_free, now);
    free_at = now;
}

std::optional<microseconds> Drive::Parts::next_event() const {
    switch (phase) {
        case Phase::kRunning:
            if (queue.empty()) return std::nullopt;
            return std::max(queue.front().due, free_at + turnaround());
        case Phase::kEnding:
        case Phase::kStarting:
            return phase_ends;
        case Phase::kBootloader:
        case Phase::kDeaf:
            return std::nullopt;
    }
    return std::nullopt;
}

void Drive::Parts::advance(microseconds to) {
    if (to < now) {
        fmt::print(stderr, "the simulated drive can't go back in time: {} us to {} us\n",
                   now.count(), to.count());
        std::abort();
    }
    while (const auto event = next_event()) {
        if (*event > to) break;
        now = std::max(now, *event);
        motion.run_to(now);
        handle_event();
    }
    now = to;
    motion.run_to(now);
}

void Drive::Parts::handle_event() {
    switch (phase) {
        case Phase::kRunning: {
            const Request request = queue.front();
            queue.pop_front();
            execute(request);
            return;
        }
        case Phase::kEnding:
            go_silent();
            return;
        case Phase::kStarting:
            power_up(false);
            return;
        case Phase::kBootloader:
        case Phase::kDeaf:
            return;
    }
}

void Drive::Parts::execute(const Request& request) {
    free_at = now;
    const auto answer = server.handle(request.payload);
    const ServiceCommands::Wishes wishes = commands.take_wishes();
    if (wishes.memory_failed) motion.raise(fault1::kMemory, 0);
    free_at = now + wishes.busy;
    if (answer) send(*answer, free_at);
    // The acknowledgement of a restart still goes out whole.
    if (wishes.restart) {
        phase = Phase::kEnding;
        phase_ends = std::max(now, line_free);
    }
}

void Drive::Parts::send(const Answer& answer, microseconds ready) {
    ++statistics.answers;
    if (answer.refused) ++statistics.aborts;
    const LineFaults& faults = options.faults;
    if (faults.silent || contains(faults.mute, answer.object)) {
        ++statistics.dropped;
        return;
    }
    std::vector<std::uint8_t> bytes =
        fault_maker.pass(make_frame(id, answer.payload), faults, statistics);
    if (bytes.empty()) return;
    const microseconds at = std::max(ready + faults.delay, line_free);
    line_free = at + line_time(bytes.size(), baud);
    output.push_back({at, std::move(bytes)});
}

void Drive::Parts::take_byte(std::uint8_t byte, microseconds at) {
    if (phase != Phase::kRunning) return;
    const FrameReader::Result result = reader.take(byte, at);
    if (result.ended_broken) ++statistics.broken;
    switch (result.event) {
        case FrameReader::Event::kNone:
            return;
        case FrameReader::Event::kForeign:
            ++statistics.foreign;
            return;
        case FrameReader::Event::kBadSum:
            ++statistics.bad_checksum;
            receive_errors.value = std::min(receive_errors.value + 1, kMostErrors);
            return;
        case FrameReader::Event::kFrame:
            ++statistics.frames;
            if (queue.size() < kQueueFrames) {
                queue.push_back({reader.payload(), at + turnaround()});
            } else {
                ++statistics.overruns;
            }
            return;
    }
}

Drive::Drive(const dictionary::Store& store, Options options)
    : parts_(std::make_unique<Parts>(store, std::move(options))) {}
Drive::~Drive() = default;
Drive::Drive(Drive&&) noexcept = default;
Drive& Drive::operator=(Drive&&) noexcept = default;

void Drive::receive(std::span<const std::uint8_t> bytes, microseconds now) {
    Parts& p = *parts_;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const microseconds at = now - line_time(bytes.size() - 1 - i, p.baud);
        if (at > p.now) p.advance(at);
        p.take_byte(bytes[i], at);
    }
    p.advance(now);
}

void Drive::advance(microseconds now) {
    parts_->advance(now);
}

std::vector<Transmission> Drive::take_output() {
    return std::exchange(parts_->output, {});
}

std::optional<microseconds> Drive::next_event() const {
    return parts_->next_event();
}

microseconds Drive::now() const {
    return parts_->now;
}

bool Drive::running() const {
    return parts_->phase == Parts::Phase::kRunning;
}

std::uint32_t Drive::baud() const {
    return parts_->baud;
}

std::optional<std::int64_t> Drive::value(dictionary::Identity id) {
    Object* const object = parts_->table.find(id);
    if (object == nullptr || !object->is_number()) return std::nullopt;
    return parts_->table.read(*object);
}

bool Drive::set_value(dictionary::Identity id, std::int64_t value) {
    Object* const object = parts_->table.find(id);
    if (object == nullptr || !object->is_number()) return false;
    parts_->table.store(*object, value);
    return true;
}

std::optional<std::string> Drive::text(dictionary::Identity id) {
    Object* const object = parts_->table.find(id);
    if (object == nullptr || object->is_number()) return std::nullopt;
    return parts_->table.read_text(*object);
}

bool Drive::set_text(dictionary::Identity id, std::string_view text) {
    Object* const object = parts_->table.find(id);
    if (object == nullptr || object->is_number()) return false;
    object->text = text;
    return true;
}

void Drive::provoke_fault(std::uint16_t word1, std::uint16_t word2) {
    parts_->motion.raise(word1, word2);
}

void Drive::set_load_torque(double newton_metres) {
    parts_->motion.set_load_torque(newton_metres);
}

void Drive::hold_load(bool hold) {
    parts_->motion.hold_load(hold);
}

void Drive::power_cycle() {
    parts_->go_silent();
}

const std::vector<std::string>& Drive::complaints() const {
    return parts_->complaints;
}

LineFaults& Drive::faults() {
    return parts_->options.faults;
}

const Statistics& Drive::statistics() const {
    return parts_->statistics;
}

}  // namespace servo::sim
