#include "sim/motion.h"

#include <algorithm>
#include <cmath>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// Supervision looks once a millisecond.
constexpr std::int64_t kLookSteps = kStepsPerMillisecond;

constexpr double kBrakeDutySeconds = 0.5;

// Of a clamp on the load, Nm: more than any motor here.
constexpr double kClampTorque = 1000.0;

std::int64_t steps_of(const Object& milliseconds) {
    return milliseconds.value * kStepsPerMillisecond;
}

}  // namespace

Motion::Motion(ObjectTable& table, Supervision& supervision, FaultHistory& history,
               Recorder& recorder)
    : table_(table),
      supervision_(supervision),
      history_(history),
      recorder_(recorder),
      parameters_(table),
      io_(table),
      scan_(table),
      moves_(table.bind(ids::kMoves, Type::kUint32)),
      greatest_error_(table.bind(ids::kGreatestFollowingError, Type::kUint32)),
      greatest_speed_(table.bind(ids::kGreatestSpeed, Type::kUint32)),
      greatest_current_(table.bind(ids::kGreatestCurrent, Type::kUint16)),
      greatest_bus_(table.bind(ids::kGreatestBus, Type::kUint16)),
      least_bus_(table.bind(ids::kLeastBus, Type::kUint16)),
      bus_full_scale_(table.bind(ids::kBusFullScale, Type::kUint16, 5000)),
      bus_reading_(table.bind(ids::kBusReading, Type::kUint16)),
      operating_minutes_(table.bind(ids::kOperatingMinutes, Type::kUint32)) {
    for (Object* const object :
         {&parameters_.control_word, &parameters_.mode, &parameters_.target_position}) {
        object->owner = this;
    }
    parameters_.homing_clear.owner = this;
    table.bind(ids::kFaultReset, Type::kUint8).owner = this;
    table.bind(ids::kClearPosition, Type::kUint8).owner = this;
    show_position();
    show_speed();
    show_torque();
    show_state();
    show_inputs();
    show_table();
    show_scan();
    show_homing();
}

void Motion::power_up() {
    motor_ = parameters_.motor_data();
    configure();
    axis_.start();
    state_ = DriveState::kSwitchOnDisabled;
    control_word_ = static_cast<std::uint16_t>(parameters_.control_word.value);
    stop_.reset();
    scan_.reset();
    homing_.leave();
    home_when_enabled_ = parameters_.homing_at_power_up.value == 1;
    halted_ = false;
    target_taken_ = false;
    homed_ = false;
    homing_failed_ = false;
    disturbed_ = true;
    power_up_step_ = step_;
    enabled_steps_ = 0;
    last_look_ = step_;
    in_window_ = 0;
    in_speed_window_ = 0;
    slow_ = 0;
    too_far_ = 0;
    brake_duty_ = 0.0;
    power_up_io();
    if (supervision_.faulty()) set_state(DriveState::kFault);
    if (parameters_.enable_at_power_up.value == 1 && !supervision_.faulty()) {
        control_word_ = 0x000F;
        parameters_.control_word.value = control_word_;
        set_state(DriveState::kOperationEnabled);
    }
}

void Motion::power_down() {
    set_state(DriveState::kNotReady);
}

void Motion::set_load_torque(double newton_metres) {
    load_torque_ = newton_metres;
    disturbed_ = true;
}

void Motion::hold_load(bool hold) {
    load_held_ = hold;
    disturbed_ = true;
    configure();
}

void Motion::set_rail(const RailSetup& rail) {
    rail_setup_ = rail;
    rail_.configure(rail);
}

