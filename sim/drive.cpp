#include "sim/drive.h"

#include <algorithm>
#include <utility>

#include "sim/drive_parts.h"

namespace servo::sim {

using std::chrono::microseconds;

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

bool Drive::in_bootloader() const {
    return parts_->phase == Parts::Phase::kBootloader;
}

const BlockStore& Drive::program_memory() const {
    return parts_->bootloader.store();
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

void Drive::set_fault_causes(std::uint16_t word1, std::uint16_t word2) {
    parts_->motion.set_causes(word1, word2);
}

std::uint16_t Drive::fault_causes1() const {
    return parts_->motion.causes1();
}

std::uint16_t Drive::fault_causes2() const {
    return parts_->motion.causes2();
}

void Drive::set_load_torque(double newton_metres) {
    parts_->motion.set_load_torque(newton_metres);
}

void Drive::set_pin(int pin, bool high) {
    parts_->motion.inputs().set_pin(pin, high);
}

void Drive::pulse_pin(int pin, microseconds time) {
    // At least one step of 62.5 us.
    parts_->motion.inputs().pulse_pin(pin, std::max<std::int64_t>(1, time.count() * 2 / 125));
}

std::uint8_t Drive::input_pins() const {
    return parts_->motion.inputs().pins();
}

std::uint8_t Drive::output_pins() const {
    return parts_->motion.outputs().pins();
}

void Drive::hold_load(bool hold) {
    parts_->motion.hold_load(hold);
}

void Drive::power_cycle() {
    parts_->called = false;
    parts_->announces = true;
    parts_->restart();
}

const std::vector<std::string>& Drive::complaints() const {
    return parts_->complaints;
}

LineFaults& Drive::faults() {
    return parts_->options.faults;
}

BootOptions& Drive::boot_options() {
    return parts_->options.boot;
}

const Statistics& Drive::statistics() const {
    return parts_->statistics;
}

}  // namespace servo::sim
