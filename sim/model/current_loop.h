// The torque-forming current: winding, inverter voltage and the PI controller that drives it.
#pragma once

namespace servo::sim {

struct CurrentSetup {
    double resistance = 1.7;     // of one phase, ohm
    double inductance = 4.3e-3;  // of one phase, H
    double emf = 0.2417;         // V s/rad, peak of one phase
    double kp = 0.0;             // V/A
    double ki = 0.0;             // V/(A s)
};

class CurrentLoop {
  public:
    void configure(const CurrentSetup& setup);

    // One step towards `reference` (A). The inverter gives at most its supply over root three; the
    // speed's own voltage is fed forward.
    void step(double reference, double speed, double bus_voltage);

    // Inverter off: no current flows.
    void off();

    double current() const { return current_; }  // A, peak of the phase
    double voltage() const { return voltage_; }  // V, peak of the phase
    bool saturated() const { return saturated_; }

    // Power that the inverter takes from the supply; negative when the motor brakes.
    double power() const { return 1.5 * voltage_ * current_; }

  private:
    CurrentSetup setup_;
    double decay_ = 1.0;  // of the winding's current over one step
    double gain_ = 0.0;   // current after one step for one volt
    double integral_ = 0.0;
    double current_ = 0.0;
    double voltage_ = 0.0;
    bool saturated_ = false;
};

}  // namespace servo::sim
