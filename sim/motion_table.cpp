// Motion: the position table at work.
#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

using F = InputFunction;

// Written to the command object; reading it shows one of the first three.
constexpr std::int64_t kAbort = 0;
constexpr std::int64_t kStart = 1;
constexpr std::int64_t kPause = 2;
constexpr std::int64_t kGoOn = 3;

constexpr double kNoErrorStep = 255.0;

}  // namespace

bool Motion::table_may_start() const {
    return io_.table.allowed() && !io_.table.running() && state_ == DriveState::kOperationEnabled &&
           !stop_ && !scan_.active() && !homing_.active() &&
           modes_.mode() == Mode::kProfilePosition && !io_.inputs.active(F::kAbortTable);
}

int Motion::index_of_inputs() const {
    return io_.table_index.read(io_.inputs);
}

void Motion::start_table() {
    if (!table_may_start()) return;
    io_.positions.waits = false;
    const bool by_inputs = io_.table_index.assigned(io_.inputs);
    io_.table.start(by_inputs ? index_of_inputs() : io_.table.start_index());
}

void Motion::abort_table() {
    if (io_.table.running()) obey(io_.table.abort());
}

void Motion::obey(const TableOrder& order) {
    if (order.stop) {
        modes_.end_move(order.limits.deceleration);
    } else {
        modes_.move(order.target, order.limits);
    }
    in_window_ = 0;
}

void Motion::run_table() {
    TableSurroundings around;
    around.demand = modes_.demand();
    around.actual = axis_.position();
    around.sense = parameters_.position_sense();
    around.most_speed = targets_.speed_profile.speed;
    around.at_rest = modes_.arrived();
    around.blocked = modes_.blocked();
    around.homed = homed_;
    around.condition0 = io_.inputs.active(F::kTableCondition0);
    around.condition1 = io_.inputs.active(F::kTableCondition1);
    if (const auto order = io_.table.step(around)) obey(*order);
}

// A command that means nothing now is refused.
Abort Motion::accept_table_command(std::int64_t value) const {
    const bool runs = io_.table.running();
    const bool good = (value == kAbort) || (value == kStart && table_may_start()) ||
                      (value == kPause && runs && !io_.table.paused()) ||
                      (value == kGoOn && runs && io_.table.paused());
    return good ? Abort::kNone : Abort::kState;
}

void Motion::table_command(std::int64_t value) {
    if (accept_table_command(value) != Abort::kNone) return;
    disturbed_ = true;
    if (value == kAbort) abort_table();
    if (value == kStart) start_table();
    if (value == kPause) obey(io_.table.pause());
    if (value != kGoOn) return;
    if (const auto order = io_.table.go_on()) obey(*order);
}

void Motion::show_table() {
    show(ids::kTableIndex, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.io_.table.index()); });
    show(ids::kTableCommand, Type::kUint8, [](const Motion& m) {
        if (!m.io_.table.running()) return static_cast<double>(kAbort);
        return static_cast<double>(m.io_.table.paused() ? kPause : kStart);
    });
    show(ids::kTableState, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.io_.table.state()); });
    show(ids::kTableLoopsLeft, Type::kUint16,
         [](const Motion& m) { return static_cast<double>(m.io_.table.loops_left()); });
    show(ids::kTableConditions, Type::kUint8, [](const Motion& m) {
        return (m.io_.inputs.active(F::kTableCondition0) ? 1.0 : 0.0) +
               (m.io_.inputs.active(F::kTableCondition1) ? 2.0 : 0.0);
    });
    show(ids::kTableIndexInputs, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.index_of_inputs()); });
    show(ids::kTableErrorStep, Type::kUint8, [](const Motion& m) {
        const auto step = m.io_.table.error_step();
        return step ? static_cast<double>(*step) : kNoErrorStep;
    });
}

}  // namespace servo::sim
