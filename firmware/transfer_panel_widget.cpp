#include "firmware/transfer_panel_widget.h"

#include <QGridLayout>
#include <cmath>

#include "firmware/download_shown.h"
#include "params/ui_palette.h"

namespace servo::firmware {

TransferPanelWidget::TransferPanelWidget(PanelContext context, std::function<bool()> link_open,
                                         QWidget* parent)
    : QWidget(parent), context_(std::move(context)), link_open_(std::move(link_open)) {
    Command4_ = make_command(this, "Command4");
    Command4_->setDefault(true);
    ProgressBar1_ = named(new QProgressBar(this), "ProgressBar1");
    ProgressBar1_->setRange(0, 100);
    make_lines();
    again_ = make_command(this, "CommandA", {"重新加载", "Load again"});
    advice_->add(again_);
    texts_.add(Command4_, {"下载", "Download"},
               {"把固件下载到驱动器", "Transfer the image to the drive"});
    texts_.add(ProgressBar1_, {"已发送的块（百分比）", "Blocks sent, in percent"});
    texts_.add(
        again_, {"重新加载同一文件", "Load the same file again"},
        {"重新加载同一文件，以便再次下载", "Load the same file again, for another download"});
    connect_buttons();
    lay_out();
}

void TransferPanelWidget::make_lines() {
    step_ = make_label(this, "LabelC");
    speed_ = make_label(this, "LabelD");
    remaining_ = make_label(this, "LabelE");
    make_quiet(speed_);
    make_quiet(remaining_);
    facts_ = make_label(this, "LabelF");
    make_quiet(facts_);
    warning_ = make_label(this, "LabelG");
    warning_->setWordWrap(true);
    QPalette colours = warning_->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kWarningText));
    warning_->setPalette(colours);
    advice_ = new NoticeFrame(NoticeFrame::Kind::kWarning, "LabelH", this);
    Label19_ = new NoticeFrame(NoticeFrame::Kind::kAdvice, "Label19", this);
}

void TransferPanelWidget::connect_buttons() {
    connect(Command4_, &QPushButton::clicked, this, [this] {
        context_.form.Command4_Click();
        context_.acted();
    });
    connect(again_, &QPushButton::clicked, this, [this] {
        // A copy: loading stores the path anew.
        const std::filesystem::path file = context_.form.data().file_path;
        context_.form.load_image(file);
        context_.acted();
    });
}

void TransferPanelWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap);
    grid->addWidget(make_heading(this, "LabelB", {"下载", "Transfer"}), 0, 0, 1, 2);
    grid->addWidget(Command4_, 1, 0);
    grid->addWidget(ProgressBar1_, 1, 1);
    auto* line = new QHBoxLayout;
    line->setSpacing(2 * kGap);
    line->addWidget(step_, 1);
    line->addWidget(speed_);
    line->addWidget(remaining_);
    grid->addLayout(line, 2, 1);
    grid->addWidget(facts_, 3, 1);
    grid->addWidget(warning_, 4, 1);
    grid->addWidget(advice_, 5, 0, 1, 2);
    grid->addWidget(Label19_, 6, 0, 1, 2);
    grid->setRowMinimumHeight(0, kHeadingHeight);
    grid->setColumnStretch(1, 1);
}

void TransferPanelWidget::refresh() {
    const Download& form = context_.form;
    Command4_->setEnabled(form.data().Command4_enabled);
    ProgressBar1_->setValue(static_cast<int>(std::lround(form.data().ProgressBar1)));
    const TransferLine line = transfer_line(form, link_open_ && link_open_());
    show_text(step_, line.step);
    show_text(speed_, line.speed);
    show_text(remaining_, line.remaining);
    show_text(facts_, image_facts(form));
    const std::string warning = image_warning(form);
    show_text(warning_, warning);
    warning_->setVisible(!warning.empty());
    advice_->show_text(form.transfer_running() ? std::string_view() : form.advice_text());
    again_->setVisible(can_load_again(form));
}

void TransferPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::firmware
