// What stands before a scan: the checks of the form's boxes, and the plan that is taken from them.
#include <array>
#include <string>
#include <string_view>

#include "base/number.h"
#include "tuner/scan.h"

namespace servo::tuner {

namespace {

std::int16_t whole(const std::string& box) {
    return static_cast<std::int16_t>(base::round_half_even(base::leading_number(box)));
}

constexpr base::Text kTitle{"提示", "Notice"};
constexpr base::Text kNoLink{"请先打开通信连接!", "Please Set the Communication first!"};
// It speaks of the oscilloscope too, which is not asked: the scan goes before it on the line.
constexpr base::Text kBusy{
    "数据批量操作正在执行时不能启动扫频功能。如示波器、批量读写功能或下载功能",
    "The frequency scanning can't be initialized when other data exchange function working.e.g.,"
    "Scope,batch read or write,download"};

// The messages about the boxes exist in English only, in both languages.
constexpr base::Text in_both(std::string_view english) {
    return {english, english};
}
constexpr base::Text kNotice = in_both("Notice");

struct Limits {
    std::string TunerData::*box;
    double least;  // both inclusive
    double most;
    std::string_view message;
};
constexpr std::array kLimits{
    Limits{&TunerData::Text1, 32, 800, "the mag current must be in the range of 32 to 800"},
    Limits{&TunerData::Text2, 4, 900, "the start frequency must be in the range of 4 to 900"},
    Limits{&TunerData::Text4, 3, 200, "the step frequency must be in the range of 3 to 200"},
    Limits{&TunerData::Text3, 4, 1000, "the stop frequency must be in the range of 4 to 1000"}};
constexpr std::string_view kTooShort =
    "the stop frequency must be bigger than start frequency+step frequency";

}  // namespace

bool FrequencyScan::refuse(base::Text title, base::Text text) const {
    services_.notice.show(title.in(services_.language), text.in(services_.language));
    return false;
}

bool FrequencyScan::checks_passed() const {
    if (!services_.link_open()) return refuse(kTitle, kNoLink);
    if (state_.batch_mode != 0 || state_.download_active != 0) return refuse(kTitle, kBusy);
    for (const Limits& limits : kLimits) {
        const double value = base::leading_number(data_.*limits.box);
        if (value < limits.least || value > limits.most)
            return refuse(kNotice, in_both(limits.message));
    }
    if (base::leading_number(data_.Text3) <
        base::leading_number(data_.Text2) + base::leading_number(data_.Text4))
        return refuse(kNotice, in_both(kTooShort));
    return true;
}

void FrequencyScan::take_boxes() {
    settings_ = data_.settings;
    settings_.magCurrent = whole(data_.Text1);
    settings_.startFreq = whole(data_.Text2);
    settings_.stepFreq = whole(data_.Text4);
    settings_.stopFreq = whole(data_.Text3);
    buffers_ = {};
    buffers_.pointCount = point_count(settings_);
}

bool FrequencyScan::start() {
    if (!checks_passed()) return false;
    take_boxes();
    if (!active()) label_before_ = data_.Label36;
    moved_before_ = active() && may_move();
    data_.Label36 = ScanLabel::kAcquiring;
    state_.scanRequested = link::kTrue;
    state_.scanStep = 0;
    data_.Command1_enabled = false;
    next_block(0, 0);
    data_.Check1 = false;
    stop_ = Stop::kNo;
    observer_.scan_moved();
    return true;
}

}  // namespace servo::tuner
