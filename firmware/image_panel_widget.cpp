#include "firmware/image_panel_widget.h"

#include <QGridLayout>

namespace servo::firmware {

namespace {
constexpr int kPathCharacters = 48;
}

ImagePanelWidget::ImagePanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    Command1_ = make_command(this, "Command1");
    Text5_ = named(new QLineEdit(this), "Text5");
    Text5_->setReadOnly(true);
    Text5_->setMinimumWidth(Text5_->fontMetrics().averageCharWidth() * kPathCharacters);
    Label1_ = make_value(this, "Label1");
    texts_.add(Command1_, {"加载文件", "Load file"},
               {"选择固件文件（*.servo）", "Choose a firmware image (*.servo)"});
    texts_.add(Text5_, {"固件文件路径", "Path of the image"});
    connect(Command1_, &QPushButton::clicked, this, [this] {
        context_.form.Command1_Click();
        context_.acted();
    });
    lay_out();
}

void ImagePanelWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap);
    grid->addWidget(make_heading(this, "LabelA", {"固件", "Image"}), 0, 0, 1, 2);
    grid->addWidget(Command1_, 1, 0);
    grid->addWidget(Text5_, 1, 1);
    grid->addWidget(Label1_, 2, 1);
    grid->setRowMinimumHeight(0, kHeadingHeight);
    grid->setColumnStretch(1, 1);
}

void ImagePanelWidget::refresh() {
    const DownloadData& held = context_.form.data();
    Command1_->setEnabled(held.Command1_enabled);
    show_line(Text5_, held.Text5);
    Text5_->setCursorPosition(0);
    show_text(Label1_, held.Label1);
}

void ImagePanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::firmware
