// The advanced tuner on screen. It holds no rule: events go to the AdvancedTuner, and what that
// holds is shown.
#pragma once

#include <QTabWidget>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <string>

#include "base/file_dialogs.h"
#include "tuner/advanced_tuner.h"
#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class CurvesPanelWidget;
class FilterSlotWidget;
class GainsPanelWidget;
class MarginsPanelWidget;
class PictureFrameWidget;
class PictureWidget;
class ResonancesPanelWidget;
class ScanPanelWidget;
class StepPanelWidget;
class ToolRowWidget;

using base::FileQuestion;
using TunerDialogs = base::FileDialogs;

class TunerWindow final : public QWidget, private TunerObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the operator does is shown at once.
    static constexpr int kGatherMs = 50;

    // The tuner outlives its window.
    TunerWindow(AdvancedTuner& tuner, TunerDialogs dialogs, QWidget* parent = nullptr);
    ~TunerWindow() override;

    QSize sizeHint() const override;

    // Shows what has been gathered.
    void refresh_now();

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void controls_changed() override { gather(); }
    void picture_changed() override;
    void gather();

    void make_tools(const PanelContext& context);
    void make_panels(const PanelContext& context);
    void make_analysis(const PanelContext& context);
    QWidget* make_filters(const PanelContext& context);
    void lay_out(QWidget* filters);
    void set_tab_order();
    void change_meform_language();
    void refresh_picture();

    void load_scan();
    void save_scan();
    void save_picture(const char* suffix);
    void save_table();
    void tell_saved(bool done, const std::string& path);

    AdvancedTuner& tuner_;
    TunerDialogs dialogs_;
    ToolRowWidget* tools_ = nullptr;
    PictureFrameWidget* frame_ = nullptr;
    CurvesPanelWidget* curves_ = nullptr;
    ScanPanelWidget* scan_ = nullptr;
    GainsPanelWidget* gains_ = nullptr;
    std::array<FilterSlotWidget*, kSlots> slots_{};
    QTabWidget* analysis_ = nullptr;  // TabAnalysis
    MarginsPanelWidget* margins_ = nullptr;
    ResonancesPanelWidget* resonances_ = nullptr;
    StepPanelWidget* step_ = nullptr;
    QTimer timer_;
    bool picture_dirty_ = true;
    bool values_dirty_ = true;  // not only what of them is shown
};

}  // namespace servo::tuner
