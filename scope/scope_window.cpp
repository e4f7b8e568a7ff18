#include "scope/scope_window.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSplitter>
#include <QVBoxLayout>
#include <filesystem>

#include "base/file.h"
#include "scope/analysis_pane_widget.h"
#include "scope/channel_panel_widget.h"
#include "scope/cursor_panel_widget.h"
#include "scope/plot_frame_widget.h"
#include "scope/plot_keys_view.h"
#include "scope/plot_widget.h"
#include "scope/recording.h"
#include "scope/reference_panel_widget.h"
#include "scope/run_panel_widget.h"
#include "scope/scope_picture_view.h"
#include "scope/tool_row_widget.h"
#include "scope/trigger_panel_widget.h"

namespace servo::scope {

namespace {

constexpr QSize kFirstSize{1240, 720};
constexpr int kPlotShare = 5;  // of the room that plot and analysis divide
constexpr int kAnalysisShare = 2;

constexpr base::Text kPlotName{"曲线图", "Plot"};
constexpr base::Text kPlotKeys{
    "1 至 4 开关游标，左右键移动 X 游标，上下键移动 Y 游标，Tab 选择游标；+ - 0 缩放，Home、End、"
    "PageUp、PageDown 平移；空格开始或停止",
    "1 to 4 switch cursors, Left and Right move the X cursor, Up and Down the Y cursor, Tab picks "
    "one; + - 0 zoom, Home, End, Page Up and Page Down pan; Space starts and stops"};
constexpr base::Text kImportTitle{"导入记录", "Import a recording"};
constexpr base::Text kExportTitle{"导出记录", "Export the recording"};
constexpr base::Text kPictureTitle{"保存图片", "Save the picture"};
constexpr base::Text kTableTitle{"保存数据", "Save the data"};
constexpr base::Text kNotSaved{"无法写入文件。", "The file could not be written."};
constexpr base::Text kSaved{"已保存 ", "Saved "};
constexpr base::Text kImportedNote{"已导入 ", "Imported "};

std::string file_name(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

}  // namespace

ScopeWindow::ScopeWindow(Oscilloscope& scope, ScopeDialogs dialogs, QWidget* parent)
    : QWidget(parent), scope_(scope), dialogs_(std::move(dialogs)) {
    setObjectName(QStringLiteral("Scope"));
    setProperty("Tag", QStringLiteral("示波器/Scope"));
    const PanelContext context{scope_, [this] {
                                   tools_->show_note({});
                                   refresh_now();
                               }};
    make_tools(context);
    make_panels(context);
    make_picture_holders();
    lay_out();
    set_tab_order();
    watch_focus();
    timer_.setSingleShot(true);
    timer_.setInterval(kGatherMs);
    connect(&timer_, &QTimer::timeout, this, &ScopeWindow::refresh_now);
    scope_.set_observer(this);
    apply_language();
}

ScopeWindow::~ScopeWindow() {
    scope_.set_observer(nullptr);
}

QSize ScopeWindow::sizeHint() const {
    return kFirstSize;
}

void ScopeWindow::make_tools(const PanelContext& context) {
    plot_ = new PlotWidget(this);
    connect_plot();
    keys_ = new PlotKeys(context, *plot_, this);
    keys_->picked_changed = [this] {
        if (tools_ != nullptr) tools_->show_picked(keys_->picked_x(), keys_->picked_y());
    };
    keys_->fit_curves = [this] { fit_curves(); };
    keys_->keep_reference = [this] { keep_reference(); };
    keys_->toggle_panel = [this](AnalysisPanel panel) { tools_->toggle_panel(panel); };
    tools_ = new ToolRowWidget(
        context,
        {.zoom_in = [this] { keys_->zoom_in(0.5); },
         .zoom_out = [this] { keys_->zoom_out(); },
         .zoom_all = [this] { keys_->zoom_all(); },
         .fit_curves = [this] { fit_curves(); },
         .keep_reference = [this] { keep_reference(); },
         .show_panel = [this](AnalysisPanel panel, bool on) { show_panel(panel, on); },
         .save_picture = [this](const char* suffix) { save_picture(suffix); },
         .save_table = [this] { save_table(); },
         .import_file = [this] { import_file(); },
         .export_file = [this] { export_file(); }},
        this);
}

// What the mouse does is the oscilloscope's affair; a drag is shown as it goes.
void ScopeWindow::connect_plot() {
    PlotMouse& mouse = scope_.mouse();
    connect(plot_, &PlotWidget::pressed, this,
            [this, &mouse](MouseButton button, double x, double y) {
                mouse.Picture1_MouseDown(button, x, y);
                refresh_now();
            });
    connect(plot_, &PlotWidget::moved, this, [this, &mouse](MouseButton held, double x, double y) {
        mouse.Picture1_MouseMove(held, x, y);
        if (held != MouseButton::kNone) refresh_now();
    });
    connect(plot_, &PlotWidget::released, this,
            [this, &mouse](MouseButton button, double x, double y) {
                mouse.Picture1_MouseUp(button, x, y);
                refresh_now();
            });
    connect(plot_, &PlotWidget::abandoned, this, [this, &mouse] {
        mouse.leave();
        refresh_now();
    });
    connect(plot_, &PlotWidget::grab_changed, this, [&mouse](double width, double height) {
        mouse.grab_width = width;
        mouse.grab_height = height;
    });
}

void ScopeWindow::make_panels(const PanelContext& context) {
    frame_ = new PlotFrameWidget(context, plot_, this);
    // What becomes of references is drawn behind the curves.
    PanelContext kept = context;
    kept.acted = [this] {
        plot_dirty_ = true;
        refresh_now();
    };
    references_ = new ReferencePanelWidget(kept, this);
    references_->hide();
    analysis_ = new AnalysisPaneWidget(scope_, this);
    channels_ = new ChannelPanelWidget(context, this);
    run_ = new RunPanelWidget(context, this);
    trigger_ = new TriggerPanelWidget(context, this);
    cursors_ = new CursorPanelWidget(context, this);
    const auto to_plot = [this] { plot_->setFocus(Qt::OtherFocusReason); };
    run_->left = to_plot;
    trigger_->left = to_plot;
    const auto ask = [this](int channel) { Q_EMIT object_asked(channel); };
    channels_->object_asked = ask;
    trigger_->object_asked = ask;
}

// Image controls that are never seen themselves: they hold the pictures that Image5, Image8 and the
// pointer take.
void ScopeWindow::make_picture_holders() {
    for (const char* name : {"Image6", "Image7", "Image9", "Image10", "Image11"}) {
        auto* holder = named(new QLabel(this), name);
        set_picture(holder, name);
        holder->hide();
    }
}

// No widget of its own: wider texts of another language would reach the window one step later, and
// be cut until then.
QLayout* ScopeWindow::make_side() {
    auto* side = new QVBoxLayout;
    side->setContentsMargins(kGap, 0, 0, 0);
    side->setSpacing(2 * kGap);
    side->addWidget(run_);
    side->addWidget(trigger_);
    side->addWidget(cursors_);
    side->addWidget(references_);
    side->addStretch();
    return side;
}

void ScopeWindow::lay_out() {
    auto* split = new QSplitter(Qt::Vertical, this);
    split->setChildrenCollapsible(false);
    split->setHandleWidth(kGap);
    split->addWidget(frame_);
    split->addWidget(analysis_);
    split->setStretchFactor(0, kPlotShare);
    split->setStretchFactor(1, kAnalysisShare);
    auto* main = new QVBoxLayout;
    main->setSpacing(kGap);
    main->addWidget(split, 1);
    main->addWidget(channels_);
    auto* body = new QHBoxLayout;
    body->setSpacing(kGap);
    body->addLayout(main, 1);
    body->addLayout(make_side());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(tools_);
    layout->addLayout(body, 1);
}

// Set-up first: channels, recording, trigger, start; then looking: plot, measuring, tools.
void ScopeWindow::set_tab_order() {
    QWidget* last = nullptr;
    for (QWidget* panel : std::initializer_list<QWidget*>{
             channels_, run_, trigger_, frame_, cursors_, references_, analysis_, tools_}) {
        for (QWidget* control : panel->findChildren<QWidget*>()) {
            // Lists that open are windows of their own.
            if (control->focusPolicy() == Qt::NoFocus || control->window() != window()) continue;
            if (last != nullptr) setTabOrder(last, control);
            last = control;
        }
    }
}

// The refresh spares the box that the operator is in.
void ScopeWindow::watch_focus() {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        // Nothing has it: another program is in front, and the operator will come back to the box.
        if (now == nullptr) return;
        const bool mine = now == this || isAncestorOf(now);
        scope_.set_focus(mine ? now->objectName().toStdString() : std::string());
    });
}

