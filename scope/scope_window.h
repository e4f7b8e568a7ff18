// The oscilloscope on screen. It holds no rule: events go to the Oscilloscope, and what that holds
// is shown.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>

#include "base/file_dialogs.h"
#include "base/notice.h"
#include "scope/oscilloscope.h"
#include "scope/scope_controls_view.h"

namespace servo::scope {

class AnalysisPaneWidget;
class ChannelPanelWidget;
class CursorPanelWidget;
class PlotFrameWidget;
class PlotKeys;
class PlotWidget;
class RunPanelWidget;
class ReferencePanelWidget;
class ToolRowWidget;
enum class AnalysisPanel : std::uint8_t;
class TriggerPanelWidget;

using base::FileQuestion;

// How the window asks and speaks. Recordings that can't be saved or read fail without a message.
struct ScopeDialogs {
    base::FileDialogs files;
    // For the name of a reference, such as "11:02:33".
    std::function<std::string()> time_of_day;
};

class ScopeWindow final : public QWidget, private ScopeObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the operator does is shown at once.
    static constexpr int kGatherMs = 50;

    // The oscilloscope outlives its window.
    ScopeWindow(Oscilloscope& scope, ScopeDialogs dialogs, QWidget* parent = nullptr);
    ~ScopeWindow() override;

    QSize sizeHint() const override;

    // Shows what has been gathered.
    void refresh_now();

  Q_SIGNALS:
    // An object button: the dictionary browser is to be opened for that channel (0 to 4).
    void object_asked(int channel);

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void controls_changed() override { gather(controls_dirty_); }
    void plot_changed() override { gather(plot_dirty_); }
    void cursors_changed() override { gather(cursors_dirty_); }
    void gather(bool& dirty);

    void make_tools(const PanelContext& context);
    void connect_plot();
    void refresh_plot();
    void make_panels(const PanelContext& context);
    void make_picture_holders();
    void lay_out();
    QLayout* make_side();
    void set_tab_order();
    void watch_focus();
    void apply_language();

    void show_panel(AnalysisPanel panel, bool shown);
    void fit_curves();
    void keep_reference();
    void export_file();
    void import_file();
    void note_file(bool done, base::Text said, const std::string& path);
    void save_picture(const char* suffix);
    void save_table();
    void tell_saved(bool done, const std::string& path);

    Oscilloscope& scope_;
    ScopeDialogs dialogs_;
    ToolRowWidget* tools_ = nullptr;
    PlotWidget* plot_ = nullptr;
    PlotFrameWidget* frame_ = nullptr;
    PlotKeys* keys_ = nullptr;
    ChannelPanelWidget* channels_ = nullptr;
    RunPanelWidget* run_ = nullptr;
    TriggerPanelWidget* trigger_ = nullptr;
    CursorPanelWidget* cursors_ = nullptr;
    ReferencePanelWidget* references_ = nullptr;
    AnalysisPaneWidget* analysis_ = nullptr;
    QTimer timer_;
    bool controls_dirty_ = true;
    bool plot_dirty_ = true;
    bool cursors_dirty_ = true;
    int references_kept_ = 0;  // since the window was made, for their names
};

}  // namespace servo::scope
