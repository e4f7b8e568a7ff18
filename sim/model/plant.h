// Motor and load: two masses on one shaft that twists, each with dry friction, plus friction that
// grows with speed. What makes the resonance of the loop.
#pragma once

#include <cstdint>
#include <limits>

namespace servo::sim {

// The step of the whole model, 16 kHz.
inline constexpr double kStepSeconds = 62.5e-6;
inline constexpr double kStepsPerSecond = 16000.0;
inline constexpr std::int64_t kStepsPerMillisecond = 16;
inline constexpr double kPi = 3.14159265358979323846;

// The machine as it is, whatever the drive's parameters say of it: a 400 W motor with twice its own
// inertia behind a shaft that resonates at 780 Hz and anti-resonates at 450 Hz.
struct PlantSetup {
    double motor_inertia = 2.77e-5;  // kg m2
    double load_inertia = 5.54e-5;   // kg m2; 0: nothing on the shaft
    double stiffness = 443.6;        // of the shaft, Nm/rad
    double damping = 9.0e-3;         // of the shaft, Nm s/rad
    double motor_friction = 0.012;   // dry, Nm
    double load_friction = 0.018;    // dry, Nm
    double viscous = 2.0e-5;         // on the motor, Nm s/rad
    // Stops that the load runs into, in turns; stiff, and the blow fades.
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    double stop_stiffness = 1000.0;  // Nm/rad
    double stop_damping = 0.1;       // Nm s/rad

    bool operator==(const PlantSetup&) const = default;
};

// Figures with which the stepped machine swings as the real one does.
//
// Stepping puts resonance and anti-resonance, and how they are damped, beside those of the machine:
// at 780 Hz by enough to change the curve by a decibel. Both frequencies and the damping are put
// right here, by stiffness, damping and the share of the two inertias; their sum stays. What does
// not swing, or too fast for the steps, is left as it is.
PlantSetup made_for_steps(const PlantSetup& machine);

class Plant {
  public:
    void configure(const PlantSetup& machine);

    // One step under the motor's torque and the machine's torque against it, both in Nm.
    void step(double torque, double load_torque);

    double motor_speed() const { return motor_speed_; }  // rad/s
    double load_speed() const { return load_speed_; }
    double twist() const { return twist_; }  // rad, motor before load

    // The motor's angle: whole turns, and the part of a turn, 0 to below 1. Two numbers, so that it
    // stays exact over years of turning.
    std::int64_t turns() const { return turns_; }
    double part() const { return part_; }
    std::int64_t counts(std::int64_t resolution) const;

    // Where the load is, in turns.
    double load_place() const { return static_cast<double>(turns_) + part_ - twist_ / (2.0 * kPi); }

    // Nothing moved in the last step: under the same torques nothing ever will.
    bool at_rest() const { return at_rest_; }

    void stop();

  private:
    double stop_torque() const;

    PlantSetup machine_;
    PlantSetup setup_ = made_for_steps(machine_);
    double motor_speed_ = 0.0;
    double load_speed_ = 0.0;
    double twist_ = 0.0;
    double part_ = 0.0;
    std::int64_t turns_ = 0;
    bool at_rest_ = true;
};

}  // namespace servo::sim
