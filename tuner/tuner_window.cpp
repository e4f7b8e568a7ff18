#include "tuner/tuner_window.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <filesystem>

#include "base/file.h"
#include "params/ui_palette.h"
#include "tuner/curve_table.h"
#include "tuner/curves_panel_widget.h"
#include "tuner/filter_slot_widget.h"
#include "tuner/gains_panel_widget.h"
#include "tuner/margins_panel_widget.h"
#include "tuner/picture_file_view.h"
#include "tuner/picture_frame_widget.h"
#include "tuner/resonances_panel_widget.h"
#include "tuner/scan_panel_widget.h"
#include "tuner/step_panel_widget.h"
#include "tuner/tool_row_widget.h"

namespace servo::tuner {

namespace {

constexpr QSize kFirstSize{1240, 760};
constexpr int kSlotsInColumn = kSlots / 2;

constexpr base::Text kPictureName{"伯德图", "Bode picture"};
constexpr base::Text kPictureKeys{
    "方向键移动十字线，Ctrl 加速；PageUp、PageDown 跳到标记；Home、End 到两端；Esc 收起",
    "Arrow keys move the cross, Ctrl moves it faster; Page Up and Page Down go to the marks, Home "
    "and End to the ends; Esc puts the cross away"};
constexpr base::Text kPictureHint{"启动扫频，或加载 .bode 文件",
                                  "Start a scan, or load a .bode file"};
constexpr base::Text kLoadTitle{"加载扫频结果", "Load a scan"};
constexpr base::Text kSaveTitle{"保存扫频结果", "Save the scan"};
constexpr base::Text kPictureTitle{"保存图片", "Save the picture"};
constexpr base::Text kTableTitle{"保存数据", "Save the data"};
constexpr base::Text kNotSaved{"无法写入文件。", "The file could not be written."};
constexpr base::Text kSaved{"已保存 ", "Saved "};

QFrame* make_divider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kFrame));
    line->setPalette(colours);
    return line;
}

}  // namespace

TunerWindow::TunerWindow(AdvancedTuner& tuner, TunerDialogs dialogs, QWidget* parent)
    : QWidget(parent), tuner_(tuner), dialogs_(std::move(dialogs)) {
    setObjectName(QStringLiteral("ADVtunner"));
    const PanelContext context{tuner_, [this] {
                                   tools_->show_note({});
                                   refresh_now();
                               }};
    make_tools(context);
    make_panels(context);
    make_analysis(context);
    lay_out(make_filters(context));
    set_tab_order();
    timer_.setSingleShot(true);
    timer_.setInterval(kGatherMs);
    connect(&timer_, &QTimer::timeout, this, &TunerWindow::refresh_now);
    tuner_.set_observer(this);
    change_meform_language();
}

TunerWindow::~TunerWindow() {
    tuner_.set_observer(nullptr);
}

QSize TunerWindow::sizeHint() const {
    return kFirstSize;
}

// --- Making

void TunerWindow::make_tools(const PanelContext& context) {
    tools_ =
        new ToolRowWidget(context,
                          {.load = [this] { load_scan(); },
                           .save = [this] { save_scan(); },
                           .save_picture = [this](const char* suffix) { save_picture(suffix); },
                           .save_table = [this] { save_table(); }},
                          this);
}

void TunerWindow::make_panels(const PanelContext& context) {
    frame_ = new PictureFrameWidget(tuner_.data(), this);
    PictureWidget& picture = frame_->picture();
    connect(&picture, &PictureWidget::pointed, this, [this, &picture](int x, int y) {
        tools_->show_pointer(pointer_texts(picture.scene().surface, x, y));
    });
    connect(&picture, &PictureWidget::drawn, this, [this] { tuner_.picture_drawn(); });
    curves_ = new CurvesPanelWidget(context, this);
    scan_ = new ScanPanelWidget(context, this);
    gains_ = new GainsPanelWidget(context, this);
}

void TunerWindow::make_analysis(const PanelContext& context) {
    analysis_ = named(new QTabWidget(this), "TabAnalysis");
    analysis_->setDocumentMode(true);
    margins_ = new MarginsPanelWidget(analysis_);
    resonances_ = new ResonancesPanelWidget(context, analysis_);
    step_ = new StepPanelWidget(context, analysis_);
    analysis_->addTab(margins_, QStringLiteral("Margins"));
    analysis_->addTab(resonances_, QStringLiteral("Resonances"));
    analysis_->addTab(step_, QStringLiteral("Step"));
    analysis_->setProperty("Tag", QStringLiteral("裕度/Margins|谐振/Resonances|阶跃/Step"));
}

// Two columns: what belongs to a filter stands in one place, and all six can be seen together.
QWidget* TunerWindow::make_filters(const PanelContext& context) {
    auto* filters = new QWidget(this);
    auto* grid = new QGridLayout(filters);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 4);
    for (int i = 0; i < kSlots; ++i) {
        auto* slot = new FilterSlotWidget(context, i, filters);
        slot->entered = [this] { gains_->simulate(); };
        slots_.at(static_cast<std::size_t>(i)) = slot;
        grid->addWidget(slot, i % kSlotsInColumn, i / kSlotsInColumn);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return filters;
}

void TunerWindow::lay_out(QWidget* filters) {
    auto* main = new QVBoxLayout;
    main->setSpacing(kGap / 2);
    main->addWidget(frame_, 1);
    main->addWidget(curves_);
    auto* side = new QVBoxLayout;
    side->setSpacing(kGap);
    side->addWidget(scan_);
    side->addWidget(gains_);
    side->addWidget(analysis_, 1);
    auto* body = new QHBoxLayout;
    body->setSpacing(kGap);
    body->addLayout(main, 1);
    body->addLayout(side);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap - 2, kGap, kGap - 2);
    layout->setSpacing(kGap / 2);  // all of it fits into a main window of 1024 x 700
    layout->addWidget(tools_);
    layout->addLayout(body, 1);
    layout->addWidget(make_divider(this));
    layout->addWidget(filters);
}

