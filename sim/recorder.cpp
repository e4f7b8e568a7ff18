#include "sim/recorder.h"

namespace servo::sim {

namespace {

constexpr std::int64_t kStop = 0;
constexpr std::int64_t kStart = 1;

}  // namespace

Recorder::Recorder(ObjectTable& table) : table_(table), objects_(table) {
    for (Object* const object : {&objects_.command, &objects_.taken, &objects_.trigger_position,
                                 &objects_.row_bytes, &objects_.buffer_bytes, &objects_.buffer}) {
        object->owner = this;
    }
}

void Recorder::reset() {
    phase_ = Phase::kDone;
    due_ = kNever;
    row_due_ = kNever;
    since_ = 0;
    fault_ = false;
    setup_ = {};
    rows_.begin({}, 0, 0);
    recording_.clear();
}

void Recorder::start() {
    RecorderSetup setup;
    if (read_setup(table_, objects_, setup) != Abort::kNone) return;
    setup_ = setup;
    rows_.begin(setup_.sources, setup_.row_bytes, static_cast<std::size_t>(setup_.count));
    recording_.clear();
    since_ = 0;
    fault_ = false;
    if (setup_.trigger == nullptr) {
        phase_ = Phase::kRecording;
    } else {
        phase_ = setup_.offset > 0 ? Phase::kFilling : Phase::kWaiting;
    }
    row_due_ = 0;  // the next step, whatever its number
    due_ = 0;
}

void Recorder::finish() {
    recording_ = rows_.newest(rows());
    phase_ = Phase::kDone;
    due_ = kNever;
}

// Rows that the recording has, or would have if it ended now. Before the trigger that is all there
// is room for; from the trigger on no more than the offset stand before it.
std::size_t Recorder::rows() const {
    if (since_ == 0) return rows_.held();
    return static_cast<std::size_t>(setup_.offset) + since_;
}

void Recorder::fault() {
    if (phase_ == Phase::kDone || objects_.stop_at_fault.value != 1) return;
    fault_ = true;
    due_ = 0;
}

void Recorder::look(std::int64_t step) {
    if (step >= row_due_) {
        take_row();
        row_due_ = step + setup_.period;
    }
    const bool full = since_ > 0 && rows() == static_cast<std::size_t>(setup_.count);
    if (full || fault_) {
        finish();
    } else {
        due_ = row_due_;
    }
}

void Recorder::take_row() {
    rows_.take(table_);
    const bool crossed = triggered();
    switch (phase_) {
        case Phase::kDone:
            return;
        case Phase::kFilling:
            if (rows_.taken() == static_cast<std::size_t>(setup_.offset)) phase_ = Phase::kWaiting;
            return;
        case Phase::kWaiting:
            if (!crossed) return;
            phase_ = Phase::kRecording;
            since_ = 1;
            return;
        case Phase::kRecording:
            ++since_;
            return;
    }
}

// Whether the source went through the level from the row before to this one. The first row of all
// has none before it.
bool Recorder::triggered() {
    if (setup_.trigger == nullptr) return false;
    const std::int64_t before = before_;
    before_ = table_.read(*setup_.trigger);
    if (rows_.taken() < 2) return false;
    return setup_.rising ? before < setup_.level && before_ >= setup_.level
                         : before > setup_.level && before_ <= setup_.level;
}

// A recording can be fetched when it is complete, and as often as wished.
Abort Recorder::may_read(const Object& object) {
    const bool running = phase_ != Phase::kDone;
    return &object == &objects_.buffer && running ? Abort::kState : Abort::kNone;
}

void Recorder::refresh(Object& object) {
    if (&object == &objects_.command) {
        object.value = static_cast<std::int64_t>(phase_);
    } else if (&object == &objects_.taken) {
        const bool waiting = phase_ == Phase::kWaiting;
        object.value = waiting ? setup_.offset : static_cast<std::int64_t>(rows());
    } else if (&object == &objects_.trigger_position) {
        object.value = since_ > 0 ? setup_.offset : 0;
    } else if (&object == &objects_.row_bytes) {
        RecorderSetup setup;
        const bool good = read_sources(table_, objects_, setup) == Abort::kNone;
        object.value = good ? static_cast<std::int64_t>(setup.row_bytes) : 0;
    } else if (&object == &objects_.buffer_bytes) {
        object.value = kRecorderBytes;
    } else if (&object == &objects_.buffer) {
        object.text = recording_;
    }
}

Abort Recorder::accept(const Object& object, std::int64_t value) {
    if (&object != &objects_.command || value == kStop) return Abort::kNone;
    if (value != kStart) return Abort::kRange;
    RecorderSetup setup;
    return read_setup(table_, objects_, setup);
}

void Recorder::written(Object& object) {
    if (&object != &objects_.command) return;
    if (object.value == kStart) {
        start();
    } else if (object.value == kStop && phase_ != Phase::kDone) {
        finish();
    }
}

}  // namespace servo::sim
