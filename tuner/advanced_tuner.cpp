#include "tuner/advanced_tuner.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <utility>

#include "base/file.h"
#include "base/number.h"
#include "tuner/analysis.h"
#include "tuner/bode_file.h"
#include "tuner/filter.h"
#include "tuner/simulation.h"

namespace servo::tuner {

namespace {

constexpr base::Text kTitle{"提示", "Notice"};
constexpr base::Text kUnlock{
    "警告:即将解锁[启动]按钮。\n"
    "点击[启动]按钮,电机将不受外部信号控制自动运行一定时间与距离,请确保机械与人身安全。\n"
    "点击[确认]进行解锁。",
    "Warning:to unlock [Start] button.\n"
    "Press the [Start] button,motor will run for a while and some distance,please make sure that "
    "machine and personal safety。\n"
    "press [OK] to unlock。"};

constexpr std::array<base::Text, 3> kLabels{
    {{"未启动", "Not start"}, {"采集中", "Acquiring"}, {"结束", "Finished"}}};

std::string refused_text(int slot, base::Language language) {
    return language == base::Language::kChinese
               ? fmt::format("滤波器 {} 设置错误.", slot)
               : fmt::format("The filter {} setting is wrong.", slot);
}

constexpr int kModelSlots = 4;  // slots 5 and 6 take no part in the loop
constexpr int kNotchPosition = static_cast<int>(FilterType::kNotch) - 1;

std::string whole(std::int16_t value) {
    return base::number_text(value);
}

}  // namespace

AdvancedTuner::AdvancedTuner(TunerServices services)
    : link::Window("ADVtunner"), services_(std::move(services)), scan_(data_, services_, *this) {
    services_.engine.add_job(link::JobPlace::kScan, scan_);
}

AdvancedTuner::~AdvancedTuner() {
    services_.engine.remove_job(link::JobPlace::kScan, scan_);
}

// --- Texts

std::string AdvancedTuner::Label36() const {
    return std::string(kLabels.at(static_cast<std::size_t>(data_.Label36)).in(services_.language));
}

std::string AdvancedTuner::progress_text() const {
    if (!scan_.active()) return {};
    const bool chinese = services_.language == base::Language::kChinese;
    if (scan_.cancelling()) return chinese ? "正在停止扫频" : "Stopping the scan";
    if (scan_.measuring()) return chinese ? "驱动器正在测量" : "The drive measures";
    const int points = scan_.points();
    const int point = data_.scanMode == 0 ? data_.scanIndex : data_.scanIndex / 2;
    const int shown = std::min(point + 1, points);
    const int block = data_.scanMode == 0 ? 1 : 2;
    return chinese ? fmt::format("数据块 {}：第 {} 点，共 {} 点", block, shown, points)
                   : fmt::format("Block {}: point {} of {}", block, shown, points);
}

// --- Scan

void AdvancedTuner::Check1_Click() {
    data_.Check1 = !data_.Check1;
    if (data_.Check1) {
        const base::Answer answer =
            services_.notice.show(kTitle.in(services_.language), kUnlock.in(services_.language),
                                  base::Buttons::kOkCancel);
        data_.Check1 = answer == base::Answer::kOk;
    }
    data_.Command1_enabled = data_.Check1;
    tell_controls();
}

void AdvancedTuner::Command1_Click() {
    if (!data_.Command1_enabled) return;
    scan_.start();
    tell_controls();
}

void AdvancedTuner::cancel_scan() {
    scan_.cancel();
    tell_controls();
}

void AdvancedTuner::type(Box box, std::string text) {
    switch (box) {
        case Box::kText1:
            data_.Text1 = std::move(text);
            break;
        case Box::kText2:
            data_.Text2 = std::move(text);
            break;
        case Box::kText3:
            data_.Text3 = std::move(text);
            break;
        case Box::kText4:
            data_.Text4 = std::move(text);
            break;
        case Box::kText9:
            data_.Text9 = std::move(text);
            break;
        case Box::kText10:
            data_.Text10 = std::move(text);
            break;
        case Box::kText11:
            data_.Text11 = std::move(text);
            break;
    }
}

void AdvancedTuner::scan_moved() {
    tell_controls();
}

void AdvancedTuner::scan_ended(bool finished) {
    if (finished) analyse();
    tell_controls();
}

void AdvancedTuner::analyse() {
    data_.analysed = FirstAnalyse(data_.settings, data_.buffers, data_.analysis);
    // The model belongs to the scan that it was computed from; filters stand on their own.
    data_.simulation.points = 0;
    data_.redraw_gain = data_.redraw_phase = data_.redraw_filters = true;
    tell_picture();
}

// --- Filters

void AdvancedTuner::click_use(int slot) {
    FilterSlot& clicked = data_.slots.at(static_cast<std::size_t>(slot));
    clicked.use = !clicked.use;
    tell_controls();
}

void AdvancedTuner::pick_type(int slot, int list_index) {
    data_.slots.at(static_cast<std::size_t>(slot)).type = list_index;
    tell_controls();
}

void AdvancedTuner::type_parameter(int slot, int parameter, std::string text) {
    data_.slots.at(static_cast<std::size_t>(slot))
        .parameters.at(static_cast<std::size_t>(parameter)) = std::move(text);
}

// --- Simulation and picture

void AdvancedTuner::Command4_Click() {
    const EncodedSlots encoded = encode(data_.slots);
    if (encoded.refused != 0) {
        services_.notice.show(kTitle.in(services_.language),
                              refused_text(encoded.refused, services_.language));
        return;
    }
    // Without a gain the division by it fails, and that ends the command without a word.
    const auto gains = read_gains(data_.Text10, data_.Text11, data_.Text9);
    if (!gains) return;
    data_.simulation = simulate(data_, encoded.records, *gains);
    data_.redraw_gain = data_.redraw_phase = data_.redraw_filters = true;
    tell_controls();
    tell_picture();
}

void AdvancedTuner::click_curve(Curve curve) {
    bool& shown = data_.choices.curves.at(static_cast<std::size_t>(curve));
    shown = !shown;
    tell_picture();
}

void AdvancedTuner::Check15_Click() {
    data_.choices.Check15 = !data_.choices.Check15;
    tell_picture();
}

void AdvancedTuner::Check16_Click() {
    data_.choices.Check16 = !data_.choices.Check16;
    tell_picture();
}

void AdvancedTuner::pick_range(int list_index) {
    data_.choices.Combo2 = list_index;
    tell_picture();
}

void AdvancedTuner::picture_drawn() {
    data_.redraw_gain = data_.redraw_phase = data_.redraw_filters = false;
}

// --- Files

void AdvancedTuner::Command3_Click(const std::filesystem::path& file) {
    if (!base::write_file(file, write_bode(data_.settings, data_.buffers))) tell_wrong_file();
}

void AdvancedTuner::Command2_Click(const std::filesystem::path& file) {
    const auto bytes = base::read_file(file);
    if (!bytes) {
        tell_wrong_file();
        return;
    }
    // Into copies: of a file that breaks off the boxes show the plan, and the scan that was there
    // stays whole.
    ScanSettings settings = data_.settings;
    auto buffers = std::make_unique<ScanBuffers>(data_.buffers);
    const BodeReading reading = read_bode(*bytes, settings, *buffers);
    if (reading.fields) {
        data_.Text1 = whole(settings.magCurrent);
        data_.Text2 = whole(settings.startFreq);
        data_.Text3 = whole(settings.stopFreq);
        data_.Text4 = whole(settings.stepFreq);
    }
    if (reading.buffers) {
        data_.settings = settings;
        data_.buffers = *buffers;
        analyse();
    } else {
        tell_wrong_file();
    }
    tell_controls();
}

void AdvancedTuner::tell_wrong_file() {
    services_.notice.show("Notice", kBodeWrong);
}

// --- Additions

int AdvancedTuner::apply_notch(double frequency, double width, double depth, double damping) {
    const auto model_slots = std::span(data_.slots).first(kModelSlots);
    const auto free = std::ranges::find(model_slots, false, &FilterSlot::use);
    if (free == model_slots.end()) return -1;
    *free = {.use = true,
             .type = kNotchPosition,
             .parameters = {base::format_up_to(frequency, 1), base::format_up_to(damping, 3),
                            base::format_up_to(width, 1), base::format_up_to(depth, 1)}};
    tell_controls();
    return static_cast<int>(free - model_slots.begin());
}

void AdvancedTuner::tell_controls() {
    if (observer_ != nullptr) observer_->controls_changed();
}

void AdvancedTuner::tell_picture() {
    if (observer_ != nullptr) observer_->picture_changed();
}

}  // namespace servo::tuner
