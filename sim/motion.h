// Everything that turns: the state machine, the modes and the axis, stepped at 16 kHz, and the
// objects that steer and show them.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>

#include "sim/fault_history.h"
#include "sim/frequency_scan.h"
#include "sim/homing.h"
#include "sim/model/axis.h"
#include "sim/modes.h"
#include "sim/motion_io.h"
#include "sim/motion_parameters.h"
#include "sim/object_table.h"
#include "sim/rail.h"
#include "sim/recorder.h"
#include "sim/state_machine.h"
#include "sim/subsystem.h"
#include "sim/supervision.h"

namespace servo::sim {

class Motion : public Subsystem {
  public:
    Motion(ObjectTable& table, Supervision& supervision, FaultHistory& history, Recorder& recorder);

    void power_up();
    // The inverter goes off; the shaft runs on by itself.
    void power_down();

    void run_to(std::chrono::microseconds now);

    // Fault bits from elsewhere.
    void raise(std::uint16_t word1, std::uint16_t word2);
    // Causes of fault bits that are not in the model, a broken wire for one. Seen with the next
    // look while the drive has power; they stand over resets and restarts.
    void set_causes(std::uint16_t word1, std::uint16_t word2) {
        causes1_ = word1;
        causes2_ = word2;
    }
    std::uint16_t causes1() const { return causes1_; }
    std::uint16_t causes2() const { return causes2_; }

    DigitalInputs& inputs() { return io_.inputs; }
    const DigitalInputs& inputs() const { return io_.inputs; }
    const DigitalOutputs& outputs() const { return io_.outputs; }

    void set_load_torque(double newton_metres);
    void hold_load(bool hold);
    // The axis has ends and switches; counts from the next power-up.
    void set_rail(const RailSetup& rail);

    const Axis& axis() const { return axis_; }
    const MotorData& motor() const { return motor_; }
    const MotionParameters& parameters() const { return parameters_; }
    DriveState state() const { return state_; }
    double seconds_enabled() const { return static_cast<double>(enabled_steps_) * kStepSeconds; }
    double seconds_running() const {
        return static_cast<double>(step_ - power_up_step_) * kStepSeconds;
    }
    // Part of the time for which the brake chopper is on.
    double brake_duty() const { return brake_duty_; }

    void refresh(Object& object) override;
    Abort accept(const Object& object, std::int64_t value) override;
    void written(Object& object) override;

  private:
    using Getter = double (*)(const Motion&);
    struct Stop {
        double deceleration = 0.0;
        DriveState then = DriveState::kSwitchOnDisabled;
        int patience = 0;  // steps to wait for the shaft once the demand is at rest
    };

    // Steps.
    void configure();
    void step();
    SetPoint set_point();
    SetPoint stop_step();
    void watch();
    void slow_watch(double seconds);
    bool quiet() const;

    // States.
    void control(std::uint16_t word);
    void command(Command command);
    void leave_enabled(DriveState next);
    void quick_stop();
    void set_state(DriveState next);
    void begin_stop(double deceleration, DriveState then);
    void react(Reaction reaction);
    bool reset_faults();
    void note_fault();

    // Frequency scan.
    void command_scan(std::int64_t command);
    void start_scan();
    SetPoint scan_step();
    void end_scan(ScanResult result);

    // Digital inputs.
    void power_up_io();
    void act_on_inputs();
    void tend_inputs();
    void apply_inputs(AxisSetup& setup);
    void act_on_enable();
    void act_on_limit(InputFunction limit, const Object& action, std::uint16_t fault);
    void act_on_multi(std::int64_t action);
    void enable_by_input(bool edge);
    void home_by_input();
    bool enable_barred() const;
    bool bus_may(Command command) const;
    bool halt_asked() const;
    bool motor_error() const;
    SwitchLimits switch_limits() const;
    void look_at_indexes();
    void activate();
    void trigger_din_position();
    void start_din_position();
    void capture();

    // Digital outputs.
    void tend_outputs();
    std::int64_t io_due() const;
    bool ready() const;
    bool at_speed_limit() const;
    bool current_warning() const;
    bool position_reached();
    bool index_passed();

    // Position table.
    bool table_may_start() const;
    int index_of_inputs() const;
    void start_table();
    void abort_table();
    void run_table();
    void obey(const TableOrder& order);
    Abort accept_table_command(std::int64_t value) const;
    void table_command(std::int64_t value);

    // Homing.
    void start_homing();
    SetPoint homing_step();
    void finish_homing();
    void end_homing(bool fault);
    void clear_home();
    void shift_position(std::int64_t counts);
    HomingSignals homing_signals() const;
    HomingPlan homing_plan(const HomingMethod& method) const;
    void limit_homing(AxisSetup& setup) const;
    std::int64_t home_coordinate() const;

    // Targets.
    void new_set_point(std::uint16_t word);
    void define_position(std::int64_t position);
    bool target_reached() const;
    bool zero_speed() const;
    std::uint16_t status_word() const;
    std::uint16_t mode_bits() const;

    // Objects.
    void show(dictionary::Identity id, Type type, Getter getter);
    void show_position();
    void show_speed();
    void show_torque();
    void show_state();
    void show_inputs();
    void show_table();
    void show_scan();
    void show_homing();
    void keep_greatest();

    std::int64_t shown_position() const;
    double speed_raw(double counts_per_second) const;
    double current_raw(double amperes) const;
    double torque_raw(double amperes) const;
    double rpm(double counts_per_second) const;

    ObjectTable& table_;
    Supervision& supervision_;
    FaultHistory& history_;
    Recorder& recorder_;
    MotionParameters parameters_;
    std::unordered_map<dictionary::Identity, Getter> getters_;
    MotorData motor_;
    Targets targets_;
    Axis axis_;
    Modes modes_;
    MotionIo io_;
    FrequencyScan scan_;
    DriveState after_scan_ = DriveState::kSwitchOnDisabled;
    Homing homing_;
    std::optional<RailSetup> rail_setup_;
    Rail rail_;

    DriveState state_ = DriveState::kSwitchOnDisabled;
    std::uint16_t control_word_ = 0;
    std::optional<Stop> stop_;
    bool halted_ = false;
    bool target_taken_ = false;
    bool homed_ = false;
    bool homing_failed_ = false;
    bool home_when_enabled_ = false;  // not yet enabled since power-up
    std::uint16_t causes1_ = 0;
    std::uint16_t causes2_ = 0;
    double load_torque_ = 0.0;
    bool load_held_ = false;
    bool disturbed_ = true;  // something changed that may set a shaft at rest in motion

    std::int64_t step_ = 0;
    std::int64_t power_up_step_ = 0;
    std::int64_t enabled_steps_ = 0;
    std::int64_t last_look_ = 0;
    std::uint64_t changes_seen_ = 0;
    // How long, in steps, a condition has lasted.
    std::int64_t in_window_ = 0;
    std::int64_t in_speed_window_ = 0;
    std::int64_t slow_ = 0;
    std::int64_t too_far_ = 0;
    double brake_duty_ = 0.0;

    Object& moves_;
    Object& greatest_error_;
    Object& greatest_speed_;
    Object& greatest_current_;
    Object& greatest_bus_;
    Object& least_bus_;
    Object& bus_full_scale_;
    Object& bus_reading_;
    Object& operating_minutes_;
};

}  // namespace servo::sim
