#include "scope/oscilloscope.h"

#include <algorithm>
#include <utility>

#include "base/number.h"
#include "scope/channel_lists.h"
#include "scope/cursors.h"
#include "scope/scale_steps.h"
#include "scope/trace.h"

namespace servo::scope {

namespace {

constexpr base::Text kStart{"开始", "Start"};
constexpr base::Text kSampling{"正在采集", "Sampling"};
constexpr base::Text kNormalMode{"示波器模式:正常", "Scope Mode:Normal"};
constexpr base::Text kImportMode{"示波器模式:导入。切换到正常模式按 ",
                                 "Scope Mode:Import.Switch to Normal mode press "};
constexpr base::Text kZoomDepth{"缩放等级:0", "Zoom Depth:0"};

// A step of a Y cursor by the keyboard: a hundredth of a division.
constexpr double kCursorStep = kPictureHeight / 1000.0;

bool is_curve(int channel) {
    return channel >= 0 && channel < kCurves;
}

}  // namespace

Oscilloscope::Oscilloscope(ScopeServices services)
    : Window("Scope"),
      services_(std::move(services)),
      acquisition_(services_, data_,
                   {.changed = [this] { tell_controls(); },
                    .Movingdata = [this] { Movingdata(); },
                    .DrawPicture = [this] { DrawPicture(); }}),
      mouse_(data_, {.view_changed =
                         [this](bool times) {
                             if (times) write_time_texts(data_, language());
                             redraw();
                         },
                     .cursor_moved = [this] { cursors_moved(); },
                     .tool_changed =
                         [this] {
                             tell_controls();
                             tell_cursors();
                         }}) {
    data_.Label44 = kZoomDepth.in(language());
}

const link::FormulaOperands& Oscilloscope::operands() const {
    return services_.engine.values().operands;
}

void Oscilloscope::load() {
    for (ScopeChannel& channel : data_.channels)
        offer_first_objects(channel, services_.dictionary, language());
    tell_controls();
}

void Oscilloscope::change_scope_language() {
    for (ScopeChannel& channel : data_.channels)
        rename_objects(channel, language());
    write_label44();
    DrawPicture();
}

void Oscilloscope::write_label44() {
    if (data_.dataValid)
        write_time_texts(data_, language());
    else
        data_.Label44 = kZoomDepth.in(language());
}

void Oscilloscope::set_visible(bool visible) {
    Window::set_visible(visible);
    acquisition_.set_visible(visible);
}

std::string Oscilloscope::Command6_caption() const {
    return std::string((data_.sampling ? kSampling : kStart).in(language()));
}

std::string Oscilloscope::Label20() const {
    return std::string((data_.importMode ? kImportMode : kNormalMode).in(language()));
}

// --- Channel rows

void Oscilloscope::pick_object(int channel, int list_index) {
    if (channel == kTrigger) {
        acquisition_.pick_trigger(list_index);
        return;
    }
    acquisition_.pick_object(channel, list_index);
    redraw();  // in the units of the object
}

void Oscilloscope::pick_unit(int channel, int list_index) {
    ScopeChannel& picked = data_.channels.at(static_cast<std::size_t>(channel));
    if (list_index < -1 || list_index >= static_cast<int>(picked.unitList.items.size())) return;
    picked.unitList.ListIndex = list_index;
    // Another unit has other numbers: a scale that was set for the old one fits no more.
    if (is_curve(channel)) picked.autoScale = true;
    redraw();
}

void Oscilloscope::click_enable(int channel) {
    acquisition_.click_enable(channel);
    redraw();
}

void Oscilloscope::click_hide(int channel) {
    ScopeChannel& clicked = curve(channel);
    clicked.hide = !clicked.hide;
    redraw();
}

void Oscilloscope::click_auto_scale(int channel) {
    ScopeChannel& clicked = curve(channel);
    clicked.autoScale = !clicked.autoScale;
    redraw();
}

void Oscilloscope::fit_curve(int channel) {
    curve(channel).autoScale = true;
    redraw();
}

void Oscilloscope::type_scale(int channel, std::string_view text) {
    curve(channel).scaleText = text;
}

void Oscilloscope::type_offset(int channel, std::string_view text) {
    curve(channel).offsetText = text;
}

void Oscilloscope::enter_scale(int channel) {
    curve(channel).autoScale = false;
    redraw();
}

void Oscilloscope::enter_offset(int channel) {
    curve(channel).autoScale = false;
    redraw();
}

// --- Acquisition area

void Oscilloscope::type(Box box, std::string_view text) {
    switch (box) {
        case Box::kText1:
            data_.Text1 = text;
            return;
        case Box::kText2:
            data_.Text2 = text;
            return;
        case Box::kText3:
            data_.Text3 = text;
            return;
        case Box::kText4:
            data_.Text4 = text;
            return;
    }
}

bool Oscilloscope::enter(Box box) {
    switch (box) {
        case Box::kText1:
            return acquisition_.enter_text1();
        case Box::kText2:
            return acquisition_.enter_text2();
        case Box::kText3:
            return acquisition_.enter_text3();
        case Box::kText4:
            acquisition_.enter_text4();
            return false;
    }
    return false;
}

void Oscilloscope::click_single() {
    data_.Check5 = !data_.Check5;
    tell_controls();
}

// --- Cursors and steps

void Oscilloscope::click_cursor(Cursor cursor) {
    CursorPlace& place = data_.cursors.at(static_cast<std::size_t>(cursor));
    place.on = !place.on;
    redraw();  // a scale or an offset that was typed and not entered takes effect as well
    cursors_moved();
}

void Oscilloscope::pick_curve(int list_index) {
    data_.Combo12 = is_curve(list_index) ? list_index : -1;
    cursors_moved();
    DrawPicture();  // the labels of another curve
}

void Oscilloscope::step_cursor(Cursor cursor, int steps) {
    CursorPlace& place = data_.cursors.at(static_cast<std::size_t>(cursor));
    if (!data_.dataValid || !place.on) return;
    if (cursor == Cursor::kY1 || cursor == Cursor::kY2) {
        place.at = std::clamp(place.at - steps * kCursorStep, 0.0, double{kPictureHeight});
    } else {
        const ZoomWindow& window = data_.window();
        const auto index = cursor_index(window, place.at);
        if (!index) return;
        const int moved = std::clamp<int>(*index + steps, window.first, window.last);
        place.at = cursor_abscissa(window, moved);
    }
    cursors_moved();
}

void Oscilloscope::cursors_moved() {
    if (data_.dataValid) read_cursors(data_, operands());
    tell_controls();
    tell_cursors();
}

void Oscilloscope::click_small_steps() {
    data_.Check10 = !data_.Check10;
    tell_controls();
}

void Oscilloscope::step_scale(bool up) {
    if (!is_curve(data_.Combo12)) return;
    ScopeChannel& picked = curve(data_.Combo12);
    picked.scaleText = up ? scale_up(picked.scaleText, data_.Check10)
                          : scale_down(picked.scaleText, data_.Check10);
    picked.autoScale = false;
    redraw();
}

void Oscilloscope::step_offset(int direction) {
    if (!is_curve(data_.Combo12)) return;
    ScopeChannel& picked = curve(data_.Combo12);
    const double moved = base::leading_number(picked.offsetText) + direction * picked.scale / 2.0;
    picked.offsetText = offset_text(moved);
    // Automatic scaling would put the curve back at once.
    picked.autoScale = false;
    redraw();
}

void Oscilloscope::Command9_Click() {
    step_scale(true);
}

void Oscilloscope::Command10_Click() {
    step_scale(false);
}

void Oscilloscope::Command11_Click() {
    step_offset(-1);
}

void Oscilloscope::Command12_Click() {
    step_offset(1);
}

// --- Files

Exported Oscilloscope::Command8_Click(const std::filesystem::path& file) {
    return export_scope(file, data_, operands(), language());
}

Imported Oscilloscope::Command13_Click(const std::filesystem::path& file) {
    const Imported result = import_scope(file, data_, services_.engine.values().operands,
                                         services_.dictionary, language());
    // A run must not go on: in import mode the start button is off, and behind a file that broke
    // off the ticks may no longer be those of what is recorded.
    if (result == Imported::kDone || result == Imported::kBroken) acquisition_.end_run();
    if (result == Imported::kDone) {
        switch_mode(true);
        data_.rowBytes = acquisition_.row_bytes();
        data_.sampleCount = static_cast<std::int32_t>(
            std::clamp(base::leading_number(data_.Text3), 0.0, double{INT16_MAX}));
        data_.rawLength = data_.rowBytes * data_.sampleCount;
        // Without a tick there is nothing to walk, and the curves of before must go.
        const bool none_ticked =
            std::none_of(data_.channels.begin(), data_.channels.begin() + kCurves,
                         [](const ScopeChannel& channel) { return channel.enable; });
        if (Movingdata() || none_ticked) DrawPicture();
    }
    tell_controls();
    return result;
}

void Oscilloscope::Label22_Click() {
    if (data_.importMode) switch_mode(false);
}

void Oscilloscope::switch_mode(bool import) {
    data_.importMode = import;
    if (!import) {
        // The constants came from the file: those of the drive are to be read again.
        services_.engine.state.status_lane = 0;
        services_.engine.values().clear_known();
        services_.engine.state.rotation = 0;
        data_.driveConfigNext = 0;
        data_.dataValid = false;
        data_.zoomDepth = 0;
        forget_texts();
        DrawPicture();
    }
    tell_controls();
}

// Around an empty plot stands what stood there before the first recording.
void Oscilloscope::forget_texts() {
    data_.Label44 = kZoomDepth.in(language());
    data_.Label15 = {};
    data_.y_labels = {};
    read_cursors(data_, operands());
}

// --- Additions

void Oscilloscope::keep_reference(std::string name) {
    if (!data_.dataValid) return;
    references_.keep(std::move(name), whole_recording());
    DrawPicture();
}

Recording Oscilloscope::visible_recording() const {
    return recording_of(data_, data_.window(), operands());
}

Recording Oscilloscope::whole_recording() const {
    return recording_of(data_, data_.zoomWindow.front(), operands());
}

// --- What follows from changes

ScopeChannel& Oscilloscope::curve(int channel) {
    return data_.channels.at(static_cast<std::size_t>(channel));
}

bool Oscilloscope::Movingdata() {
    const bool decoded = scope::Movingdata(data_, operands(), language());
    if (decoded) data_.curvesChanged = false;
    return decoded;
}

void Oscilloscope::redraw() {
    if (data_.dataValid) {
        data_.curvesChanged = true;
        DrawPicture();
    }
    tell_controls();
}

// Ticks that came with a refresh have waited for the next draw.
void Oscilloscope::DrawPicture() {
    if (data_.curvesChanged && data_.dataValid) {
        change_curve_unit(data_, operands());
        Print_Pic_Line(data_);
    }
    data_.curvesChanged = false;
    tell_controls();
    if (observer_ != nullptr) observer_->plot_changed();
}

void Oscilloscope::tell_controls() {
    if (observer_ != nullptr) observer_->controls_changed();
}

void Oscilloscope::tell_cursors() {
    if (observer_ != nullptr) observer_->cursors_changed();
}

}  // namespace servo::scope