void Motion::configure() {
    changes_seen_ = table_.changes();
    AxisSetup setup = parameters_.axis_setup(motor_);
    if (load_held_) setup.plant.load_friction = kClampTorque;
    if (rail_setup_) {
        setup.plant.lowest = rail_setup_->lowest.value_or(setup.plant.lowest);
        setup.plant.highest = rail_setup_->highest.value_or(setup.plant.highest);
        rail_.work(axis_.plant().load_place(), io_.inputs, true);
    }
    targets_ = parameters_.targets(motor_);
    if (!homed_) {
        // Coordinates mean nothing before the axis knows its home.
        targets_.lowest.reset();
        targets_.highest.reset();
    }
    apply_inputs(setup);
    limit_homing(setup);
    axis_.configure(setup);
    modes_.configure(targets_);
}

// Nothing would change but the time: then the steps need not be made one by one.
bool Motion::quiet() const {
    return !disturbed_ && !powered(state_) && axis_.still();
}

void Motion::run_to(std::chrono::microseconds now) {
    const std::int64_t last = now.count() * 2 / 125;  // steps of 62.5 us
    if (table_.changes() != changes_seen_) configure();
    while (step_ < last) {
        if (quiet()) {
            // The recorder samples a drive at rest like any other.
            const std::int64_t due = std::min(recorder_.due(), io_due());
            const std::int64_t to = std::min(last, std::max(step_ + 1, due));
            slow_ += to - step_;
            step_ = to;
            if (io_.inputs.look(step_)) act_on_inputs();
        } else {
            ++step_;
            if (io_.inputs.look(step_)) act_on_inputs();
            step();
        }
        if (step_ - last_look_ >= kLookSteps) {
            slow_watch(static_cast<double>(step_ - last_look_) * kStepSeconds);
            last_look_ = step_;
        }
        recorder_.after_step(step_);
    }
}

void Motion::step() {
    disturbed_ = false;
    axis_.step(set_point(), load_torque_);
    if (rail_setup_) rail_.work(axis_.plant().load_place(), io_.inputs, false);
    watch();
}

SetPoint Motion::set_point() {
    if (!powered(state_)) return {};
    ++enabled_steps_;
    if (stop_) return stop_step();
    if (scan_.active()) return scan_step();
    if (homing_.active()) return homing_step();
    if (halted_) {
        const bool quick = parameters_.halt_option.value == 2;
        return modes_.stop(
            axis_, quick ? targets_.quick_deceleration : targets_.speed_profile.deceleration);
    }
    if (io_.table.running()) run_table();
    const bool was_moving = !modes_.arrived();
    const SetPoint out = modes_.step(axis_);
    if (was_moving && modes_.arrived()) ++moves_.value;
    return out;
}

SetPoint Motion::stop_step() {
    const SetPoint out = modes_.stop(axis_, stop_->deceleration);
    if (stop_->then == state_ || !modes_.stopped()) return out;
    const bool turning = std::abs(rpm(axis_.speed())) > 10.0;
    if (turning && --stop_->patience > 0) return out;
    set_state(stop_->then);
    return powered(state_) ? out : SetPoint{};
}

// What must be seen at every step.
void Motion::watch() {
    const auto last = [](std::int64_t& steps, bool condition) {
        steps = condition ? steps + 1 : 0;
    };
    const MotionParameters& p = parameters_;
    const double error = std::abs(axis_.following_error());
    const bool position = axis_.loop() == Loop::kPosition;
    const bool watched =
        position && p.following_window.value > 0 && p.following_window.value < 0xFFFFFFFF;
    last(too_far_, watched && error > static_cast<double>(p.following_window.value));
    const double left = std::abs(modes_.target() - static_cast<double>(axis_.position()));
    last(in_window_,
         position && modes_.arrived() && left <= static_cast<double>(p.position_window.value));
    const double off = std::abs(rpm(axis_.speed() - targets_.speed));
    last(in_speed_window_, off <= static_cast<double>(p.speed_window.value));
    last(slow_, std::abs(rpm(axis_.speed())) <= static_cast<double>(p.speed_threshold.value));
}

