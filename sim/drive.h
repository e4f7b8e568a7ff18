// The simulated drive: a line on one side, a motor with its load on the other, objects between.
//
// It has no clock and no thread. Time is handed in, in microseconds since the drive was made, and
// never goes back (that is a programming error and ends the program). All chance is seeded, so the
// same calls give the same bytes.
//
// A host that moves the bytes does, in a loop: receive() what has come in, advance() to
// next_event() or to its own next point of time, take_output() and put the bytes on its line.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "sim/block_store.h"
#include "sim/options.h"
#include "sim/statistics.h"

namespace servo::sim {

// Bytes that the drive hands to its transmitter: the first may start on the line at `at`. The drive
// leaves room for the frame before, so at the rate of Options::baud none waits for another.
struct Transmission {
    std::chrono::microseconds at{0};
    std::vector<std::uint8_t> bytes;
};

class Drive {
  public:
    // `store` must outlive the drive.
    Drive(const dictionary::Store& store, Options options);
    ~Drive();
    Drive(Drive&&) noexcept;
    Drive& operator=(Drive&&) noexcept;

    // The last of `bytes` is complete on the line at `now`, the ones before it back to back.
    void receive(std::span<const std::uint8_t> bytes, std::chrono::microseconds now);

    // Runs model, timers and waiting requests up to and including `now`.
    void advance(std::chrono::microseconds now);

    // What has become ready to send since the last call, in the order of sending.
    std::vector<Transmission> take_output();

    // When advance() will have something to do beside turning the motor; nothing when the drive
    // only waits for bytes.
    std::optional<std::chrono::microseconds> next_event() const;

    std::chrono::microseconds now() const;

    // False from a restart command or power_cycle() until the program listens again, all the time
    // in the bootloader, and for good with another protocol on the line.
    bool running() const;

    // The bootloader listens.
    bool in_bootloader() const;

    // What the bootloader has stored since its last erase; stays there when the program runs.
    const BlockStore& program_memory() const;

    // Of the line. Another rate can be stored in the drive; it is in force after a restart.
    std::uint32_t baud() const;

    // Objects, past the line. A value is the number of the object's own signed or unsigned type, as
    // of now(); nothing for an unknown object or the wrong kind. Setting obeys neither flags nor
    // limits and is what the firmware itself would do; it is cut to the object's width. An object
    // that follows from the drive's state shows the state again when it is read.
    std::optional<std::int64_t> value(dictionary::Identity object);
    bool set_value(dictionary::Identity object, std::int64_t value);
    std::optional<std::string> text(dictionary::Identity object);
    bool set_text(dictionary::Identity object, std::string_view text);

    // Raises fault bits now, as a cause that comes and goes would: masked bits are not seen, the
    // others are latched until a fault reset.
    void provoke_fault(std::uint16_t word1, std::uint16_t word2 = 0);

    // Causes of fault bits that stand until they are taken away by another call: a reset does not
    // clear them, a restart finds them again. In force within a millisecond.
    void set_fault_causes(std::uint16_t word1, std::uint16_t word2);
    std::uint16_t fault_causes1() const;
    std::uint16_t fault_causes2() const;

    // Torque of the machine against the motor's positive direction, in Nm; stays until the next
    // call.
    void set_load_torque(double newton_metres);

    // Levels at the input pins, 0 to 7 for inputs 1 to 8: for good, or the other level for a while.
    // In force with the model's next step.
    void set_pin(int pin, bool high);
    void pulse_pin(int pin, std::chrono::microseconds time);
    // Bit i for pin i: levels at the inputs, and which outputs conduct.
    std::uint8_t input_pins() const;
    std::uint8_t output_pins() const;

    // Clamps the load, so that the motor can only twist the shaft.
    void hold_load(bool hold);

    // Supply off and on again: everything that was not stored is lost, the drive is silent while it
    // starts. Requests and answers under way are lost.
    void power_cycle();

    // What was wrong with the value table and the settings; such lines are left out.
    const std::vector<std::string>& complaints() const;

    // May be changed at any time.
    LineFaults& faults();
    BootOptions& boot_options();
    const Statistics& statistics() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace servo::sim
