#include "firmware/download_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QMdiSubWindow>
#include <QVBoxLayout>

#include "firmware/batch_panel_widget.h"
#include "firmware/dialogue_view.h"
#include "firmware/download_controls_view.h"
#include "firmware/drive_panel_widget.h"
#include "firmware/image_panel_widget.h"
#include "firmware/transfer_panel_widget.h"
#include "params/ui_palette.h"

namespace servo::firmware {

namespace {

constexpr base::Text kSaveTitle{"保存通讯记录", "Save the line dialogue"};
constexpr base::Text kNotSaved{"无法写入文件。", "The file could not be written."};
constexpr int kLeftShare = 3;
constexpr int kRightShare = 2;

QFrame* make_divider(QWidget* parent, bool upright) {
    auto* line = new QFrame(parent);
    if (upright)
        line->setFixedWidth(1);
    else
        line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kFrame));
    line->setPalette(colours);
    return line;
}

}  // namespace

DownloadWindow::DownloadWindow(Download& form, params::Page& rows, DownloadDialogs dialogs,
                               QWidget* parent)
    : QWidget(parent), form_(form), dialogs_(std::move(dialogs)), grid_(rows.grid(), this) {
    setObjectName(QStringLiteral("Download"));
    setProperty("Tag", to_qt(kDownloadCaption));
    grid_.hide();
    make_panels({form_, [this] { refresh_now(); }});
    lay_out();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &DownloadWindow::refresh_now);
    Timer1_.setInterval(kTimer1Ms);
    connect(&Timer1_, &QTimer::timeout, this, &DownloadWindow::Timer1_Timer);
    Timer1_.start();
    form_.set_observer(this);
    apply_language();
}

DownloadWindow::~DownloadWindow() {
    form_.set_observer(nullptr);
}

void DownloadWindow::make_panels(const PanelContext& context) {
    image_ = new ImagePanelWidget(context, this);
    transfer_ = new TransferPanelWidget(context, dialogs_.link_open, this);
    batch_ = new BatchPanelWidget(context, this);
    drive_ = new DrivePanelWidget(context, this);
    dialogue_ = new DialogueView(context, this);
    dialogue_->hide();
    drive_->show_path = [this](QLabel* path) { batch_->take_path(path); };
    drive_->show_dialogue = [this](bool shown) { show_dialogue(shown); };
    connect(dialogue_, &DialogueView::save_asked, this, &DownloadWindow::save_dialogue);
}

// By hand on the left, production on the right, the drive's word below.
void DownloadWindow::lay_out() {
    auto* left = new QVBoxLayout;
    left->setSpacing(kGroupGap);
    left->addWidget(image_);
    left->addWidget(transfer_);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->setSpacing(kGroupGap);
    right->addWidget(batch_);
    right->addWidget(make_divider(this, false));
    right->addWidget(drive_);
    right->addStretch();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(kGroupGap);
    columns->addLayout(left, kLeftShare);
    columns->addWidget(make_divider(this, true));
    columns->addLayout(right, kRightShare);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * kGap, 2 * kGap, 2 * kGap, 2 * kGap);
    layout->setSpacing(kGroupGap);
    layout->addLayout(columns);
    layout->addWidget(dialogue_, 1);
}

void DownloadWindow::gather() {
    if (isVisible() && !gather_.isActive()) gather_.start();
}

void DownloadWindow::refresh_now() {
    gather_.stop();
    image_->refresh();
    transfer_->refresh();
    batch_->refresh();
    drive_->refresh();
    if (!dialogue_->isHidden()) dialogue_->refresh();
}

void DownloadWindow::Timer1_Timer() {
    form_.Timer1_Timer();
    // Seconds pass, and the drive answers again, without an event of the form.
    if (isVisible() && (form_.transfer_running() || form_.result())) refresh_now();
}

void DownloadWindow::show_dialogue(bool shown) {
    dialogue_->setVisible(shown);
    if (shown) dialogue_->refresh();
    // The frame follows what it holds, unless its user has made it fill the workspace.
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (frame == nullptr || frame->isMaximized() || frame->isMinimized()) return;
    layout()->activate();
    const int grown = frame->height() + sizeHint().height() - height();
    frame->resize(frame->width(), std::max(grown, frame->minimumSizeHint().height()));
}

void DownloadWindow::save_dialogue() {
    if (!dialogs_.ask_save) return;
    const base::Language language = form_.language();
    const auto path = dialogs_.ask_save(kSaveTitle.in(language), "download.txt");
    if (!path || form_.save_dialogue(*path) || !dialogs_.tell) return;
    dialogs_.tell(base::kNoticeTitle.in(language), kNotSaved.in(language));
}

void DownloadWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void DownloadWindow::apply_language() {
    const base::Language language = form_.language();
    image_->apply_language(language);
    transfer_->apply_language(language);
    batch_->apply_language(language);
    drive_->apply_language(language);
    dialogue_->apply_language(language);
    refresh_now();
}

void DownloadWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh_now();
}

}  // namespace servo::firmware
