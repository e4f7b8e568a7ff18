// Status lanes: what a send tick does while Com_Change is 0.
#include <array>

#include "link/engine.h"

namespace servo::link {

namespace {

constexpr std::array<WireKey, 8> kLane0{0x26010002, 0x26020002, 0x65100302, 0x64100304,
                                        0x30400704, 0x60F61302, 0x60F61102, 0x1F560104};

// The two error masks, then the digital inputs and outputs.
constexpr std::array<WireKey, 26> kLane1{
    0x26050102, 0x26050402, 0x20100102, 0x20100202, 0x20100302, 0x20100402, 0x20100502,
    0x20100602, 0x20100702, 0x20100802, 0x20100902, 0x20100A02, 0x20100B02, 0x20100C02,
    0x20100D02, 0x20100E02, 0x20100F02, 0x20101002, 0x20101102, 0x20101202, 0x20101302,
    0x20101402, 0x20101502, 0x20101D02, 0x20101E02, 0x20101F02};

// The recorder's settings.
constexpr std::array<WireKey, 13> kLane2{0x23000104, 0x23000204, 0x23000304, 0x23000404, 0x23000504,
                                         0x23000604, 0x23000704, 0x23000804, 0x23000904, 0x23000A04,
                                         0x23000B04, 0x23000C04, 0x23000D04};

constexpr int kLane1DrainTicks = 4;
constexpr int kRotations = 3;
constexpr int kRoundsWithoutFirmwareCheck = 2;

bool inside(std::span<const WireKey> list, int position) {
    return position >= 0 && static_cast<std::size_t>(position) < list.size();
}

}  // namespace

std::span<const WireKey> Engine::status_list(int lane) {
    if (lane == 0) return kLane0;
    if (lane == 1) return kLane1;
    if (lane == 2) return kLane2;
    return {};
}

void Engine::send_lane() {
    if (state.status_lane == 0) {
        send_lane0();
    } else if (state.status_lane == 1) {
        send_lane1();
    } else if (state.status_lane == 2) {
        send_lane2();
    }
}

void Engine::send_lane0() {
    if (state.scopeState == 1) {  // a recording has just been started: watch it at once
        state.status_lane = 2;
        return;
    }
    if (inside(kLane0, state.sub_Pointer))
        sendata2(kLane0[static_cast<std::size_t>(state.sub_Pointer)], 0, 1);
    ++state.sub_Pointer;
    if (!inside(kLane0, state.sub_Pointer)) end_of_lane0();
}

// 30400710 is not part of the test: not every drive has it, and formulas guard it themselves.
bool Engine::operands_known() const {
    const FormulaOperands& known = values_.operands;
    return known.o65100310.seen && known.o64100320.seen && known.o60F61310.seen &&
           known.o60F61110.seen;
}

// The lane repeats until formulas can be trusted. The answer to its last request is still on its
// way here, so the first round never passes.
void Engine::end_of_lane0() {
    state.sub_Pointer = 0;
    if (operands_known() && values_.firmware_check_known) {
        state.status_lane = 1;
        // A page that was opened in the first moments of the link went ahead of this lane. Its
        // read-once rows were shown with operands of 0 and would stay so: they are read again.
        if (read_without_operands_) set_all_must_fresh();
        read_without_operands_ = false;
        return;
    }
    if (values_.firmware_check_known) return;
    if (++state.g_FW_CRC_OK_overtimes < kRoundsWithoutFirmwareCheck) return;
    // Old firmware has no check value. The pages are not held up by it, whatever else is missing.
    state.g_FW_CRC_OK_overtimes = 0;
    values_.firmware_check_known = true;
    publish_firmware_check({});
    state.status_lane = 1;
}

void Engine::send_lane1() {
    if (state.scopeState == 1) {
        state.status_lane = 2;
        return;
    }
    if (inside(kLane1, state.sub_Pointer)) {
        sendata2(kLane1[static_cast<std::size_t>(state.sub_Pointer)], 0, 1);
        ++state.sub_Pointer;
        return;
    }
    // Silent ticks in which late answers can still come in: on the page rows they would be dropped.
    ++state.sub_Pointer;
    if (state.sub_Pointer >= static_cast<int>(kLane1.size()) + kLane1DrainTicks) end_of_lane1();
}

void Engine::end_of_lane1() {
    if (state.io_refresh != 0) {
        state.io_refresh = 0;
        state.sub_Pointer = 0;
    } else if (scope_ != nullptr && scope_->window_visible()) {
        state.sub_Pointer = 0;
        state.status_lane = 2;
    } else {
        state.sub_Pointer = 1;
        state.status_lane = 0;
        state.Com_Change = 1;
    }
}

void Engine::send_lane2() {
    if (state.scopeState != 0 && scope_ != nullptr) {
        scope_->send_step(*this);
        return;
    }
    if (scope_ == nullptr || scope_->settings_known()) {
        leave_lane2();
        return;
    }
    if (inside(kLane2, state.sub_Pointer))
        sendata2(kLane2[static_cast<std::size_t>(state.sub_Pointer)], 0, 1);
    ++state.sub_Pointer;
    if (inside(kLane2, state.sub_Pointer)) return;
    ++state.rotation;
    if (state.rotation < kRotations) {
        state.sub_Pointer = 0;
    } else {
        leave_lane2();
    }
}

void Engine::leave_lane2() {
    state.sub_Pointer = 1;
    state.Com_Change = 1;
    state.status_lane = 0;
    state.rotation = 0;
}

}  // namespace servo::link
