#include "sim/drive_parts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "base/file.h"

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

// The same for the bootloader, and from the start of a program that hangs until the watchdog ends
// it.
constexpr microseconds kBootTime{150'000};
constexpr microseconds kWatchdogTime{500'000};

std::int64_t divider(std::uint32_t baud) {
    return (kBaudClock + baud / 2) / baud;
}

bool contains(const std::vector<dictionary::Identity>& list, dictionary::Identity id) {
    return std::find(list.begin(), list.end(), id) != list.end();
}

}  // namespace

Drive::Parts::Parts(const dictionary::Store& store, Options given)
    : options(std::move(given)),
      table(store, parse_value_table(value_table_text())),
      memory(options.state_file),
      live(table, motion, supervision, options.seed),
      line_protocol(table.bind(ids::kSerialProtocol, Type::kUint8, kFrameProtocol)),
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
    for (int pin = 0; pin < kInputPins; ++pin)
        motion.inputs().set_pin(pin, (options.pins >> pin & 1U) != 0);
    if (options.rail) motion.set_rail(*options.rail);
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
}

microseconds Drive::Parts::turnaround() const {
    return options.turnaround + reply_delay.value * kReplyDelayUnit;
}

// What was given on the command line goes before what is stored, at the first power-up.
bool Drive::Parts::at_first_value(dictionary::Identity object) const {
    const auto same = [&](const Setting& setting) { return setting.object == object; };
    return object == line_id.id || object == line_divider.id ||
           std::any_of(options.settings.begin(), options.settings.end(), same);
}

void Drive::Parts::power_up(bool first) {
    const bool memory_is_good = memory.load();
    if (first && options.bootloader) firmware.invalidate();
    table.reset_values();
    const auto but = [&](dictionary::Identity object) { return first && at_first_value(object); };
    commands.recall(but);
    firmware.show(but);
    set_up_line();
    server.reset();
    queue.clear();
    start_program(memory_is_good);
    if (called || !firmware.valid()) start_bootloader(first);
}

void Drive::Parts::start_program(bool memory_is_good) {
    history.power_up();
    recorder.reset();
    supervision.power_up();
    motion.power_up();
    const unsigned damaged = memory_is_good ? 0U : fault1::kMemory;
    motion.raise(static_cast<std::uint16_t>(options.fault1 | damaged), options.fault2);
}

// A drive that has just been made is already up, so it has nothing to announce.
void Drive::Parts::start_bootloader(bool first) {
    motion.power_down();
    phase = Phase::kBootloader;
    bootloader.start(id, baud);
    if (!first && announces) bootloader.announce(now);
    serve_bootloader();
}

void Drive::Parts::serve_bootloader() {
    for (const Bootloader::Reply& reply : bootloader.take_replies())
        send_text(reply);
    switch (bootloader.take_outcome()) {
        case Bootloader::Outcome::kStay:
            return;
        case Bootloader::Outcome::kStart:
            called = false;
            begin_start(kStartTime);
            return;
        case Bootloader::Outcome::kReturn:
            called = true;
            announces = true;
            begin_start(kWatchdogTime);
            return;
        case Bootloader::Outcome::kHang:
            phase = Phase::kDeaf;
            return;
    }
}

void Drive::Parts::restart() {
    begin_start(called || !firmware.valid() ? kBootTime : kStartTime);
}

// Power off, or the processor starts anew: nothing is heard, nothing said, no power to the motor.
void Drive::Parts::begin_start(microseconds time) {
    phase = Phase::kStarting;
    phase_ends = now + time;
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
            return bootloader.next_event();
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
            restart();
            return;
        case Phase::kStarting:
            power_up(false);
            return;
        case Phase::kBootloader:
            bootloader.handle_event(now);
            serve_bootloader();
            return;
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
        called = wishes.bootloader;
        announces = !called || !options.boot.silent.contains(BootStep::kEntry);
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

void Drive::Parts::send_text(const Bootloader::Reply& reply) {
    ++statistics.texts;
    const LineFaults& faults = options.faults;
    if (faults.silent) {
        ++statistics.dropped;
        return;
    }
    std::vector<std::uint8_t> bytes = fault_maker.pass_text(reply.text, faults, statistics);
    if (bytes.empty()) return;
    const microseconds at = std::max(reply.ready + options.turnaround + faults.delay, line_free);
    line_free = at + line_time(bytes.size(), baud);
    output.push_back({at, std::move(bytes)});
}

void Drive::Parts::take_byte(std::uint8_t byte, microseconds at) {
    if (phase == Phase::kBootloader) {
        bootloader.take(byte, at);
        serve_bootloader();
        return;
    }
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

}  // namespace servo::sim
