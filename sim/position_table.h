// The position table that runs: 32 steps, each a move with its own speed and ramps, a delay,
// repetitions and conditions. It is stepped with the model and orders moves; it moves nothing
// itself.
//
// Control register of a step: bits 0 to 4 next step, bit 8 go on to it (else the table is done),
// bits 9 and 10 conditions that take part, bit 11 both needed (else one), bits 12 and 13 mode, bits
// 14 and 15 start condition: 0 begins at once, 1 waits for the conditions, 2 begins as soon as they
// stand, in the middle of the step before too.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sim/model/profile.h"
#include "sim/object_table.h"

namespace servo::sim {

inline constexpr int kTableSteps = 32;
inline constexpr int kTableRampEntries = 8;

// What the table needs to know of the axis, at each step of the model.
struct TableSurroundings {
    double demand = 0.0;      // where the axis is told to be, counts
    std::int64_t actual = 0;  // where it is
    double sense = 1.0;       // of targets, by the polarity object
    double most_speed = 0.0;
    bool at_rest = false;  // the generator rests on its target, or has stopped
    bool blocked = false;  // a limit switch stands in the way of the move
    bool homed = false;
    bool condition0 = false;
    bool condition1 = false;
};

struct TableOrder {
    bool stop = false;  // come to rest with limits.deceleration; else go to the target
    double target = 0.0;
    ProfileLimits limits;
};

class PositionTable {
  public:
    // Numbers of the state object.
    enum class State : std::uint8_t {
        kIdle = 0,
        kRunning = 1,
        kWaiting = 2,
        kDelay = 3,
        kDone = 4,
        kAborted = 5,
    };

    explicit PositionTable(ObjectTable& table);

    void power_up();

    void start(int step);
    // Ends the run. The order is the stop, with the ramp for it.
    TableOrder abort();
    // Ends the run where somebody else stops the motor.
    void drop();
    // Holds the run, and lets it go on: with what was left of move or delay.
    TableOrder pause();
    std::optional<TableOrder> go_on();

    // The place is called something else from now on.
    void shift(double counts) { target_ += counts; }

    std::optional<TableOrder> step(const TableSurroundings& around);

    bool allowed() const { return enable_.value == 1; }
    bool running() const {
        return state_ == State::kRunning || state_ == State::kWaiting || state_ == State::kDelay;
    }
    bool paused() const { return paused_; }
    State state() const { return state_; }
    int index() const { return index_; }
    int start_index() const { return static_cast<int>(start_index_.value); }
    std::int64_t loops_left() const { return loops_left_; }
    std::optional<int> error_step() const { return error_step_; }

  private:
    enum class Start : std::uint8_t { kIgnore = 0, kWait = 1, kInterrupt = 2 };
    enum class Reference : std::uint8_t { kAbsolute = 0, kDemand = 1, kActual = 2 };

    // When a step begins.
    struct Trigger {
        Start start = Start::kIgnore;
        bool uses0 = false;
        bool uses1 = false;
        bool both = false;

        bool conditional() const { return start != Start::kIgnore && (uses0 || uses1); }
        bool met(const TableSurroundings& around) const;
    };

    // A step as its objects stood when it began.
    struct Step {
        double target = 0.0;
        ProfileLimits limits;
        std::int64_t delay = 0;  // steps of the model
        int next = 0;
        bool goes_on = false;
        Reference reference = Reference::kAbsolute;
        Trigger trigger;
    };

    // Consecutive objects.
    using Entries = std::vector<const Object*>;

    static std::int64_t entry(const Entries& entries, int step);
    static double ramp(const Entries& entries, unsigned index);
    // Nothing when the field has no meaning.
    static std::optional<Trigger> trigger_of(unsigned control);
    // Nothing when the step cannot be.
    std::optional<Step> read(int step, const TableSurroundings& around) const;
    // The step behind this one begins in the middle of it.
    bool interrupted(const TableSurroundings& around) const;

    std::optional<TableOrder> begin(const TableSurroundings& around);
    TableOrder go(const TableSurroundings& around);
    std::optional<TableOrder> after_move(const TableSurroundings& around);
    std::optional<TableOrder> repeat_or_next(const TableSurroundings& around);
    std::optional<TableOrder> next(const TableSurroundings& around);
    TableOrder fail();
    TableOrder stop_order(double deceleration) const;

    Entries accelerations_;
    Entries decelerations_;
    Entries targets_;
    Entries speeds_;
    Entries delays_;
    Entries controls_;
    Entries loops_;
    Entries ramps_;
    Object& start_index_;
    Object& stop_ramp_;
    Object& enable_;
    Object& needs_home_;
    Object& runs_;

    State state_ = State::kIdle;
    Step now_;
    int index_ = 0;
    std::int64_t loops_left_ = 0;
    std::int64_t delay_left_ = 0;
    std::optional<int> error_step_;
    double target_ = 0.0;  // of the move under way
    bool paused_ = false;
    bool entered_ = false;  // the step's first begin is still to come
};

}  // namespace servo::sim