void Motion::slow_watch(double seconds) {
    tend_inputs();
    Readings readings;
    readings.powered = powered(state_);
    readings.current = axis_.current();
    readings.bus_voltage = axis_.bus_voltage();
    readings.resistance = motor_.resistance;
    readings.rated_current = motor_.rated_current;
    readings.overload_seconds = motor_.overload_seconds;
    readings.peak_current = motor_.peak_current;
    readings.braking = axis_.braking();
    readings.following_error = too_far_ > 0 && too_far_ >= steps_of(parameters_.following_time);
    readings.over_speed =
        parameters_.over_speed.value > 0 &&
        std::abs(speed_raw(axis_.speed())) > static_cast<double>(parameters_.over_speed.value);
    readings.motor_data_wrong = motor_.wrong;
    if (state_ != DriveState::kNotReady) {
        readings.causes1 = causes1_;
        readings.causes2 = causes2_;
    }
    if (motor_error()) readings.causes1 |= fault1::kMotorTemperature;
    const bool was_faulty = supervision_.faulty();
    const Reaction reaction = supervision_.look(readings, seconds);
    if (reaction != Reaction::kNone) react(reaction);
    if (was_faulty && !supervision_.faulty() && state_ == DriveState::kFault) {
        set_state(DriveState::kSwitchOnDisabled);
    }
    const double share = std::min(1.0, seconds / kBrakeDutySeconds);
    brake_duty_ += share * ((axis_.braking() ? 1.0 : 0.0) - brake_duty_);
    keep_greatest();
    tend_outputs();
}

void Motion::keep_greatest() {
    const auto raise = [](Object& object, double value) {
        object.value = std::max(object.value, cut(object.type, std::llround(value)));
    };
    raise(greatest_error_, std::abs(axis_.following_error()));
    raise(greatest_speed_, std::abs(speed_raw(axis_.speed())));
    raise(greatest_current_, std::abs(current_raw(axis_.current())));
    const auto full = static_cast<double>(std::max<std::int64_t>(bus_full_scale_.value, 1));
    const double bus = axis_.bus_voltage() * 4096.0 * 10.0 / full;
    raise(greatest_bus_, bus);
    if (!powered(state_)) return;
    const std::int64_t reading = std::llround(bus);
    if (least_bus_.value == 0 || reading < least_bus_.value) least_bus_.value = reading;
}

void Motion::raise(std::uint16_t word1, std::uint16_t word2) {
    const Reaction reaction = supervision_.provoke(word1, word2);
    if (reaction != Reaction::kNone) react(reaction);
}

void Motion::react(Reaction reaction) {
    note_fault();
    if (state_ == DriveState::kFault || state_ == DriveState::kNotReady) return;
    const std::int64_t option = parameters_.fault_option.value;
    if (!powered(state_) || reaction == Reaction::kCoast || option == 0) {
        set_state(DriveState::kFault);
        return;
    }
    const double rate =
        option == 1 ? targets_.speed_profile.deceleration : targets_.quick_deceleration;
    set_state(DriveState::kFaultReactionActive);
    begin_stop(rate, DriveState::kFault);
}

void Motion::note_fault() {
    if (!supervision_.take_news()) return;
    recorder_.fault();
    FaultRecord record;
    record.word1 = supervision_.word1();
    record.word2 = supervision_.word2();
    record.extended = supervision_.extended_word();
    record.minutes = static_cast<std::uint32_t>(table_.read(operating_minutes_));
    record.bus = table_.read(bus_reading_);
    record.speed = std::llround(speed_raw(axis_.shown_speed()));
    record.current = std::llround(current_raw(axis_.current()));
    record.temperature = std::llround(supervision_.drive_temperature());
    record.mode = parameters_.mode.value;
    record.status_word = status_word();
    if (!history_.add(record, supervision_.error_code())) {
        supervision_.raise(fault1::kMemory, 0);
        supervision_.take_news();
    }
}

bool Motion::reset_faults() {
    if (state_ == DriveState::kFaultReactionActive) return false;
    too_far_ = 0;
    const bool clean = supervision_.reset();
    if (clean && state_ == DriveState::kFault) set_state(DriveState::kSwitchOnDisabled);
    return clean;
}

}  // namespace servo::sim
