#include "sim/input_objects.h"

#include "sim/object_ids.h"

namespace servo::sim {

InputObjects::InputObjects(ObjectTable& t)
    : enable_source(t.bind(ids::kEnableSource, Type::kUint8, 2)),
      enable_style(t.bind(ids::kEnableInputStyle, Type::kUint8, 1)),
      reset_style(t.bind(ids::kResetInputEdge, Type::kUint8)),
      positive_action(t.bind(ids::kPositiveLimitAction, Type::kUint8)),
      negative_action(t.bind(ids::kNegativeLimitAction, Type::kUint8)),
      motor_error_delay(t.bind(ids::kMotorErrorDelay, Type::kUint16, 100)),
      activate_style(t.bind(ids::kActivateStyle, Type::kUint8, 1)),
      mode_select0(t.bind(ids::kModeSelect0, Type::kInt8, -4)),
      mode_select1(t.bind(ids::kModeSelect1, Type::kInt8, -3)),
      limit_deceleration(t.bind(ids::kLimitDeceleration, Type::kUint32, 163840)),
      switched_max_current(t.bind(ids::kSwitchedMaxCurrent, Type::kUint16, 683)),
      captured(t.bind(ids::kCapturedPosition, Type::kInt32)),
      fast_edges(t.bind(ids::kFastCaptureEdges, Type::kUint8)) {
    for (std::size_t i = 0; i < multi.size(); ++i) {
        const auto id = ids::kMultiInputs + static_cast<dictionary::Identity>(i);
        multi[i] = &t.bind(id, Type::kUint8);
    }
    for (std::size_t i = 0; i < fast_captured.size(); ++i) {
        const auto id = ids::kFastCaptures + static_cast<dictionary::Identity>(i);
        fast_captured[i] = &t.bind(id, Type::kInt32);
    }
}

OutputObjects::OutputObjects(ObjectTable& t)
    : ready_condition(t.bind(ids::kReadyCondition, Type::kUint8, 1)),
      index_width(t.bind(ids::kIndexWidth, Type::kUint16, 2)),
      reached_hold(t.bind(ids::kReachedHold, Type::kUint16)),
      current_warning(t.bind(ids::kCurrentWarning, Type::kUint16, 110)),
      torque_off_state(t.bind(ids::kTorqueOffState, Type::kUint8, 3)) {}

}  // namespace servo::sim
