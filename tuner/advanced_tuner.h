// The advanced tuner without its window: what the controls hold, what a click does. Who shows it
// passes clicks in and observes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "link/window.h"
#include "tuner/scan.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

class TunerObserver {
  public:
    TunerObserver() = default;
    TunerObserver(const TunerObserver&) = delete;
    TunerObserver& operator=(const TunerObserver&) = delete;
    virtual ~TunerObserver() = default;

    virtual void controls_changed() = 0;  // texts, boxes, labels, progress; frequent during a scan
    virtual void picture_changed() = 0;   // curves, choices of curves
};

class AdvancedTuner final : public link::Window, private ScanObserver {
  public:
    // Enters its scan into the engine as the scan job.
    explicit AdvancedTuner(TunerServices services);
    ~AdvancedTuner() override;

    void set_observer(TunerObserver* observer) { observer_ = observer; }  // may be null

    const TunerData& data() const { return data_; }
    base::Language language() const { return services_.language; }
    const FrequencyScan& scan() const { return scan_; }
    bool scanning() const { return scan_.active(); }

    // --- Texts that depend on state and language
    std::string Label36() const;
    std::string progress_text() const;  // addition: "Point 12 of 333", empty when idle

    // --- Scan
    void Check1_Click();    // unlocks, behind its question
    void Command1_Click();  // starts
    void cancel_scan();     // addition
    enum class Box : std::uint8_t { kText1, kText2, kText3, kText4, kText9, kText10, kText11 };
    void type(Box box, std::string text);

    // --- Filters; slots 0 to 5
    void click_use(int slot);
    void pick_type(int slot, int list_index);
    void type_parameter(int slot, int parameter, std::string text);

    // --- Simulation and picture
    void Command4_Click();
    void click_curve(Curve curve);  // Check3 to Check14
    void Check15_Click();
    void Check16_Click();
    void pick_range(int list_index);  // Combo2

    // --- Files, behind their dialogs
    void Command3_Click(const std::filesystem::path& file);  // save
    void Command2_Click(const std::filesystem::path& file);  // load

    // Who has drawn the picture.
    void picture_drawn();

    // --- Additions
    // Puts a notch into the first free slot among the first four, in use; -1 when none is free.
    int apply_notch(double frequency, double width, double depth, double damping);

  private:
    void scan_moved() override;
    void scan_ended(bool finished) override;
    void analyse();
    void tell_controls();
    void tell_picture();
    void tell_wrong_file();

    TunerServices services_;
    TunerData data_;
    FrequencyScan scan_;
    TunerObserver* observer_ = nullptr;
};

}  // namespace servo::tuner
