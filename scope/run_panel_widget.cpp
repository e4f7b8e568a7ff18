#include "scope/run_panel_widget.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QProgressBar>
#include <algorithm>

#include "params/ui_palette.h"
#include "scope/filter_box_widget.h"
#include "scope/number_label_widget.h"
#include "scope/tool_icon_view.h"

namespace servo::scope {

namespace {

constexpr int kProgressHeight = 8;
constexpr int kCaptionPadding = 48;  // of a button with a picture
constexpr base::Text kStart{"开始", "Start"};
constexpr base::Text kSampling{"正在采集", "Sampling"};
constexpr base::Text kStartTip{"开始或停止采集", "Starts or stops recording"};

}  // namespace

RunPanelWidget::RunPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    make_boxes();
    make_buttons();
    lay_out();
}

void RunPanelWidget::make_boxes() {
    Text1_ = new FilterBox("Text1", this);
    Label18_ = new NumberLabel("4095937.5us", this);
    Label18_->setObjectName(QStringLiteral("Label18"));
    Label18_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    make_quiet(Label18_);
    Text2_ = new FilterBox("Text2", this);
    Text3_ = new FilterBox("Text3", this);
    connect_box(*Text1_, Oscilloscope::Box::kText1);
    connect_box(*Text2_, Oscilloscope::Box::kText2);
    connect_box(*Text3_, Oscilloscope::Box::kText3);
    texts_.add(Text1_, {"采样周期", "Sampling period"},
               {"采样周期，62.5 us 的倍数；回车写入驱动器",
                "Sampling period in steps of 62.5 us; Enter writes it to the drive"});
    texts_.add(Text2_, {"触发偏移", "Trigger offset"},
               {"触发点之前的采样个数；回车写入驱动器",
                "Samples kept from before the trigger; Enter writes it to the drive"});
    texts_.add(Text3_, {"采集个数", "Number of samples"},
               {"每个通道的采样个数；回车写入驱动器",
                "Samples of each channel; Enter writes it to the drive"});
}

void RunPanelWidget::connect_box(FilterBox& box, Oscilloscope::Box which) {
    box.left = [this] {
        if (left) left();
    };
    connect(&box, &QLineEdit::textEdited, this,
            [this, which](const QString& text) { context_.scope.type(which, text.toStdString()); });
    connect(&box, &QLineEdit::returnPressed, this, [this, which] {
        if (context_.scope.enter(which)) Command6_->setFocus(Qt::OtherFocusReason);
        context_.acted();
    });
}

void RunPanelWidget::make_buttons() {
    Command6_ = named(new QPushButton(this), "Command6");
    Command6_->setProperty("Tag", QStringLiteral("-"));  // its caption tells the state
    Command6_->setAutoDefault(true);
    Command7_ = make_command(this, "Command7", {"重读数据", "Re-read"});
    Check5_ = make_check(this, "Check5", {"单次", "Single"});
    ProgressBar1_ = named(new QProgressBar(this), "ProgressBar1");
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setTextVisible(false);
    ProgressBar1_->setFixedHeight(kProgressHeight);
    connect(Command6_, &QPushButton::clicked, this, [this] {
        context_.scope.Command6_Click();
        context_.acted();
    });
    connect(Command7_, &QPushButton::clicked, this, [this] {
        context_.scope.Command7_Click();
        context_.acted();
    });
    connect(Check5_, &QCheckBox::clicked, this, [this] {
        context_.scope.click_single();
        context_.acted();
    });
    texts_.add(Command7_, {"重读数据", "Re-read data"},
               {"再次读取驱动器中的上一次记录，不重新采集",
                "Fetches the last recording from the drive again, without a new run"});
    texts_.add(Check5_, {"单次", "Single"},
               {"采集一次后停止；不勾选则连续采集",
                "Stops after one recording; without it the next one begins by itself"});
    texts_.add(ProgressBar1_, {"上传进度", "Upload progress"});
}

void RunPanelWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_heading(this, "LabelA", {"采集", "Recording"}), 0, 0, 1, 3);
    grid->addWidget(make_caption(this, "Label17", {"采样周期", "Sampling period"}), 1, 0);
    grid->addWidget(Text1_, 1, 1);
    grid->addWidget(Label18_, 1, 2);
    grid->addWidget(make_caption(this, "Label19", {"触发偏移", "Trigger offset"}), 2, 0);
    grid->addWidget(Text2_, 2, 1);
    grid->addWidget(make_caption(this, "Label21", {"采集个数", "Sample count"}), 3, 0);
    grid->addWidget(Text3_, 3, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kGap);
    buttons->addWidget(Command6_, 1);
    buttons->addWidget(Command7_, 1);
    grid->addLayout(buttons, 4, 0, 1, 3);
    auto* single = new QHBoxLayout;
    single->setSpacing(2 * kGap);
    single->addWidget(Check5_);
    single->addWidget(ProgressBar1_, 1);
    grid->addLayout(single, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
}

void RunPanelWidget::refresh() {
    const ScopeData& held = context_.scope.data();
    show_number(Text1_, held.Text1);
    show_number(Text2_, held.Text2);
    show_number(Text3_, held.Text3);
    show_text(Label18_, held.Label18);
    const QString caption = to_qt(context_.scope.Command6_caption());
    if (Command6_->text() != caption || Command6_->icon().isNull()) {
        Command6_->setText(caption);
        Command6_->setIcon(tool_icon(held.sampling ? "stop" : "start"));
        QPalette colours = Command7_->palette();
        if (!held.sampling) {
            colours.setColor(QPalette::Active, QPalette::Button, QColor(params::palette::kAccent));
            colours.setColor(QPalette::Inactive, QPalette::Button,
                             QColor(params::palette::kAccent));
            colours.setColor(QPalette::Active, QPalette::ButtonText, Qt::white);
            colours.setColor(QPalette::Inactive, QPalette::ButtonText, Qt::white);
        }
        Command6_->setPalette(colours);
    }
    show_check(Check5_, held.Check5);
    if (const int part = static_cast<int>(std::clamp(held.ProgressBar1, 0.0, 100.0));
        ProgressBar1_->value() != part)
        ProgressBar1_->setValue(part);
    const bool live = context_.scope.acquisition_enabled();
    for (QWidget* control : {static_cast<QWidget*>(Text2_), static_cast<QWidget*>(Text3_),
                             static_cast<QWidget*>(Command6_), static_cast<QWidget*>(Command7_)})
        control->setEnabled(live);
}

void RunPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
    const QString tip = to_qt(kStartTip.in(language));
    Command6_->setToolTip(language == base::Language::kChinese ? tip + QStringLiteral("（空格）")
                                                               : tip + QStringLiteral(" (Space)"));
    // The caption changes with the state; the button does not.
    int widest = 0;
    for (const base::Text& caption : {kStart, kSampling})
        widest = std::max(widest, fontMetrics().horizontalAdvance(to_qt(caption.in(language))));
    Command6_->setMinimumWidth(widest + kCaptionPadding);
}

}  // namespace servo::scope
