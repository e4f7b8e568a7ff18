// Speeds and positions that inputs choose: three index inputs each, as a binary number, pick an
// entry of a table. An index counts when its inputs have stood for a while, so that inputs which do
// not change together select no wrong entry.
#pragma once

#include <array>
#include <cstdint>

#include "sim/digital_io.h"
#include "sim/object_table.h"

namespace servo::sim {

inline constexpr std::size_t kDinEntries = 8;

// An index made of three inputs.
class DinIndex {
  public:
    DinIndex(InputFunction bit0, InputFunction bit1, InputFunction bit2)
        : bits_{bit0, bit1, bit2} {}

    // At once, as after power-up.
    void set(const DigitalInputs& inputs) { taken_ = wanted_ = read(inputs); }

    // True when another index counts from now on. `delay` in steps of the model.
    bool look(const DigitalInputs& inputs, std::int64_t step, std::int64_t delay);

    int value() const { return taken_; }
    bool assigned(const DigitalInputs& inputs) const;

    int read(const DigitalInputs& inputs) const;

  private:
    std::array<InputFunction, 3> bits_;
    int taken_ = 0;
    int wanted_ = 0;
    std::int64_t since_ = 0;
};

// In raw units.
struct DinSpeeds {
    explicit DinSpeeds(ObjectTable& table);

    // What the inputs ask for. 0 where no index input is assigned and the drive is told so.
    std::int64_t target(const DigitalInputs& inputs) const;
    bool chosen() const { return source.value == 2; }

    DinIndex index{InputFunction::kSpeedIndex0, InputFunction::kSpeedIndex1,
                   InputFunction::kSpeedIndex2};
    std::array<Object*, kDinEntries> speeds{};
    Object& source;
    Object& acceleration;
    Object& deceleration;
    Object& without;
    Object& delay;
    Object& inversion;
    Object& stop_at_once;
};

struct DinPositions {
    explicit DinPositions(ObjectTable& table);

    const Object& target() const { return *targets[static_cast<std::size_t>(index.value())]; }
    const Object& speed() const { return *speeds[static_cast<std::size_t>(index.value())]; }

    DinIndex index{InputFunction::kPositionIndex0, InputFunction::kPositionIndex1,
                   InputFunction::kPositionIndex2};
    std::array<Object*, kDinEntries> targets{};
    std::array<Object*, kDinEntries> speeds{};
    Object& acceleration;
    Object& deceleration;
    Object& style;         // 1: distances
    Object& trigger;       // 1: a change of the index
    Object& delay;         // ms
    Object& interruption;  // 0 ignored, 1 at once, 2 afterwards
    Object& needs_home;
    bool waits = false;  // a trigger that came during a move
};

}  // namespace servo::sim
