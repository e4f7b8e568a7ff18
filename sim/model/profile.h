// The set-point generator: where and how fast the axis should be at each step, with bounded speed
// and acceleration. Positions in encoder counts, speeds in counts/s, accelerations in counts/s2.
#pragma once

namespace servo::sim {

struct ProfileLimits {
    double speed = 0.0;
    double acceleration = 0.0;  // while the speed grows
    double deceleration = 0.0;  // while it falls
};

class Profile {
  public:
    // Starts from here.
    void set(double position, double speed) {
        position_ = position;
        speed_ = speed;
    }

    // One step of a move that comes to rest on `target`. True once it rests there.
    bool step_to(double target, const ProfileLimits& limits);

    // One step towards a constant speed; the position goes along. True once the speed is reached.
    bool step_speed(double target, const ProfileLimits& limits);

    double position() const { return position_; }
    double speed() const { return speed_; }

  private:
    void approach(double wanted, const ProfileLimits& limits);

    double position_ = 0.0;
    double speed_ = 0.0;
};

}  // namespace servo::sim
