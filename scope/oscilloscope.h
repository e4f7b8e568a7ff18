// The oscilloscope without its window: what the controls hold, what a click does. Who shows it
// passes clicks in and observes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "link/window.h"
#include "scope/acquisition.h"
#include "scope/plot_mouse.h"
#include "scope/recording.h"
#include "scope/scope_data.h"
#include "scope/scope_file.h"

namespace servo::scope {

// Calls come after the change, from clicks and from ticks alike; they are frequent while a buffer
// is uploaded, so a window may gather them.
class ScopeObserver {
  public:
    ScopeObserver() = default;
    ScopeObserver(const ScopeObserver&) = delete;
    ScopeObserver& operator=(const ScopeObserver&) = delete;
    virtual ~ScopeObserver() = default;

    virtual void controls_changed() = 0;  // texts, boxes, lists, labels, progress
    virtual void plot_changed() = 0;      // curves, grid labels, markers
    virtual void cursors_changed() = 0;   // cursors, rectangle, pointer; curves stay
};

class Oscilloscope final : public link::Window {
  public:
    explicit Oscilloscope(ScopeServices services);

    void set_observer(ScopeObserver* observer) { observer_ = observer; }  // may be null

    const ScopeData& data() const { return data_; }
    const link::FormulaOperands& operands() const;
    base::Language language() const { return services_.language; }
    Acquisition& acquisition() { return acquisition_; }
    PlotMouse& mouse() { return mouse_; }
    References& references() { return references_; }

    // Offers the first objects; once the dictionary is loaded.
    void load();
    // Names in the lists and the texts that are composed here, in the current language.
    void change_scope_language();
    // The poller runs lane 2 only while the window is shown.
    void set_visible(bool visible) override;

    // --- Texts that depend on state and language
    std::string Command6_caption() const;  // "Start", "Sampling"
    std::string Label20() const;           // the mode
    bool acquisition_enabled() const { return !data_.importMode; }

    // --- Channel rows; channels 0 to 3, kTrigger for the trigger source
    void pick_object(int channel, int list_index);         // Combo1 to Combo4, Combo9
    void pick_unit(int channel, int list_index);           // Combo5 to Combo8, Combo11
    void click_enable(int channel);                        // Check14 to Check11
    void click_hide(int channel);                          // Check1 to Check4
    void click_auto_scale(int channel);                    // Check6 to Check9
    void type_scale(int channel, std::string_view text);   // Text5 to Text8, while typing
    void type_offset(int channel, std::string_view text);  // Text9 to Text12, while typing
    void enter_scale(int channel);                         // Enter
    void enter_offset(int channel);

    // --- Acquisition area
    enum class Box : std::uint8_t { kText1, kText2, kText3, kText4 };
    void type(Box box, std::string_view text);
    bool enter(Box box);  // true: the focus goes to Command6
    void set_focus(std::string_view control) { data_.focus = control; }
    void Image5_Click() { acquisition_.Image5_Click(); }
    void click_single();  // Check5
    void Command6_Click() { acquisition_.Command6_Click(); }
    void Command7_Click() { acquisition_.Command7_Click(); }

    // --- Cursors and steps
    void click_cursor(Cursor cursor);            // Image1 to Image4: X1, X2, Y1, Y2
    void pick_curve(int list_index);             // Combo12
    void step_cursor(Cursor cursor, int steps);  // keyboard: samples, or hundredths of a division
    void click_small_steps();                    // Check10
    void Command9_Click();                       // scale up
    void Command10_Click();                      // scale down
    void Command11_Click();                      // offset down
    void Command12_Click();                      // offset up
    void Image8_Click() { mouse_.Image8_Click(); }

    // --- Files
    Exported Command8_Click(const std::filesystem::path& file);   // behind its dialog
    Imported Command13_Click(const std::filesystem::path& file);  // behind its dialog
    void Label22_Click();                                         // back from import mode

    // --- Additions
    void keep_reference(std::string name);  // of the whole recording
    Recording visible_recording() const;    // the window shown
    Recording whole_recording() const;
    void fit_curve(int channel);  // automatic scale once more

  private:
    ScopeChannel& curve(int channel);
    bool Movingdata();  // false: the recording does not fit, and is not drawn
    void redraw();      // change_curve_unit, Print_Pic_Line, DrawPicture
    void forget_texts();
    void DrawPicture();
    void cursors_moved();
    void step_scale(bool up);
    void step_offset(int direction);
    void switch_mode(bool import);
    void write_label44();
    void tell_controls();
    void tell_cursors();

    ScopeServices services_;
    ScopeData data_;
    Acquisition acquisition_;
    PlotMouse mouse_;
    References references_;
    ScopeObserver* observer_ = nullptr;
};

}  // namespace servo::scope
