// The drive's DC supply: mains behind a rectifier, the capacitor, and the brake resistor.
#pragma once

namespace servo::sim {

struct SupplySetup {
    double voltage = 310.0;          // without load, V
    double source_resistance = 2.0;  // ohm
    double capacitance = 680e-6;     // F
    double bleeder = 10e3;           // across the capacitor, ohm
    double brake_resistor = 0.0;     // ohm; 0: none fitted
    double brake_on = 380.0;         // V; off again kBrakeBand below
};

// Between the chopper's two voltages.
inline constexpr double kBrakeBand = 8.0;

class Supply {
  public:
    void configure(const SupplySetup& setup) { setup_ = setup; }

    // One step under the power that the inverter takes, in W; negative comes back from the motor
    // and can only charge the capacitor, since a rectifier takes nothing back.
    void step(double power);

    void start() {
        voltage_ = setup_.voltage;
        braking_ = false;
    }

    double voltage() const { return voltage_; }
    bool braking() const { return braking_; }
    bool settled() const;

  private:
    SupplySetup setup_;
    double voltage_ = 311.0;
    bool braking_ = false;
};

}  // namespace servo::sim
