#include "firmware/drive_panel_widget.h"

#include <algorithm>

namespace servo::firmware {

namespace {

constexpr int kVersionRow = 1;

std::string_view version_caption() {
    const auto texts = control_texts();
    return std::ranges::find(texts, std::string_view("Label4"), &ControlText::control)->text;
}

}  // namespace

DrivePanelWidget::DrivePanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    Label4_ = make_value(this, "Label4");
    show_caption(Label4_, true, version_caption());
    caption_ = make_caption(this, "LabelK", {"软件版本:", "Software Version"});
    caption_->hide();
    Label18_ = make_value(this, "Label18");
    Label17_ = make_value(this, "Label17");
    make_more();
    lay_out();
}

void DrivePanelWidget::make_more() {
    Command2_ = make_command(this, "Command2");
    Command3_ = make_command(this, "Command3");
    dialogue_ = make_command(this, "CommandB", {"通讯记录", "Line dialogue"});
    dialogue_->setCheckable(true);
    for (QPushButton* button : {Command2_, Command3_, dialogue_})
        button->setFlat(true);
    texts_.add(Command2_, {"读取CRC", "Read CRC"},
               {"直接发送“go”到串口（工程用）", "Sends \"go\" straight to the line (engineering)"});
    texts_.add(
        Command3_, {"测试", "Test"},
        {"直接发送“abc”到串口（工程用）", "Sends \"abc\" straight to the line (engineering)"});
    texts_.add(dialogue_, {"通讯记录", "Line dialogue"},
               {"显示上次下载中收发的全部内容",
                "Shows all that was sent and received in the last transfer"});
    connect(Command2_, &QPushButton::clicked, this, [this] { context_.form.Command2_Click(); });
    connect(Command3_, &QPushButton::clicked, this, [this] { context_.form.Command3_Click(); });
    connect(dialogue_, &QPushButton::toggled, this, [this](bool on) {
        if (show_dialogue) show_dialogue(on);
    });
}

void DrivePanelWidget::lay_out() {
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(kGap);
    grid_->setVerticalSpacing(kGap);
    grid_->addWidget(make_heading(this, "LabelJ", {"驱动器", "Drive"}), 0, 0, 1, 2);
    grid_->addWidget(Label4_, kVersionRow, 0);
    grid_->addWidget(Label18_, kVersionRow, 1);
    grid_->addWidget(make_label(this, "Label16"), 2, 0);
    grid_->addWidget(Label17_, 2, 1);
    auto* more = new QHBoxLayout;
    more->setSpacing(kGap);
    more->addWidget(make_heading(this, "LabelL", {"更多", "More"}));
    more->addStretch();
    more->addWidget(Command2_);
    more->addWidget(Command3_);
    more->addWidget(dialogue_);
    grid_->setRowMinimumHeight(3, kGap);
    grid_->addLayout(more, 4, 0, 1, 2);
    grid_->setRowMinimumHeight(0, kHeadingHeight);
    grid_->setColumnStretch(1, 1);
}

// The label belongs to both: it is the caption of the version until a barcode has chosen an image,
// and shows the image's path from then on.
void DrivePanelWidget::refresh_version() {
    const std::string& path = context_.form.data().Label4;
    const bool away = !path.empty();
    if (away && caption_->isHidden()) {
        grid_->removeWidget(Label4_);
        if (show_path) show_path(Label4_);
        grid_->addWidget(caption_, kVersionRow, 0);
        caption_->show();
        show_caption(Label4_, false, {});
        make_quiet(Label4_);
    }
    if (away) show_text(Label4_, path);
}

void DrivePanelWidget::refresh() {
    refresh_version();
    show_text(Label18_, context_.form.data().Label18);
    show_text(Label17_, context_.form.data().Label17);
    // The line is the transfer's.
    const bool free = !context_.form.transfer_running();
    Command2_->setEnabled(free);
    Command3_->setEnabled(free);
}

void DrivePanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::firmware