// As one works: measure, look, filters, gains, judge; files at the end.
void TunerWindow::set_tab_order() {
    std::vector<QWidget*> panels{scan_, frame_, curves_};
    panels.insert(panels.end(), slots_.begin(), slots_.end());
    panels.insert(panels.end(), {gains_, analysis_, tools_});
    QWidget* last = nullptr;
    for (QWidget* panel : panels)
        for (QWidget* control : panel->findChildren<QWidget*>()) {
            // Lists that open are windows of their own.
            if (control->focusPolicy() == Qt::NoFocus || control->window() != window()) continue;
            if (last != nullptr) setTabOrder(last, control);
            last = control;
        }
}

// --- Showing

void TunerWindow::picture_changed() {
    picture_dirty_ = true;
    const TunerData& held = tuner_.data();
    if (held.redraw_gain || held.redraw_phase || held.redraw_filters) values_dirty_ = true;
    gather();
}

void TunerWindow::gather() {
    if (isVisible() && !timer_.isActive()) timer_.start();
}

void TunerWindow::refresh_now() {
    timer_.stop();
    tools_->refresh();
    curves_->refresh();
    scan_->refresh();
    gains_->refresh();
    for (FilterSlotWidget* slot : slots_)
        slot->refresh();
    resonances_->refresh();
    refresh_picture();
}

// What is worked out from the values waits until they change.
void TunerWindow::refresh_picture() {
    if (values_dirty_) {
        PictureMarks marks = marks_of(tuner_.data());
        margins_->show_figures(marks.figures, tuner_.data().simulation.points > 0,
                               tuner_.language());
        resonances_->show_resonances(marks.resonances);
        step_->invalidate();
        frame_->show_data(std::move(marks));
    } else if (picture_dirty_) {
        frame_->show_choices();
    }
    values_dirty_ = false;
    picture_dirty_ = false;
}

void TunerWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) change_meform_language();
    QWidget::changeEvent(event);
}

void TunerWindow::change_meform_language() {
    const base::Language language = tuner_.language();
    tools_->apply_language(language);
    tools_->show_note({});  // said in the language of its moment
    curves_->apply_language(language);
    scan_->apply_language(language);
    gains_->apply_language(language);
    for (FilterSlotWidget* slot : slots_)
        slot->apply_language(language);
    resonances_->apply_language(language);
    step_->apply_language(language);
    margins_->show_figures(frame_->picture().marks().figures, tuner_.data().simulation.points > 0,
                           language);
    frame_->picture().set_hint(to_qt(kPictureHint.in(language)));
    frame_->picture().setAccessibleName(to_qt(kPictureName.in(language)));
    frame_->picture().setAccessibleDescription(to_qt(kPictureKeys.in(language)));
    refresh_now();
}

void TunerWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (focusWidget() == nullptr) frame_->picture().setFocus(Qt::OtherFocusReason);
    refresh_now();
}

// Esc anywhere leads back to the picture.
void TunerWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        frame_->picture().setFocus(Qt::OtherFocusReason);
    else
        QWidget::keyPressEvent(event);
}

// --- Files

void TunerWindow::load_scan() {
    if (!dialogs_.ask_open) return;
    const auto path = dialogs_.ask_open({.title = std::string(kLoadTitle.in(tuner_.language())),
                                         .filter = "bode",
                                         .suffix = "bode",
                                         .name = {}});
    if (!path) return;
    tuner_.Command2_Click(*path);
    tools_->show_note({});
    refresh_now();
}

void TunerWindow::save_scan() {
    if (!dialogs_.ask_save) return;
    const auto path = dialogs_.ask_save({.title = std::string(kSaveTitle.in(tuner_.language())),
                                         .filter = "bode",
                                         .suffix = "bode",
                                         .name = {}});
    if (!path) return;
    tuner_.Command3_Click(*path);
    refresh_now();
}

void TunerWindow::save_picture(const char* suffix) {
    if (!dialogs_.ask_save) return;
    const auto path =
        dialogs_.ask_save({.title = std::string(kPictureTitle.in(tuner_.language())),
                           .filter = QString::fromLatin1(suffix).toUpper().toStdString(),
                           .suffix = suffix,
                           .name = std::string("bode.") + suffix});
    if (!path) return;
    const PictureWidget& picture = frame_->picture();
    tell_saved(tuner::save_picture(tuner_.data(), picture.marks(), font(), picture.size(),
                                   tuner_.language(), to_qt(*path)),
               *path);
}

void TunerWindow::save_table() {
    if (!dialogs_.ask_save) return;
    const base::Language language = tuner_.language();
    const auto path = dialogs_.ask_save({.title = std::string(kTableTitle.in(language)),
                                         .filter = "CSV",
                                         .suffix = "csv",
                                         .name = "bode.csv"});
    if (path) tell_saved(base::write_file(*path, curve_table(tuner_.data(), language)), *path);
}

void TunerWindow::tell_saved(bool done, const std::string& path) {
    const base::Language language = tuner_.language();
    if (done)
        tools_->show_note(to_qt(kSaved.in(language)) +
                          to_qt(std::filesystem::path(path).filename().string()));
    else if (dialogs_.tell)
        dialogs_.tell(base::kNoticeTitle.in(language), kNotSaved.in(language));
}

}  // namespace servo::tuner
