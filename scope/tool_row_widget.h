// The slim row above the plot: zoom, hand, cursors, analysis panels, files.
#pragma once

#include <QWidget>
#include <array>

#include "scope/scope_controls_view.h"

class QHBoxLayout;
class QMenu;

namespace servo::scope {

// What looks closer; shown on demand.
enum class AnalysisPanel : std::uint8_t { kStatistics, kSpectrum, kReferences };
inline constexpr std::size_t kAnalysisPanels = 3;

// What the row asks of the window, beside what it does with the oscilloscope itself.
struct ToolRowEvents {
    std::function<void()> zoom_in;
    std::function<void()> zoom_out;
    std::function<void()> zoom_all;
    std::function<void()> fit_curves;
    std::function<void()> keep_reference;
    std::function<void(AnalysisPanel panel, bool shown)> show_panel;
    std::function<void(const char* suffix)> save_picture;  // "png", "svg", "pdf"
    std::function<void()> save_table;
    std::function<void()> import_file;  // Command13
    std::function<void()> export_file;  // Command8
};

class ToolRowWidget final : public QWidget {
    Q_OBJECT

  public:
    ToolRowWidget(PanelContext context, ToolRowEvents events, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    // The cursors that the arrow keys move.
    void show_picked(Cursor x, Cursor y);
    // What a file command came to; empty takes it away.
    void show_note(const QString& text);
    void toggle_panel(AnalysisPanel panel);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void make_zoom(QHBoxLayout& row);
    void make_cursors(QHBoxLayout& row);
    void make_panels(QHBoxLayout& row);
    void make_files(QHBoxLayout& row);
    QToolButton* tool(const char* name, const char* icon, const std::function<void()>& run,
                      base::Text text, const char* key = nullptr);

    PanelContext context_;
    ToolRowEvents events_;
    ControlTexts texts_;
    QToolButton* zoom_in_ = nullptr;                      // CommandA
    QToolButton* zoom_out_ = nullptr;                     // CommandB
    QToolButton* zoom_all_ = nullptr;                     // CommandC
    QToolButton* fit_ = nullptr;                          // CommandD
    QToolButton* Image8_ = nullptr;                       // hand tool
    std::array<QToolButton*, kCursors> cursors_{};        // Image1 to Image4
    std::array<QLabel*, kCursors> cursor_names_{};        // LabelX1 to LabelY2
    std::array<QToolButton*, kAnalysisPanels> panels_{};  // CommandE to CommandG
    QToolButton* keep_ = nullptr;                         // CommandH
    QToolButton* picture_ = nullptr;                      // CommandI
    QToolButton* table_ = nullptr;                        // CommandJ
    QMenu* picture_menu_ = nullptr;
    QLabel* note_ = nullptr;  // LabelT
};

}  // namespace servo::scope
