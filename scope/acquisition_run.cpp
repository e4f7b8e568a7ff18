// A run: started, watched, ended. The states, as they stand in the engine's `scopeState`:
//   0 idle   1 start written   2, 3, 4 the recorder reported 1, 2, 3   5 its buffer is asked for
//   6 segments come in
#include <chrono>
#include <cmath>

#include "base/number.h"
#include "scope/acquisition.h"

namespace servo::scope {

namespace {

constexpr base::Text kClosedTitle{"提示", "Notice"};
constexpr base::Text kClosedText{"请先打开通信连接!", "Please Set the Communication first!"};

// Addition: nothing of a run could reach the drive, and a set-up that did would spoil its firmware.
constexpr base::Text kTransferText{"固件下载正在进行，结束后才能采样。",
                                   "A firmware download is under way. Sample when it has ended."};

constexpr std::chrono::milliseconds kStartPause{3};
constexpr std::uint8_t kReread = 5;
constexpr std::uint8_t kPolls = 12;  // until the other status lanes have their turn
constexpr int kRecorderIndex = 0x2300;
constexpr int kCommandSub = 7;
constexpr int kBufferSub = 0x13;

enum State : std::int32_t { kIdle = 0, kStarted = 1, kAsking = 5, kUploading = 6 };

// Integer part of what a box holds.
std::int32_t whole_number(std::string_view text) {
    const double value = std::trunc(base::leading_number(text));
    if (!(std::fabs(value) <= INT32_MAX)) return 0;  // no number of samples
    return static_cast<std::int32_t>(value);
}

}  // namespace

std::int32_t Acquisition::row_bytes() const {
    std::int32_t bytes = 0;
    for (std::size_t index = 0; index < kCurves; ++index) {
        const ScopeChannel& curve = data_.channels[index];
        if (curve.enable) bytes += width_of(curve.picked_type());
    }
    return bytes;
}

// The same click starts and stops, and the tick clicks too. With nothing to record it does neither,
// so a run whose last channel was unticked can be stopped when a channel is ticked again.
void Acquisition::Command6_Click() {
    if (!services_.link_open()) {
        services_.notice.show(kClosedTitle.in(services_.language),
                              kClosedText.in(services_.language));
        return;
    }
    if (services_.transfer_running && services_.transfer_running()) {
        services_.notice.show(kClosedTitle.in(services_.language),
                              kTransferText.in(services_.language));
        return;
    }
    data_.rowBytes = row_bytes();
    data_.sampleCount = whole_number(data_.Text3);
    if (data_.rowBytes == 0 || data_.sampleCount == 0) return;
    if (data_.sampling) {
        stop();
    } else {
        start();
    }
    data_.ProgressBar1 = 0.0;
    tell();
}

// While a run is under way this stops it, and it is the next start that fetches the buffer again.
void Acquisition::Command7_Click() {
    data_.rereadRequested = kReread;
    Command6_Click();
}

void Acquisition::start() {
    link::Engine& engine = services_.engine;
    data_.sampling = true;
    if (data_.rereadRequested != 0) {
        data_.rereadRequested = 0;
        engine.state.scopeState = kAsking;
    } else {
        engine.sendata2(kCommandKey, 1, 0);
        engine.state.scopeState = kStarted;
    }
    engine.state.str_read_step = 0;
    engine.state.segment_pace = 0;
    data_.rawIndex = 0;
    engine.state.status_lane = 2;
    engine.state.sub_Pointer = 0;
    engine.state.rotation = 0;
    engine.clock().sleep(kStartPause);  // the recorder needs a moment until its status counts
}

void Acquisition::stop() {
    link::Engine& engine = services_.engine;
    data_.sampling = false;
    engine.state.str_read_step = 0;
    engine.state.str_read_step_bk = 0;
    engine.sendata2(kCommandKey, 0, 0);
    engine.state.scopeState = kIdle;
    data_.rawIndex = 0;
}

void Acquisition::end_run() {
    if (data_.sampling) stop();
    services_.engine.state.scopeState = kIdle;
    services_.engine.state.str_read_step = 0;
    data_.rawIndex = 0;
    data_.ProgressBar1 = 0.0;
    tell();
}

// --- The line

void Acquisition::send_step(link::Engine& engine) {
    if (engine.state.scopeState < kAsking) {
        poll_status(engine);
        return;
    }
    // An upload that begins asks for the whole, whatever segment was the last.
    if (engine.state.scopeState == kAsking) engine.state.str_read_step = 0;
    engine.sendata(kBufferKey, 0, 1);
}

// Now and then the other lanes have their turn, so that the drive's state is known during a long
// wait. They go on from their second object, as behind every turn of this lane.
void Acquisition::poll_status(link::Engine& engine) {
    if (data_.statusPollCount < kPolls) {
        ++data_.statusPollCount;
        engine.sendata2(kCommandKey, 0, 1);
        return;
    }
    data_.statusPollCount = 0;
    engine.state.status_lane = 0;
    engine.state.rotation = 0;
    engine.state.sub_Pointer = 1;
}

link::Received Acquisition::receive_frame(link::Engine& engine, const link::Payload& payload) {
    const std::uint8_t command = payload[0];
    const bool segment = command < link::kAnswerSegmented && command != link::kRead;
    if (engine.state.scopeState == kUploading && segment) return take_segment(engine, payload);

    const link::Identity object = link::reply_key(payload);
    if (object >> 8 != kRecorderIndex) return link::Received::kIgnored;
    const int sub = object & 0xFF;
    if (command == link::kAbort) {
        if (sub == kCommandSub) take_abort();
    } else if (command == link::kAnswerSegmented) {
        if (sub == kBufferSub && engine.state.scopeState == kAsking) begin_upload(engine);
    } else if (command >> 4 != 4 || command == link::kRead) {
        return link::Received::kTaken;  // a write was acknowledged
    } else if (sub == kCommandSub) {
        take_status(command, payload[4]);
    } else {
        return take_setting(sub, payload);
    }
    return link::Received::kTaken;
}

// Status 3 counts even when nothing was started here: the recording of somebody else is fetched.
// Not over that of a file, where a run could not be stopped either.
void Acquisition::take_status(std::uint8_t command, std::uint8_t status) {
    if (data_.importMode) return;
    std::int32_t& state = services_.engine.state.scopeState;
    if (status == 1 && state >= 1) {
        state = 2;
    } else if (status == 2 && state >= 2) {
        state = 3;
    } else if (status == 3) {
        state = 4;
    } else if (status == 0 && state >= 1 && command == link::kAnswer1) {
        state = kAsking;
    }
}

// The recorder refuses. The click ends the run; where none was started here, it starts one.
void Acquisition::take_abort() {
    if (services_.engine.state.scopeState < 1) return;
    services_.engine.state.scopeState = kIdle;
    Command6_Click();
}

// --- The link

void Acquisition::reset_run() {
    data_.sampling = false;
    data_.rawIndex = 0;
    data_.ProgressBar1 = 0.0;
    data_.statusPollCount = 0;
    data_.driveConfigNext = 0;
    drop_first_setting_ = false;
    last_setting_ = 0;
    tell();
}

void Acquisition::link_timed_out(link::Engine& engine) {
    engine.state.scopeState = kIdle;
    engine.state.sub_Pointer = 0;
    reset_run();
}

void Acquisition::link_closed(link::Engine& engine) {
    engine.state.scopeState = kIdle;
    engine.state.str_read_step = 0;
    engine.state.sub_Pointer = 0;
    reset_run();
}

}  // namespace servo::scope
