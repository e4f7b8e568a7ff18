// The objects that steer the motion, and what they mean in the units of the model.
//
//   speed         raw value: 1000/16384 counts/s
//   acceleration  raw value: 4000000/65536 counts/s2
//   current       raw value: 1/2048 of the drive's peak current (6510:03, tenths of an ampere)
//   torque        thousandths of the rated torque (6076, mNm)
#pragma once

#include <cstdint>

#include "sim/model/axis.h"
#include "sim/modes.h"
#include "sim/motion_objects.h"
#include "sim/object_table.h"

namespace servo::sim {

inline constexpr double kCountsPerSpeed = 1000.0 / 16384.0;
inline constexpr double kCountsPerAcceleration = 4'000'000.0 / 65536.0;
inline constexpr double kCurrentFullScale = 2048.0;

// The motor as the drive believes it to be: what the motor parameters said at power-up. The real
// one is the model's; its encoder has the resolution that was set at the factory.
struct MotorData {
    double resolution = 10000.0;
    double pole_pairs = 4.0;
    double peak_current = 15.0;   // of the drive, A at full scale
    double max_current = 11.0;    // A, peak
    double rated_current = 3.68;  // A, peak
    double overload_seconds = 45.0;
    double inductance = 4.3e-3;      // of one phase, H
    double resistance = 1.7;         // of one phase, ohm
    double emf = 0.2417;             // V s/rad, peak of one phase
    double torque_constant = 0.345;  // Nm per A
    double inertia = 8.31e-5;        // motor and load, kg m2
    double rated_torque = 1.27;      // Nm
    bool wrong = false;              // something that can't be
};

// Parameters are public members of the groups below.
class MotionParameters : public StopObjects,
                         public PositionObjects,
                         public HomingObjects,
                         public SpeedObjects,
                         public ReverseObjects,
                         public TorqueObjects,
                         public LoopObjects,
                         public MotorObjects {
  public:
    explicit MotionParameters(ObjectTable& table);

    MotorData motor_data() const;

    AxisSetup axis_setup(const MotorData& motor) const;
    Targets targets(const MotorData& motor) const;

    // +1 or -1, by the polarity object.
    double position_sense() const;
    double speed_sense() const;

    // Hertz for each unit of the velocity gain, times 65536.
    static std::int64_t velocity_gain_scale(const MotorData& motor);

    // A per count/s that one unit of the velocity gain asks for.
    static double velocity_unit(const MotorData& motor);

    double seconds(const Object& milliseconds) const {
        return static_cast<double>(milliseconds.value) / 1000.0;
    }

    Object& mode;
    Object& control_word;

  private:
    double current_limit(const Object& torque, const MotorData& motor) const;
    CurrentSetup current_setup(const MotorData& motor) const;
    AutoReverseTargets to_and_fro(double fallback) const;
};

}  // namespace servo::sim
