// One step of everything between a set-point and the shaft: position loop, velocity loop, current
// loop, supply, motor and load, encoder. All in encoder counts, seconds, amperes (peak of the
// phase) and newton metres.
#pragma once

#include <array>
#include <cstdint>

#include "sim/model/current_loop.h"
#include "sim/model/low_pass.h"
#include "sim/model/plant.h"
#include "sim/model/supply.h"

namespace servo::sim {

struct AxisSetup {
    PlantSetup plant;
    CurrentSetup current;
    SupplySetup supply;
    double torque_constant = 0.345;   // Nm per ampere, of the motor as it is
    std::int64_t resolution = 10000;  // counts per turn, of the encoder as it is

    double velocity_kp = 0.0;         // A per count/s
    double velocity_ki = 0.0;         // A per count
    double integral_limit = 0.0;      // A
    double reference_share = 1.0;     // of the demand in the proportional part: 1 PI, 0 IP
    double speed_filter = 500.0;      // corner of the speed feedback's low pass, Hz; 0: none
    double torque_filter = 0.0;       // corner between velocity and current loop, Hz; 0: none
    double position_kp = 0.0;         // count/s per count
    double position_limit = 0.0;      // of the position loop's output, counts/s
    double speed_feed_forward = 0.0;  // part of the set-point's speed
    double current_high = 0.0;        // A, 0 or above
    double current_low = 0.0;         // A, 0 or below
};

enum class Loop : std::uint8_t { kOff, kCurrent, kVelocity, kPosition };

struct SetPoint {
    Loop loop = Loop::kOff;
    double current = 0.0;   // A; with the other loops what is fed forward
    double speed = 0.0;     // counts/s; with kPosition the speed that goes with the position
    double position = 0.0;  // counts
};

class Axis {
  public:
    void configure(const AxisSetup& setup);
    const AxisSetup& setup() const { return setup_; }

    void step(const SetPoint& set_point, double load_torque);

    // A step that changes nothing, so that it need not be made.
    bool still() const;

    // After power-up: loops and supply as new, the place where the shaft stands is 0.
    void start();

    // The place where the shaft stands has this position from now on.
    void define_position(std::int64_t position);

    // The same, counts further.
    void shift_position(std::int64_t counts);

    std::int64_t position() const { return position_; }
    // Where the shaft stands now, and not at the last step's measuring.
    std::int64_t position_now() const { return plant_.counts(setup_.resolution) + offset_; }
    // Where the index pulse of that turn of the shaft stands.
    std::int64_t position_of_turn(std::int64_t turn) const {
        return turn * setup_.resolution + offset_;
    }
    double speed() const { return speed_filter_.out(); }  // the loop's feedback, counts/s
    double raw_speed() const { return raw_speed_; }       // before the filter
    double shown_speed() const { return shown_speed_; }   // over 10 ms, for display
    double true_speed() const;                            // of the shaft itself

    double position_demand() const { return position_demand_; }
    double following_error() const { return following_error_; }
    double speed_demand() const { return speed_demand_; }
    double speed_error() const { return loop_ == Loop::kOff ? 0.0 : speed_demand_ - speed(); }
    double integral() const { return integral_; }
    double fed_forward() const { return fed_forward_; }
    double current_demand() const { return current_demand_; }
    double current() const { return current_.current(); }
    double voltage() const { return current_.voltage(); }
    double power() const { return current_.power(); }
    double bus_voltage() const { return supply_.voltage(); }
    bool current_limited() const { return limited_; }
    bool braking() const { return supply_.braking(); }
    Loop loop() const { return loop_; }
    const Plant& plant() const { return plant_; }

    // Added to the current demand of the following steps, A.
    void inject_current(double amperes) { injected_ = amperes; }

    // Speed is the difference over four steps of a position that is finer than the counts: between
    // two counts the drive measures time.
    static constexpr std::size_t kSpan = 4;
    static constexpr std::int64_t kFiner = 64;
    // What a unit of that difference is, counts/s.
    static constexpr double kSpeedUnit = kStepsPerSecond / (kSpan * kFiner);

  private:
    void measure();
    double velocity_loop();
    double demand(const SetPoint& set_point);
    double bounded(double current) const;

    AxisSetup setup_;
    Plant plant_;
    CurrentLoop current_;
    Supply supply_;
    LowPass2 speed_filter_;
    LowPass torque_filter_;
    std::array<std::int64_t, kSpan> past_{};
    std::size_t past_next_ = 0;

    std::int64_t offset_ = 0;  // from the shaft's counts to the position
    std::int64_t position_ = 0;
    double raw_speed_ = 0.0;
    double shown_speed_ = 0.0;
    double integral_ = 0.0;
    double fed_forward_ = 0.0;
    double current_demand_ = 0.0;
    double speed_demand_ = 0.0;
    double position_demand_ = 0.0;
    double following_error_ = 0.0;
    double injected_ = 0.0;
    bool limited_ = false;
    Loop loop_ = Loop::kOff;
};

}  // namespace servo::sim
