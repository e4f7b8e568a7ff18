#include "tuner/scan_panel_widget.h"

#include <QGridLayout>
#include <QHBoxLayout>

namespace servo::tuner {

namespace {

constexpr int kProgressHeight = 8;
constexpr int kProgressParts = 1000;
constexpr int kCharacters = 5;

}  // namespace

ScanPanelWidget::ScanPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    make_boxes();
    make_buttons();
    lay_out();
}

void ScanPanelWidget::make_boxes() {
    Text1_ = make_number_box(this, "Text1", kCharacters);
    Text2_ = make_number_box(this, "Text2", kCharacters);
    Text4_ = make_number_box(this, "Text4", kCharacters);
    Text3_ = make_number_box(this, "Text3", kCharacters);
    connect_box(*Text1_, AdvancedTuner::Box::kText1);
    connect_box(*Text2_, AdvancedTuner::Box::kText2);
    connect_box(*Text4_, AdvancedTuner::Box::kText4);
    connect_box(*Text3_, AdvancedTuner::Box::kText3);
    texts_.add(Text1_, {"激励电流", "Current of the excitation"},
               {"激励电流，32 至 800，驱动器内部单位",
                "Current of the excitation, 32 to 800 in the drive's units"});
    texts_.add(Text2_, {"开始频率", "Start frequency"},
               {"开始频率，4 至 900 Hz", "Start frequency, 4 to 900 Hz"});
    texts_.add(Text4_, {"频率步长", "Frequency step"},
               {"频率步长，3 至 200 Hz", "Frequency step, 3 to 200 Hz"});
    texts_.add(Text3_, {"结束频率", "Stop frequency"},
               {"结束频率，至 1000 Hz，不小于开始频率加步长",
                "Stop frequency, up to 1000 Hz, at least start and step together"});
}

void ScanPanelWidget::connect_box(QLineEdit& box, AdvancedTuner::Box which) {
    connect(&box, &QLineEdit::textEdited, this,
            [this, which](const QString& text) { context_.tuner.type(which, text.toStdString()); });
}

void ScanPanelWidget::make_buttons() {
    Check1_ = make_check(this, "Check1", {"解锁", "Unlock"});
    Command1_ = make_command(this, "Command1", {"启动", "Start"});
    Label36_ = make_value(this, "Label36");
    cancel_ = make_command(this, "CommandA", {"取消", "Cancel"});
    point_ = make_value(this, "LabelProgress");
    make_quiet(point_);
    progress_ = named(new QProgressBar(this), "ProgressBar1");
    progress_->setRange(0, kProgressParts);
    progress_->setTextVisible(false);
    progress_->setFixedHeight(kProgressHeight);
    connect(Check1_, &QCheckBox::clicked, this, [this] {
        context_.tuner.Check1_Click();
        context_.acted();
    });
    connect(Command1_, &QPushButton::clicked, this, [this] {
        context_.tuner.Command1_Click();
        context_.acted();
    });
    connect(cancel_, &QPushButton::clicked, this, [this] {
        context_.tuner.cancel_scan();
        context_.acted();
    });
    texts_.add(Check1_, {"解锁", "Unlock"},
               {"解锁启动按钮；启动后电机会自行运动",
                "Unlocks the start; the motor moves by itself once started"});
    texts_.add(Command1_, {"启动", "Start"}, {"启动扫频", "Starts the frequency scan"});
    texts_.add(cancel_, {"取消", "Cancel"}, {"取消正在进行的扫频", "Gives up the scan that runs"});
    texts_.add(progress_, {"扫频进度", "Progress of the scan"});
}

void ScanPanelWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    auto* head = new QHBoxLayout;
    head->setSpacing(kGap);
    head->addWidget(make_heading(this, "HeadingScan", {"扫频", "Scan"}));
    head->addStretch();
    head->addWidget(Label36_);
    grid->addLayout(head, 0, 0, 1, 4);
    const auto add = [&](int row, int column, QLabel* caption, QLineEdit* box) {
        grid->addWidget(caption, row, column);
        grid->addWidget(box, row, column + 1);
        caption->setBuddy(box);
    };
    add(1, 0, make_caption(this, "LabelA", {"电流", "Current"}), Text1_);
    add(1, 2, make_caption(this, "Label1", {"开始", "Start"}), Text2_);
    add(2, 0, make_caption(this, "Label3", {"步长", "Step"}), Text4_);
    add(2, 2, make_caption(this, "Label2", {"结束", "Stop"}), Text3_);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kGap / 2);
    buttons->addWidget(Check1_);
    buttons->addWidget(Command1_, 1);
    buttons->addWidget(cancel_, 1);
    grid->addLayout(buttons, 3, 0, 1, 4);
    auto* state = new QHBoxLayout;
    state->setSpacing(kGap);
    state->addWidget(progress_, 1);
    state->addWidget(point_);
    grid->addLayout(state, 4, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
}

void ScanPanelWidget::refresh() {
    const TunerData& held = context_.tuner.data();
    show_number(Text1_, held.Text1);
    show_number(Text2_, held.Text2);
    show_number(Text4_, held.Text4);
    show_number(Text3_, held.Text3);
    show_check(Check1_, held.Check1);
    const bool scanning = context_.tuner.scanning();
    show_enabled(Command1_, held.Command1_enabled);
    show_accent(Command1_, held.Command1_enabled);
    show_enabled(cancel_, scanning);
    show_text(Label36_, context_.tuner.Label36());
    show_text(point_, context_.tuner.progress_text());
    const bool finished = held.Label36 == ScanLabel::kFinished;
    const int part = scanning ? context_.tuner.scan().progress() : finished ? kProgressParts : 0;
    if (progress_->value() != part) progress_->setValue(part);
}

void ScanPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::tuner
