// The recorder inside the drive: samples objects at steps of the loop into a buffer, around a
// trigger, and keeps the recording until the next one starts. The set-up is taken at the start;
// what is written to it later is for the next recording.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "sim/object_table.h"
#include "sim/recorder_rows.h"
#include "sim/recorder_setup.h"
#include "sim/subsystem.h"

namespace servo::sim {

class Recorder : public Subsystem {
  public:
    explicit Recorder(ObjectTable& table);

    // Nothing runs and nothing is recorded, as after power-up.
    void reset();

    // After a step of the loop, with its number. A recording's first row is taken at the first
    // step after its start.
    void after_step(std::int64_t step) {
        if (step >= due_) look(step);
    }

    // The next step that must be told; the steps before may be left out.
    std::int64_t due() const { return due_; }

    // A fault has come up.
    void fault();

    Abort may_read(const Object& object) override;
    void refresh(Object& object) override;
    Abort accept(const Object& object, std::int64_t value) override;
    void written(Object& object) override;

  private:
    // Numbers as the state is read, but for 0, which is read last of all.
    enum class Phase : std::uint8_t { kDone = 0, kFilling = 1, kWaiting = 2, kRecording = 3 };

    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

    void start();
    void finish();
    void look(std::int64_t step);
    void take_row();
    bool triggered();
    std::size_t rows() const;

    ObjectTable& table_;
    RecorderObjects objects_;
    RecorderSetup setup_;
    RecorderRows rows_;
    Phase phase_ = Phase::kDone;
    std::int64_t due_ = kNever;
    std::int64_t row_due_ = kNever;
    std::int64_t before_ = 0;  // the trigger's value one row ago
    std::size_t since_ = 0;    // rows from the trigger on; 0: not yet triggered
    bool fault_ = false;       // stop with this step
    std::string recording_;
};

}  // namespace servo::sim