void ScopeWindow::gather(bool& dirty) {
    dirty = true;
    if (isVisible() && !timer_.isActive()) timer_.start();
}

void ScopeWindow::refresh_now() {
    timer_.stop();
    keys_->follow(scope_.data());
    tools_->refresh();
    tools_->show_picked(keys_->picked_x(), keys_->picked_y());
    run_->refresh();
    trigger_->refresh();
    channels_->refresh();
    cursors_->refresh();
    frame_->refresh();
    references_->refresh();
    refresh_plot();
    controls_dirty_ = false;
    plot_dirty_ = false;
    cursors_dirty_ = false;
}

// Curves are made ready anew only when they have changed.
void ScopeWindow::refresh_plot() {
    // Without a recording the plot says what the drive is about.
    const bool waits = scope_.data().sampling && !scope_.data().dataValid;
    if (plot_dirty_ || waits != plot_->scene().waits) {
        plot_->set_scene(
            plot_scene(scope_.data(), scope_.operands(), scope_.references(), scope_.language()));
        analysis_->refresh();
    }
    PlotMouse& mouse = scope_.mouse();
    plot_->set_overlay(scope_.data().cursors, mouse.rectangle(), mouse.pointer());
}

void ScopeWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void ScopeWindow::apply_language() {
    const base::Language language = scope_.language();
    tools_->apply_language(language);
    tools_->show_note({});  // said in the language of its moment
    run_->apply_language(language);
    trigger_->apply_language(language);
    channels_->apply_language(language);
    cursors_->apply_language(language);
    frame_->apply_language(language);
    analysis_->apply_language(language);
    references_->apply_language(language);
    plot_->setAccessibleName(to_qt(kPlotName.in(language)));
    plot_->setAccessibleDescription(to_qt(kPlotKeys.in(language)));
    refresh_now();
}

void ScopeWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (focusWidget() == nullptr) plot_->setFocus(Qt::OtherFocusReason);
    refresh_now();
}

// Esc anywhere leads back to the plot.
void ScopeWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        plot_->setFocus(Qt::OtherFocusReason);
    else
        QWidget::keyPressEvent(event);
}

void ScopeWindow::show_panel(AnalysisPanel panel, bool shown) {
    if (panel == AnalysisPanel::kReferences)
        references_->setVisible(shown);
    else
        analysis_->show_panel(panel, shown);
}

void ScopeWindow::fit_curves() {
    for (int channel = 0; channel < kCurves; ++channel)
        if (scope_.data().drawn(channel)) scope_.fit_curve(channel);
}

void ScopeWindow::keep_reference() {
    if (!scope_.data().dataValid) return;
    std::string name = "R" + std::to_string(++references_kept_);
    if (dialogs_.time_of_day) name += "  " + dialogs_.time_of_day();
    scope_.keep_reference(std::move(name));
}

void ScopeWindow::export_file() {
    if (!dialogs_.files.ask_save) return;
    const base::Language language = scope_.language();
    const auto path = dialogs_.files.ask_save({.title = std::string(kExportTitle.in(language)),
                                               .filter = "scope",
                                               .suffix = "scope",
                                               .name = {}});
    if (!path) return;
    const Exported outcome = scope_.Command8_Click(*path);
    refresh_now();
    note_file(outcome == Exported::kWritten, kSaved, *path);
}

void ScopeWindow::import_file() {
    if (!dialogs_.files.ask_open) return;
    const base::Language language = scope_.language();
    const auto path = dialogs_.files.ask_open({.title = std::string(kImportTitle.in(language)),
                                               .filter = "scope",
                                               .suffix = "scope",
                                               .name = {}});
    if (!path) return;
    const Imported outcome = scope_.Command13_Click(*path);
    refresh_now();
    note_file(outcome == Imported::kDone, kImportedNote, *path);
}

// A recording's file that fails says nothing: that is how both commands end.
void ScopeWindow::note_file(bool done, base::Text said, const std::string& path) {
    tools_->show_note(done ? to_qt(said.in(scope_.language())) + to_qt(file_name(path))
                           : QString());
}

void ScopeWindow::save_picture(const char* suffix) {
    if (!dialogs_.files.ask_save) return;
    const auto path =
        dialogs_.files.ask_save({.title = std::string(kPictureTitle.in(scope_.language())),
                                 .filter = QString::fromLatin1(suffix).toUpper().toStdString(),
                                 .suffix = suffix,
                                 .name = std::string("scope.") + suffix});
    if (path)
        tell_saved(scope::save_picture(plot_->scene(), font(), frame_->size(), to_qt(*path)),
                   *path);
}

void ScopeWindow::save_table() {
    if (!dialogs_.files.ask_save) return;
    const base::Language language = scope_.language();
    const auto path = dialogs_.files.ask_save({.title = std::string(kTableTitle.in(language)),
                                               .filter = "CSV",
                                               .suffix = "csv",
                                               .name = "scope.csv"});
    if (path)
        tell_saved(base::write_file(*path, csv_text(scope_.whole_recording(), language)), *path);
}

void ScopeWindow::tell_saved(bool done, const std::string& path) {
    const base::Language language = scope_.language();
    if (done)
        note_file(done, kSaved, path);
    else if (dialogs_.files.tell)
        dialogs_.files.tell(base::kNoticeTitle.in(language), kNotSaved.in(language));
}

}  // namespace servo::scope
