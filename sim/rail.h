// The machine that the motor moves: an axis with an end. Limit switches, a home switch and
// mechanical stops, at places along the shaft's way.
//
// Places are turns of the motor's shaft, from where it stood when the drive was made; the encoder's
// index stands at whole turns.
#pragma once

#include <optional>
#include <string_view>

namespace servo::sim {

class DigitalInputs;

struct RailSetup {
    std::optional<double> negative_limit;  // the switch is closed from there down
    std::optional<double> positive_limit;  // and from there up
    // The home switch is closed between these.
    std::optional<double> home_from;
    std::optional<double> home_to;
    std::optional<double> lowest;  // where the axis ends
    std::optional<double> highest;

    bool operator==(const RailSetup&) const = default;
};

// Reads "neg=-20.3,pos=20.3,home=3.4:5.6,stop=22.4", each part at will, or "default", which is
// that. A single number behind "stop" holds for both sides, two are the lower and the upper one.
// Nothing for anything else, also for places that do not lie in their order.
std::optional<RailSetup> parse_rail(std::string_view text);

// Works the switches of an axis.
class Rail {
  public:
    void configure(const RailSetup& setup) { setup_ = setup; }

    // Gives the inputs that carry the switches' functions their levels. `again` where the inputs
    // may carry others than before.
    void work(double place, DigitalInputs& inputs, bool again);

  private:
    RailSetup setup_;
    bool negative_ = false;
    bool positive_ = false;
    bool home_ = false;
};

}  // namespace servo::sim
