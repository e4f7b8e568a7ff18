#include "tuner/scan.h"

#include <algorithm>
#include <array>

namespace servo::tuner {

namespace {

using link::Payload;
using link::Received;
using link::WireKey;

// The job's steps. 0 to 2 flush the line.
enum Step : std::uint8_t {
    kWriteStart = 3,
    kWriteStop,
    kWriteStep,
    kWriteCurrent,
    kRun,
    kWait,
    kReadShift,
    kReadCounts,
    kReadFeedback,
    kReadGain1,
    kReadGain2,
    kSetAddress,
    kReadWords,
};

struct Exchange {
    WireKey key;
    std::uint8_t answer;  // command byte
};

// In the order of the steps, from the first on. Where the answer is kWritten the request writes;
// everywhere else it reads.
constexpr std::array kExchanges{
    Exchange{0x30400202, link::kWritten}, Exchange{0x30400302, link::kWritten},
    Exchange{0x30400402, link::kWritten}, Exchange{0x60F91002, link::kWritten},
    Exchange{0x30400101, link::kWritten}, Exchange{0x30400101, link::kAnswer1},
    Exchange{0x30400A01, link::kAnswer1}, Exchange{0x64100304, link::kAnswer4},
    Exchange{0x65100302, link::kAnswer2}, Exchange{0x60F90102, link::kAnswer2},
    Exchange{0x60F90202, link::kAnswer2}, Exchange{0x30400504, link::kWritten},
    Exchange{0x30400504, link::kAnswer4}};

constexpr WireKey kCommandKey = 0x30400101;
constexpr std::int32_t kStartScan = 14;  // what the drive takes as "scan"
constexpr std::int32_t kStopScan = 0;
constexpr std::int16_t kSecondBlock = 0x400;  // word address
constexpr std::int16_t kWordsARead = 2;

// Looks into the input buffer of one receive tick, in the steps that move the data: a request that
// was sent twice is answered twice, and without a further look the copy would cost a whole cycle
// for every word. A limit, so that a line full of foreign frames can't hold the tick.
constexpr int kMostPasses = 3;

// Requests to stop before a drive that does not confirm is left alone: about two seconds.
constexpr int kMostStopRequests = 350;

const Exchange* exchange(std::uint8_t step) {
    if (step < kWriteStart || step > kReadWords) return nullptr;
    return &kExchanges.at(static_cast<std::size_t>(step - kWriteStart));
}

bool answers(const Exchange& asked, const Payload& payload) {
    return payload[0] == asked.answer &&
           link::reply_key(payload) == dictionary::identity_of(asked.key);
}

std::int16_t word(const Payload& payload, std::size_t at) {
    return static_cast<std::int16_t>(payload[at] | payload[at + 1] << 8);
}

// The two halves of a 32-bit sum come in the wrong order.
std::int32_t swapped_words(const Payload& payload) {
    const std::uint32_t value = static_cast<std::uint32_t>(payload[5]) << 24 |
                                static_cast<std::uint32_t>(payload[4]) << 16 |
                                static_cast<std::uint32_t>(payload[7]) << 8 | payload[6];
    return static_cast<std::int32_t>(value);
}

// Parts of the progress, of 1000. What the drive's measuring takes is not known beforehand; it is
// the longest part of most scans.
constexpr int kAtMeasuring = 20;
constexpr int kMeasured = 500;
constexpr int kAtData = 520;

}  // namespace

FrequencyScan::FrequencyScan(TunerData& data, const TunerServices& services, ScanObserver& observer)
    : data_(data), services_(services), observer_(observer), state_(services.engine.state) {}

int FrequencyScan::progress() const {
    if (!active()) return 0;
    if (state_.scanStep <= kWait) return kAtMeasuring * state_.scanStep / kWait;
    if (state_.scanStep < kSetAddress)
        return kMeasured +
               (kAtData - kMeasured) * (state_.scanStep - kWait) / (kSetAddress - kWait);
    const int all = 3 * buffers_.pointCount;
    const int entries = data_.scanMode == 0   ? data_.scanIndex
                        : data_.scanMode == 1 ? buffers_.pointCount + data_.scanIndex
                                              : all;
    return kAtData + (1000 - kAtData) * entries / std::max(all, 1);
}

bool FrequencyScan::measuring() const {
    return active() && state_.scanStep == kWait;
}

bool FrequencyScan::may_move() const {
    return moved_before_ || stop_ != Stop::kNo || state_.scanStep == kRun ||
           state_.scanStep == kWait;
}

void FrequencyScan::cancel() {
    if (!active() || stop_ != Stop::kNo) return;
    if (!may_move()) return give_up();
    stop_ = Stop::kWrite;
    stop_requests_ = 0;
    observer_.scan_moved();
}

bool FrequencyScan::active() const {
    return state_.scanRequested == link::kTrue;
}

bool FrequencyScan::warm_up(link::Engine& engine) {
    return engine.spend_warm_up(state_.scanStep);
}

std::int32_t FrequencyScan::value_of(std::uint8_t step) const {
    switch (static_cast<Step>(step)) {
        case kWriteStart:
            return settings_.startFreq;
        case kWriteStop:
            return settings_.stopFreq;
        case kWriteStep:
            return settings_.stepFreq;
        case kWriteCurrent:
            return settings_.magCurrent;
        case kRun:
            return kStartScan;
        case kSetAddress:
            return data_.readBase + data_.readOffset;
        case kWait:
        case kReadShift:
        case kReadCounts:
        case kReadFeedback:
        case kReadGain1:
        case kReadGain2:
        case kReadWords:
            break;
    }
    return 0;
}

void FrequencyScan::send_step(link::Engine& engine) {
    passes_ = 0;
    if (stop_ != Stop::kNo) return send_stop();
    if (const auto asked = request())
        engine.sendata2(asked->key, asked->value, asked->read ? 1 : 0);
}

std::optional<ScanRequest> FrequencyScan::request() const {
    const Exchange* asked = exchange(state_.scanStep);
    if (!active() || asked == nullptr) return std::nullopt;
    return ScanRequest{asked->key, value_of(state_.scanStep), asked->answer != link::kWritten};
}

void FrequencyScan::send_stop() {
    if (stop_requests_ >= kMostStopRequests) return give_up();
    ++stop_requests_;
    services_.engine.sendata2(kCommandKey, kStopScan, stop_ == Stop::kRead ? 1 : 0);
}

Received FrequencyScan::receive_frame(link::Engine&, const Payload& payload) {
    if (stop_ != Stop::kNo)
        return take_stop_answer(payload) ? Received::kEndTick : Received::kTaken;
    const bool data = state_.scanStep >= kSetAddress;
    const bool accepted = take_answer(payload);
    if (!data) return Received::kTaken;
    if (++passes_ >= kMostPasses) return Received::kEndTick;
    return accepted ? Received::kTaken : Received::kIgnored;
}

// False for an answer of another kind, an abort and an echo among them: the step stays, and its
// request goes out again.
bool FrequencyScan::take_answer(const Payload& payload) {
    const std::uint8_t step = state_.scanStep;
    const Exchange* asked = exchange(step);
    if (asked == nullptr || !answers(*asked, payload)) return false;
    link::FormulaOperands& operands = services_.engine.values().operands;
    switch (static_cast<Step>(step)) {
        case kWriteStart:
        case kWriteStop:
        case kWriteStep:
        case kWriteCurrent:
        case kRun:
        case kSetAddress:
            break;
        case kWait:
            if (payload[4] != 0) return false;  // the drive still measures
            moved_before_ = false;
            break;
        case kReadShift:
            settings_.scaleShift = payload[4];
            break;
        case kReadCounts:
            settings_.encoderCounts = static_cast<std::int32_t>(link::reply_value(payload, 14));
            operands.o64100320 = {settings_.encoderCounts, true};
            break;
        case kReadFeedback:
            settings_.feedbackConstant = word(payload, 4);
            operands.o65100310 = {settings_.feedbackConstant, true};
            break;
        case kReadGain1:
            settings_.velocityGain1 = static_cast<float>(link::reply_value(payload, 2));
            break;
        case kReadGain2:
            settings_.velocityGain2 = static_cast<float>(link::reply_value(payload, 2));
            break;
        case kReadWords:
            if (take_words(payload)) go_to(kSetAddress);
            return true;
    }
    go_to(static_cast<std::uint8_t>(step + 1));
    return true;
}

void FrequencyScan::go_to(std::uint8_t step) {
    state_.scanStep = step;
    observer_.scan_moved();
}

void FrequencyScan::next_block(std::uint8_t mode, std::int16_t base) {
    data_.scanIndex = 0;
    data_.scanMode = mode;
    data_.readBase = base;
    data_.readOffset = 0;
}

// False: the scan has ended. The blocks are followed by one more read, whose words are nobody's.
bool FrequencyScan::take_words(const Payload& payload) {
    const auto entry = static_cast<std::size_t>(data_.scanIndex);
    if (data_.scanMode == 0) {
        data_.readOffset = static_cast<std::int16_t>(data_.readOffset + kWordsARead);
        buffers_.commandB.at(entry) = word(payload, 6);
        buffers_.commandA.at(entry) = word(payload, 4);
        if (++data_.scanIndex == buffers_.pointCount) next_block(1, kSecondBlock);
    } else if (data_.scanMode == 1) {
        data_.readOffset = static_cast<std::int16_t>(data_.readOffset + kWordsARead);
        buffers_.response.at(entry) = swapped_words(payload);
        if (++data_.scanIndex == 2 * buffers_.pointCount) next_block(2, 0);
    } else {
        finish();
        return false;
    }
    return true;
}

void FrequencyScan::finish() {
    data_.settings = settings_;
    data_.buffers = buffers_;
    state_.scanStep = 0;
    data_.scanMode = 0;
    data_.Label36 = ScanLabel::kFinished;
    state_.scanRequested = 0;
    observer_.scan_ended(true);
}

// True: the scan has ended. The drive's word on the stop may be a late one on its start, so it
// counts only together with a state that reads as idle. A drive that refuses to be stopped is left
// to end by itself.
bool FrequencyScan::take_stop_answer(const Payload& payload) {
    if (link::reply_key(payload) != dictionary::identity_of(kCommandKey)) return false;
    if (payload[0] == link::kAbort) {
        give_up();
        return true;
    }
    if (stop_ == Stop::kWrite && payload[0] == link::kWritten) stop_ = Stop::kRead;
    if (stop_ == Stop::kRead && payload[0] == link::kAnswer1) {
        if (payload[4] == 0) {
            give_up();
            return true;
        }
        stop_ = Stop::kWrite;
    }
    return false;
}

// The engine clears the selectors too when it is the link that ends.
void FrequencyScan::give_up() {
    state_.scanRequested = 0;
    state_.scanStep = 0;
    stop_ = Stop::kNo;
    next_block(0, 0);
    data_.Label36 = label_before_;
    observer_.scan_ended(false);
}

// A link that closes always leaves "Finished" on the label and the start control at hand, whether a
// scan ran or not: without a link the start does nothing but say so.
void FrequencyScan::link_closed(link::Engine&) {
    if (active()) give_up();
    data_.Label36 = ScanLabel::kFinished;
    data_.Command1_enabled = true;
    observer_.scan_moved();
}

// With one the motor would move, so the start is locked again unless the user has unlocked it.
void FrequencyScan::link_opened(link::Engine&) {
    if (active()) give_up();
    data_.Command1_enabled = data_.Check1;
    observer_.scan_moved();
}

}  // namespace servo::tuner
